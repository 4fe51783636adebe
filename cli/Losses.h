#pragma once

#include <ZEL/serializer/reader/ReadReport.h>

#include <string>

/// What of a file did not reach its model.
namespace cli {

/// "2 elements, 1 attribute"; empty if nothing was lost.
[[nodiscard]] std::string summaryOf(ZEL::Serializer::ReadReport const & report);
/// Prints on standard output what was lost: a heading for each kind, below it the names, each with its count.
void print(ZEL::Serializer::ReadReport const & report);

} // namespace cli
