#pragma once

#include <ZEL/serializer/reader/ReadReport.h>

#include <string>

/// The content of a file that its model does not understand.
namespace cli {

/// Kept with its object as it stands, to be written again; or lost to the file that is written.
enum class Fate { Kept, LeftOut };

/// "2 elements, 1 attribute" of what had this fate; empty for none.
[[nodiscard]] std::string summaryOf(ZEL::Serializer::ReadReport const & report, Fate fate);
/// Prints all of it on standard output: a heading for each kind, and below it the names with their counts.
void print(ZEL::Serializer::ReadReport const & report);

} // namespace cli
