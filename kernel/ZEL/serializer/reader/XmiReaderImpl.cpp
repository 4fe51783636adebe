#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/dialects/MagicDrawReadTransforms.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <exception>
#include <memory>
#include <utility>
#include <vector>

namespace ZEL::Serializer {
namespace {

/// Calls a function at the end of its scope, however that is left.
template <class Function> class AtExit {
public:
    explicit AtExit(Function function) : fFunction(std::move(function)) {}
    ~AtExit() { fFunction(); }
    AtExit(AtExit const &) = delete;
    AtExit & operator=(AtExit const &) = delete;

private:
    Function fFunction;
};

} // namespace

XmiReaderImpl::XmiReaderImpl(XmiReaderSettings const & settings)
    : fSettings(settings), fMerger(std::make_shared<Merger>()) {}

XmiReaderImpl::~XmiReaderImpl() = default;

Object XmiReaderImpl::read(std::string const & file) {
    HASP::Uri const uri = HASP::Uri::fromLocalFile(file);
    if (!uri.isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_InvalidInputFile, file);
        return Object();
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_Prologue, file);
    reset();
    try {
        readInto(uri.toLocalFile());
    } catch (...) {
        // Nothing of a failed read stays, nor can it be asked for.
        discard();
        throw;
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_Epilogue, file);
    return fResult;
}

void XmiReaderImpl::readInto(std::string const & localFile) {
    AtExit const clearTransformers([this] { fTransformers.clear(); });
    pushState(localFile);
    // The dialect of Rhapsody is one of writing only: its files are read as plain ones.
    if (fSettings.getInputFormat().getFormat() == XmiFormat::MagicDraw) {
        fTransformers.addTransformer(std::make_shared<MagicDrawReadTransforms>());
    }
    fStandardRules = std::make_shared<StandardReadTransforms>();
    fTransformers.addTransformer(fStandardRules);
    AtExit const abort([this] { abortMerger(); });
    fMerger->initialize();
    noteUncontained();
    Model const result = run();
    popState();
    if (result.isValid()) {
        std::vector<Model> const models = fMerger->getReferredModels();
        fMerger->teardown();
        reportUncontained(models);
    } else {
        // Without a model there is nothing to merge: what the given models hold is not to be taken for left out.
        fReferredModels.clear();
    }
    forgetLinks();
}

/// Gives up the handles on all objects that the run has met.
void XmiReaderImpl::forgetLinks() noexcept {
    fLinks.clear();
    fLastTarget = nullptr;
    fTargetFiles.clear();
    fLinkRuns.clear();
    fLinkTargets.clear();
    fFormerlyUncontained.clear();
}

void XmiReaderImpl::abortMerger() noexcept {
    try {
        fMerger->abort();
    } catch (std::exception const & failure) {
        try {
            Logger::instance()->error("Unable to cancel the read: %s", failure.what());
        } catch (...) {
            return; // nothing left to tell it to
        }
    } catch (...) {
        return;
    }
}

void XmiReaderImpl::reset() {
    discard();
    fReport = ReadReport();
}

void XmiReaderImpl::discard() noexcept {
    fNesting = 0;
    fStates.clear();
    forgetLinks();
    fResult = Model();
    fReferredModels.clear();
    fParsedModels.clear();
    fExternalFiles.clear();
}

} // namespace ZEL::Serializer
