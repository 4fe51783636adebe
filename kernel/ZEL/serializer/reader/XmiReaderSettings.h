#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Callback.h>
#include <ZEL/serializer/XmiFormat.h>

#include <cstddef>
#include <string>
#include <utility>

namespace ZEL::Serializer {

/// How an `XmiReader` reads. A reader takes a copy when it is made.
///
/// By default a link to another local file opens it, as files are trusted so far. For files of unknown origin set a
/// folder outside which nothing is opened.
class ZEL_API XmiReaderSettings {
public:
    /// Takes the URI of a file that a link leads to, without fragment; returns the path of the local file that stands
    /// for it, or the empty text to leave the URI to the reader.
    using ExternalUriResolver = Callback<std::string(std::string const & uri)>;

    /// Without effect: models are cached within a run and never between runs.
    [[nodiscard]] bool getCacheParsedModels() const noexcept { return fCacheParsedModels; }
    void setCacheParsedModels(bool cache) noexcept { fCacheParsedModels = cache; }
    [[nodiscard]] XmiFormat getInputFormat() const noexcept { return fInputFormat; }
    void setInputFormat(XmiFormat format) noexcept { fInputFormat = format; }

    /// Whether a file that a link leads to and that cannot be read, or is not well-formed to its end, is logged and the
    /// link left open, instead of ending the run; nothing of such a file stays. A file whose model was given to the
    /// Merger ends the run all the same. Default false.
    [[nodiscard]] bool getSkipUnreadableExternalFiles() const noexcept { return fSkipUnreadableExternalFiles; }
    void setSkipUnreadableExternalFiles(bool skip) noexcept { fSkipUnreadableExternalFiles = skip; }
    /// The folder outside which no file that a link leads to is opened; empty, the default, for no such limit.
    [[nodiscard]] std::string const & getExternalRootFolder() const noexcept { return fExternalRootFolder; }
    void setExternalRootFolder(std::string folder) { fExternalRootFolder = std::move(folder); }
    /// Empty by default.
    [[nodiscard]] ExternalUriResolver const & getExternalUriResolver() const noexcept { return fExternalUriResolver; }
    void setExternalUriResolver(ExternalUriResolver resolver) { fExternalUriResolver = std::move(resolver); }
    /// How deep elements may be nested in a file; beyond it the file counts as not well-formed. Default 1,000,000.
    [[nodiscard]] std::size_t getMaximumElementDepth() const noexcept { return fMaximumElementDepth; }
    void setMaximumElementDepth(std::size_t depth) noexcept { fMaximumElementDepth = depth; }
    /// How many files may be open at once, each reached by a link in the one before. Default 256.
    [[nodiscard]] unsigned int getMaximumFileNesting() const noexcept { return fMaximumFileNesting; }
    void setMaximumFileNesting(unsigned int count) noexcept { fMaximumFileNesting = count; }

private:
    bool fCacheParsedModels = false;
    XmiFormat fInputFormat = XmiFormat::Standard;
    bool fSkipUnreadableExternalFiles = false;
    unsigned int fMaximumFileNesting = 256;
    std::size_t fMaximumElementDepth = 1'000'000;
    std::string fExternalRootFolder;
    ExternalUriResolver fExternalUriResolver;
};

} // namespace ZEL::Serializer
