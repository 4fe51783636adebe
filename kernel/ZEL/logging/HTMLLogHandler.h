#pragma once

#include <ZEL/base/SoleOwner.h>
#include <ZEL/logging/DefaultLogHandler.h>

#include <iosfwd>
#include <string>

namespace ZEL {

/// Writes all records into a report, one self-contained XHTML file, and keeps the previous report as a backup.
///
/// Each row is flushed at once, so that the file can be read after a crash. A report that replaces an earlier one has
/// the same owner and the same readers.
class ZEL_API HTMLLogHandler : public DefaultLogHandler {
public:
    /// How many earlier reports are kept.
    static constexpr int fMaxBackupFile = 1;

    /// Writes `name`.html, after renaming an earlier one to `name`.bak.html. Throws `std::runtime_error` if the file
    /// cannot be created, and "Cannot create output log file: ..." if an earlier one cannot be renamed.
    explicit HTMLLogHandler(std::string const & name);
    ~HTMLLogHandler() override;

    void _publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) override;
    virtual void _output(std::string const & text);

    void flush();
    /// Ends the report; later records are lost. The destructor closes a report that is still open.
    void close();
    /// Why rows of the report are missing, in the words of the system: "No space left on device". Empty if none are,
    /// which is certain only once the report is closed.
    [[nodiscard]] std::string const & failureReason() const noexcept { return fFailureReason; }

protected:
    void setLogStream(std::string name);

private:
    void noteFailure(bool wasOpen);

    internal::SoleOwner<std::ofstream> fStream;
    std::string fFailureReason;
};

} // namespace ZEL
