// Links into other files: which file it is, whether it may be read, and the reading of it.

#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace ZEL::Serializer {

std::optional<std::string> XmiReaderImpl::followExternal(HASP::Uri const & reference, ClassObject const & object) {
    Model const root = object.getRootModel();
    std::string const base = root.isValid() ? root.getUri().str() : std::string();
    if (base.empty()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_InvalidBaseUri,
                                reference.toString());
        return std::nullopt;
    }
    std::string const key = base + ' ' + reference.withoutFragment().toString();
    auto const known = fExternalFiles.find(key);
    if (known != fExternalFiles.end()) {
        return known->second;
    }
    HASP::Uri const resolved = HASP::Uri(base).resolve(reference);
    if (!resolved.isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_UriResolutionError,
                                reference.toString(), base, resolved.error());
        return std::nullopt;
    }
    HASP::Uri const file = resolved.withoutFragment();
    std::string uri = file.toString();
    if (!MetaModelRegistry::instance()->getModelFromUri(uri).isValid()) {
        std::string const localFile = locate(file);
        if (localFile.empty()) {
            // Nothing but local files is ever opened.
            fReport.addUnreadFile(uri);
        } else {
            // The one spelling under which the file's model is entered, too.
            uri = HASP::Uri::fromLocalFile(localFile).toString();
            readExternal(uri, localFile);
        }
    }
    fExternalFiles.emplace(key, uri);
    return uri;
}

/// The local file that stands for the URI; empty if there is none.
std::string XmiReaderImpl::locate(HASP::Uri const & file) const {
    std::string path;
    if (!fSettings.getExternalUriResolver().empty()) {
        path = fSettings.getExternalUriResolver()(file.toString());
    }
    if (path.empty()) {
        path = file.getScheme().empty() ? file.toString() : file.toLocalFile();
    }
    return path.empty() ? path : HASP::Uri::fromLocalFile(path).toLocalFile();
}

void XmiReaderImpl::readExternal(std::string const & uri, std::string const & localFile) {
    if (MetaModelRegistry::instance()->getModelFromUri(uri).isValid() || fParsedModels.count(uri) != 0) {
        return;
    }
    if (!isInRootFolder(localFile)) {
        fParsedModels.emplace(uri, Model());
        fReport.addUnreadFile(uri);
        return;
    }
    if (fStates.size() >= fSettings.getMaximumFileNesting()) {
        raiseInternalError("Too many files are open, each by a link in the one before: cannot read " + localFile);
    }
    pushState(localFile);
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_ExternalRefPrologue, uri);
    Model model;
    if (!runExternal(model)) {
        Logger::instance()->warning("Unable to read %s : %s", localFile, parseErrorOf(state()));
        popState();
        fParsedModels.insert_or_assign(uri, Model());
        fReport.addUnreadFile(uri);
        return;
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_ExternalRefEpilogue, uri);
    if (model.isValid()) {
        fReferredModels.push_back(model);
    }
    fParsedModels.insert_or_assign(uri, model);
    popState();
}

bool XmiReaderImpl::runExternal(Model & model) {
    try {
        ++fNesting;
        model = run();
        --fNesting;
        return true;
    } catch (Exception const &) {
        --fNesting;
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
    if (FileModel * const file = state().fileModel) {
        file->objects = ObjectIds();
        file->links.clear();
        file->linkTexts.clear();
    }
    return false;
}

bool XmiReaderImpl::isInRootFolder(std::string const & localFile) const {
    std::string const & folder = fSettings.getExternalRootFolder();
    if (folder.empty()) {
        return true;
    }
    // With symbolic links followed: what counts is where the file lies, not how it is called.
    std::error_code failure;
    std::filesystem::path const root = std::filesystem::canonical(folder, failure);
    if (failure) {
        return false;
    }
    std::filesystem::path const file = std::filesystem::weakly_canonical(localFile, failure);
    if (failure) {
        return false;
    }
    return std::mismatch(root.begin(), root.end(), file.begin(), file.end()).first == root.end();
}

} // namespace ZEL::Serializer
