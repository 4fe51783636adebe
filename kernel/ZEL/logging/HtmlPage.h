#pragma once

#include <string>
#include <string_view>

/// What the library's XHTML pages have in common.
namespace ZEL::html {

/// The beginning of a page, from the XML declaration to its title; ends with a line end.
[[nodiscard]] std::string prologue(std::string const & title);

/// The script that shows and hides what a rule of the page's first style sheet applies to. `toggleCssDisplayNum` takes
/// the index of the rule, counted from 0. Ends with a line end.
[[nodiscard]] std::string_view script() noexcept;

/// From the end of the head to the start of the body; ends with a line end.
[[nodiscard]] std::string_view bodyStart() noexcept;

} // namespace ZEL::html
