#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/dialects/MagicDrawReadTransforms.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <cstddef>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

XmiReaderImpl::XmiReaderImpl(XmiReaderSettings const & settings)
    : fSettings(settings),
      fMerger(std::make_shared<Merger>()),
      fValues(fReport),
      fLinks(fTransformers, fValues),
      fFiles(fSettings, fReport, [this](std::string const & localFile) { return readLinked(localFile); }) {}

XmiReaderImpl::~XmiReaderImpl() = default;

Object XmiReaderImpl::read(std::string const & file) {
    HASP::Uri const uri = HASP::Uri::fromLocalFile(file);
    if (!uri.isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_InvalidInputFile, file);
        return Object();
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_Prologue, file);
    discard();
    fReport = ReadReport();
    try {
        readInto(uri.toLocalFile());
    } catch (...) {
        // Nothing of a failed read stays, nor can it be asked for.
        end();
        discard();
        throw;
    }
    end();
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_Epilogue, file);
    return fResult;
}

void XmiReaderImpl::readInto(std::string const & localFile) {
    pushState(localFile);
    // The dialect of Rhapsody is one of writing only: its files are read as plain ones.
    if (fSettings.getInputFormat().getFormat() == XmiFormat::MagicDraw) {
        fTransformers.addTransformer(std::make_shared<MagicDrawReadTransforms>());
    }
    fStandardRules = std::make_shared<StandardReadTransforms>();
    fTransformers.addTransformer(fStandardRules);
    fValues.begin(*fMerger);
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
        fFiles.forgetModels();
    }
    forgetObjects();
}

std::optional<Model> XmiReaderImpl::readLinked(std::string const & localFile) {
    pushState(localFile);
    try {
        Model model = run();
        popState();
        return model;
    } catch (Exception const &) {
        // Whatever else has gone wrong is nothing that doing without this file would mend.
        if (!fSettings.getSkipUnreadableExternalFiles() || !state().xml.hasError()) {
            throw;
        }
        if (state().model.isValid() && !fMerger->giveUp(state().model)) {
            throw; // a given model of which half is new
        }
    }
    if (state().hasRoot) {
        fTransformers.postTransform(Model());
    }
    if (state().links != nullptr) {
        state().links->forget();
    }
    Logger::instance()->warning("Unable to read %s : %s", localFile, parseErrorOf(state()));
    popState();
    return std::nullopt;
}

/// Gives up the handles on all objects that the run has met.
void XmiReaderImpl::forgetObjects() noexcept {
    fLinks.clear();
    fFormerlyUncontained.clear();
}

void XmiReaderImpl::noteUncontained() {
    for (Model const & model : fMerger->getReferredModels()) {
        model.getUnparented().forEach(
            [&](Object const & object) { fFormerlyUncontained.insert(object.getImplementation()); });
    }
}

void XmiReaderImpl::reportUncontained(std::vector<Model> const & models) {
    std::vector<ImmutableClassObject> found;
    for (Model const & model : models) {
        if (model.isValid()) {
            model.getUnparented().forEach([&](ClassObject const & object) {
                if (fFormerlyUncontained.count(object.getImplementation()) == 0) {
                    found.emplace_back(object);
                }
            });
        }
    }
    for (std::size_t i = 0; i < found.size(); ++i) {
        ImmutableClassObject const object = found[i]; // the list grows on the way
        std::string const name = object.getMetaClass().getName();
        fReport.addUncontainedObject(name);
        object.getContaineeZELs().forEach([&](ImmutableClassObject const & part) { found.push_back(part); });
    }
    for (auto const & [name, count] : fReport.uncontainedObjects()) {
        Logger::instance()->warning("Objects of class %s that nothing contains, and no file will hold: %s", name,
                                    std::to_string(count));
    }
}

/// However a read ends: the rules have served, and what the Merger still has open is cancelled.
void XmiReaderImpl::end() noexcept {
    fTransformers.clear();
    try {
        try {
            fMerger->abort();
        } catch (std::exception const & failure) {
            Logger::instance()->error("Unable to cancel the read: %s", failure.what());
        }
    } catch (...) {
        return; // nobody is left to tell it to
    }
}

void XmiReaderImpl::discard() noexcept {
    fStates.clear();
    forgetObjects();
    fResult = Model();
    fFiles.clear();
}

} // namespace ZEL::Serializer
