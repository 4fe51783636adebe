#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/XmiFormat.h>
#include <ZEL/serializer/writer/FileForm.h>

#include <optional>
#include <string>
#include <utility>

namespace ZEL::Serializer {

/// How an `XmiWriter` writes. A writer takes a copy when it is made.
class ZEL_API XmiWriterSettings {
public:
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

    /// Whether each value of a multi-valued property of a data type gets an element of its own, so that as many values
    /// are read back. Otherwise all stand in one element, without anything between them. Default false.
    [[nodiscard]] bool getElementPerValue() const noexcept { return fElementPerValue; }
    void setElementPerValue(bool isEach) noexcept { fElementPerValue = isEach; }
    /// Whether objects keep the ids that they have in the file from which they were read, where the reader has noted
    /// these: those of other models, which links name, until such a model is written without this; and those of the model
    /// itself, if it was read with its remainder. What stood at the top of that file stands there again, beside the model
    /// or, as long as the model has nothing of its own, without it; and a model within a model is called one. Otherwise
    /// objects have the ids of this system, and all stand in the model. Default false.
    [[nodiscard]] bool getKeepFileIds() const noexcept { return fKeepFileIds; }
    void setKeepFileIds(bool keep) noexcept { fKeepFileIds = keep; }

    /// Another form for the file that would be written in the standard format without this, for a tool that does not read
    /// that; with other formats it has no effect. Such a file is written in UTF-8, and takes about twice the time. Default
    /// none.
    [[nodiscard]] std::optional<FileForm> const & getFileForm() const noexcept { return fFileForm; }
    void setFileForm(std::optional<FileForm> form);

private:
    std::string fXmiVersion = XmiConstants::XMI_VERSION;
    bool fPreferAttributes = true;
    XmiFormat fOutputFormat = XmiFormat::Standard;
    bool fAutoFlush = false;
    bool fElementPerValue = false;
    bool fKeepFileIds = false;
    std::optional<FileForm> fFileForm;
};

} // namespace ZEL::Serializer
