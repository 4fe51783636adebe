#pragma once

#include <ZEL/serializer/reader/ReadReport.h>

#include <string>

/// The content of a file that did not reach its model.
namespace cli {

/// "2 elements, 1 attribute"; empty if nothing was lost.
[[nodiscard]] std::string summaryOf(ZEL::Serializer::ReadReport const & report);
/// Prints on standard output what was lost: a heading for each kind, and below it the names with their counts.
void print(ZEL::Serializer::ReadReport const & report);

} // namespace cli
