#pragma once

#include <ZEL/logging/LogLevel.h>

#include <libvx/Externalizable.h>

#include <string>

namespace ZEL {

/// One message on its way through the handlers.
class ZEL_API LogRecord : public Quillon::System::Externalizable {
public:
    /// Marks the beginning and the end of a piece of work; a handler may show such records differently.
    enum Tag : int { Plain = 0, Start = 1, End = 2 };

    LogRecord() = default;

    void setLevel(LogLevel const & level) { fLevel = level; }
    /// Off until it is set.
    [[nodiscard]] LogLevel getLevel() const { return fLevel; }
    void setTag(Tag tag) { fTag = tag; }
    [[nodiscard]] Tag getTag() const { return fTag; }
    void setMessage(std::string const & message) { fMessage = message; }
    [[nodiscard]] std::string const & getMessage() const { return fMessage; }

    /// Writes the message and a line end as one string.
    void writeExternal(Quillon::System::ObjectOutput & out) const override;

private:
    LogLevel fLevel = LogLevel::off;
    Tag fTag = Plain;
    std::string fMessage;
};

} // namespace ZEL
