#pragma once

#include <ZEL/logging/DefaultLogHandler.h>

#include <fstream>
#include <string>

namespace ZEL {

/// Writes all records into a report in one self-contained XHTML file, and keeps the report before it as a backup.
///
/// Each row is flushed at once, so that the file can be read after a crash. A report in place of an earlier one belongs
/// to the same owner and may be read by the same users.
class ZEL_API HTMLLogHandler : public DefaultLogHandler {
public:
    /// How many earlier reports are kept.
    static constexpr int fMaxBackupFile = 1;

    /// Writes `name`.html, after an earlier one has become `name`.bak.html. Throws `std::runtime_error` if the file
    /// cannot be made, "Cannot create output log file: ..." if an earlier one cannot be moved away.
    explicit HTMLLogHandler(std::string const & name);
    ~HTMLLogHandler() override;

    void _publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) override;
    virtual void _output(std::string const & text);

    void flush();
    /// Ends the report; records that come later are lost. The destructor closes a report that is still open.
    void close();
    /// Why rows of the report are missing, in the system's words: "No space left on device". Empty if none are; certain
    /// once the report is closed.
    [[nodiscard]] std::string const & failureReason() const noexcept { return fFailureReason; }

protected:
    void setLogStream(std::string name);

private:
    void noteFailure(bool wasOpen);

    std::ofstream fStream;
    std::string fFailureReason;
};

} // namespace ZEL
