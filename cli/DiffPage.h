#pragma once

#include <ZEL/compare/Differences.h>

#include <string>

namespace cli {

/// Writes a page with a list of the differences and both models beside each other, what changed marked, into `file`.
/// The names are for the headings. Throws `Trouble` if the file cannot be written.
void writeDiffPage(ZEL::Compare::Differences const & differences, std::string const & nameOfLeft,
                   std::string const & nameOfRight, std::string const & file);

} // namespace cli
