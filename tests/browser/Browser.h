#pragma once

#include <string>

namespace ZEL::tests::browser {

/// Whether there is a browser to test with.
[[nodiscard]] bool isInstalled();

/// Opens a copy of the page in a browser, and runs a script of this folder in it when it is loaded. `facts` is what the
/// script is to find, as an object of JavaScript. Gives the complaints of the script, and the errors of the page's own
/// scripts, a line each; "no answer" if the browser gave none.
[[nodiscard]] std::string complaintsOf(std::string const & page, std::string const & script, std::string const & facts);

/// The text as a string of JavaScript.
[[nodiscard]] std::string quoted(std::string const & text);

} // namespace ZEL::tests::browser
