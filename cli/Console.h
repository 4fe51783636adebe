#pragma once

#include <ZEL/DefaultLogHandler.h>
#include <ZEL/HTMLLogHandler.h>

#include <memory>
#include <string>

namespace cli {

/// The text in one line.
[[nodiscard]] std::string oneLine(std::string text);

/// Takes the library's log off the terminal for the time of its life, and keeps the last error in it.
class Console : public ZEL::DefaultLogHandler {
public:
    Console();
    ~Console() override;

    /// Writes all records into `name`.html, too.
    void logInto(std::string const & name);
    void _publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) override;

    /// The last error that was logged; empty if there was none.
    [[nodiscard]] static std::string const & lastError() noexcept;

private:
    std::unique_ptr<ZEL::HTMLLogHandler> fHtmlLog;
};

/// Says on standard error what is being done, if that is a terminal, until the end of the block.
class Progress {
public:
    explicit Progress(std::string const & work);
    ~Progress();
    Progress(Progress const &) = delete;
    Progress & operator=(Progress const &) = delete;

private:
    bool fIsShown;
};

} // namespace cli
