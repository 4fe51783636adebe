#pragma once

#include <ZEL/Export.h>

#include <libvx/SimpleFormatter.h>

#include <string>

namespace ZEL {

/// Makes each record a row of the table in an XHTML report, and returns what stands before and after the rows.
///
/// A message goes into the row as it is: markup in it is markup of the report.
class ZEL_API HTMLLogFormatter : public Quillon::System::SimpleFormatter {
public:
    /// Anything that is no `LogRecord` becomes a row of one cell with the text that it writes of itself.
    [[nodiscard]] std::string format(Quillon::System::Externalizable const & record) override;

    /// Up to and with the heading row of the table; ends without a line end.
    [[nodiscard]] static std::string getHead();
    /// Ends without a line end.
    [[nodiscard]] static std::string getTail();
};

} // namespace ZEL
