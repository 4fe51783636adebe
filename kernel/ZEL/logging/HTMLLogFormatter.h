#pragma once

#include <ZEL/Export.h>

#include <libvx/SimpleFormatter.h>

#include <string>

namespace ZEL {

/// Formats each record as a row of the table in an XHTML report, and has the text before and after the rows.
///
/// A message is not escaped: markup in it is markup of the report.
class ZEL_API HTMLLogFormatter : public Quillon::System::SimpleFormatter {
public:
    /// A record that is not a `LogRecord` becomes a row of one cell with the text that it writes of itself.
    [[nodiscard]] std::string format(Quillon::System::Externalizable const & record) override;

    /// The text up to and including the heading row of the table, without a line end after it.
    [[nodiscard]] static std::string getHead();
    /// The text after the last row, without a line end after it.
    [[nodiscard]] static std::string getTail();
};

} // namespace ZEL
