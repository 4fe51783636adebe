#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/reader/LinkedFiles.h>
#include <ZEL/serializer/reader/ReadReport.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace ZEL::Serializer {

std::optional<std::string> LinkedFiles::follow(HASP::Uri const & reference, std::string const & base) {
    if (base.empty()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_InvalidBaseUri,
                                reference.toString());
        return std::nullopt;
    }
    std::string const key = base + ' ' + reference.withoutFragment().toString();
    if (auto const known = fKnown.find(key); known != fKnown.end()) {
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
            ++fReport.fUnreadFiles[uri];
        } else {
            // The one spelling under which the file's model is entered, too.
            uri = HASP::Uri::fromLocalFile(localFile).toString();
            if (file.toLocalFile().empty()) {
                fNames.try_emplace(uri, file.toString());
            }
            readOnce(uri, localFile);
        }
    }
    fKnown.emplace(key, uri);
    return uri;
}

/// The local file that stands for the URI; empty if there is none.
std::string LinkedFiles::locate(HASP::Uri const & file) const {
    std::string path;
    if (fSettings.getExternalUriResolver()) {
        path = fSettings.getExternalUriResolver()(file.toString());
    }
    if (path.empty()) {
        path = file.getScheme().empty() ? file.toString() : file.toLocalFile();
    }
    return path.empty() ? path : HASP::Uri::fromLocalFile(path).toLocalFile();
}

void LinkedFiles::readOnce(std::string const & uri, std::string const & localFile) {
    if (MetaModelRegistry::instance()->getModelFromUri(uri).isValid() || fModels.contains(uri)) {
        return;
    }
    if (!isInRootFolder(localFile)) {
        leaveOut(uri);
        return;
    }
    if (fOpen >= fSettings.getMaximumFileNesting()) {
        raiseInternalError("Too many files are open, each by a link in the one before: cannot read " + localFile);
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_ExternalRefPrologue, uri);
    ++fOpen;
    std::optional<Model> const model = fRead(localFile);
    --fOpen;
    if (!model.has_value()) {
        leaveOut(uri);
        return;
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_ExternalRefEpilogue, uri);
    if (model->isValid()) {
        fReferred.push_back(*model);
    }
    note(uri, *model);
}

void LinkedFiles::leaveOut(std::string const & uri) {
    note(uri, Model());
    ++fReport.fUnreadFiles[uri];
}

bool LinkedFiles::isInRootFolder(std::string const & localFile) const {
    std::string const & folder = fSettings.getExternalRootFolder();
    if (folder.empty()) {
        return true;
    }
    // With symbolic links followed: what counts is where the file lies, not what it is called.
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

std::string LinkedFiles::nameOf(std::string const & target) const {
    std::size_t const sign = target.find('#');
    auto const found = sign == std::string::npos ? fNames.end() : fNames.find(target.substr(0, sign));
    return found != fNames.end() ? found->second + target.substr(sign) : target;
}

void LinkedFiles::clear() noexcept {
    fOpen = 1;
    fNames.clear();
    fModels.clear();
    fKnown.clear();
    fReferred.clear();
}

} // namespace ZEL::Serializer
