#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/XmiFormat.h>

#include <string>
#include <utility>

namespace ZEL::Serializer {

/// How an `XmiWriter` writes. A writer takes a copy when it is made.
class ZEL_API XmiWriterSettings {
public:
    XmiWriterSettings();

    /// What is written as `xmi:version`; `XmiConstants::XMI_VERSION` by default. It changes nothing else in the file.
    [[nodiscard]] std::string const & getXmiVersion() const noexcept { return fXmiVersion; }
    void setXmiVersion(std::string version) { fXmiVersion = std::move(version); }
    /// Without effect: single values are always written as attributes.
    [[nodiscard]] bool getPreferAttributes() const noexcept { return fPreferAttributes; }
    void setPreferAttributes(bool prefer) noexcept { fPreferAttributes = prefer; }
    [[nodiscard]] XmiFormat getOutputFormat() const noexcept { return fOutputFormat; }
    void setOutputFormat(XmiFormat format) noexcept { fOutputFormat = format; }
    /// Whether the file is flushed after each piece of markup; slow.
    [[nodiscard]] bool getAutoFlush() const noexcept { return fAutoFlush; }
    void setAutoFlush(bool flush) noexcept { fAutoFlush = flush; }

private:
    std::string fXmiVersion;
    bool fPreferAttributes = true;
    XmiFormat fOutputFormat = XmiFormat::Standard;
    bool fAutoFlush = false;
};

} // namespace ZEL::Serializer
