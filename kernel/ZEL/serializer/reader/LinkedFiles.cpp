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
#include <utility>

namespace ZEL::Serializer {

std::optional<LinkedFiles::File> LinkedFiles::find(HASP::Uri const & reference, std::string const & base) {
    HASP::Uri const resolved = HASP::Uri(base).resolve(reference);
    if (!resolved.isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_UriResolutionError,
                                reference.toString(), base, resolved.error());
        return std::nullopt;
    }
    HASP::Uri const place = resolved.withoutFragment();
    File file{place.toString(), {}};
    if (MetaModelRegistry::instance()->getModelFromUri(file.uri).isValid()) {
        return file;
    }
    file.path = locate(place);
    if (!file.path.empty()) {
        // The one spelling under which the file's model is entered, too.
        file.uri = HASP::Uri::fromLocalFile(file.path).toString();
        if (place.toLocalFile().empty()) {
            fNames.try_emplace(file.uri, place.toString());
        }
    }
    return file;
}

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
    std::optional<File> const file = find(reference, base);
    if (!file) {
        return std::nullopt;
    }
    if (!file->path.empty()) {
        if (fWaits) {
            fWaiting.push_back(*file);
        } else {
            readOnce(*file);
        }
    } else if (!MetaModelRegistry::instance()->getModelFromUri(file->uri).isValid()) {
        // Nothing but local files is ever opened.
        ++fReport.fUnreadFiles[file->uri];
    }
    fKnown.emplace(key, file->uri);
    return file->uri;
}

void LinkedFiles::readWaiting() {
    for (File const & file : std::exchange(fWaiting, {})) {
        readOnce(file);
    }
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

bool LinkedFiles::isKnown(std::string const & uri) const {
    return MetaModelRegistry::instance()->getModelFromUri(uri).isValid() || fModels.contains(uri);
}

template <class Function> auto LinkedFiles::open(File const & file, Function read) {
    if (fOpen >= fSettings.getMaximumFileNesting()) {
        raiseInternalError("Too many files are open, each by a link in the one before: cannot read " + file.path);
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_ExternalRefPrologue, file.uri);
    ++fOpen;
    auto result = read();
    --fOpen;
    return result;
}

void LinkedFiles::readOnce(File const & file) {
    if (isKnown(file.uri)) {
        return;
    }
    if (!isInRootFolder(file.path)) {
        leaveOut(file.uri);
        return;
    }
    std::optional<Model> const model = open(file, [&] { return fRead(file.path); });
    if (!model.has_value()) {
        leaveOut(file.uri);
        return;
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_ExternalRefEpilogue, file.uri);
    if (model->isValid()) {
        fReferred.push_back(*model);
    }
    note(file.uri, *model);
}

bool LinkedFiles::readInto(Model const & whole, File const & file, std::function<bool()> const & read) {
    if (isKnown(file.uri) || fNoParts.contains(file.uri) || !isInRootFolder(file.path) ||
        fOpen >= fSettings.getMaximumFileNesting()) {
        return false;
    }
    note(file.uri, whole);
    if (open(file, read)) {
        Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_ExternalRefEpilogue, file.uri);
        return true;
    }
    forget(file.uri);
    fNoParts.insert(file.uri);
    return false;
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
    fWaits = false;
    fWaiting.clear();
    fNoParts.clear();
    fNames.clear();
    fModels.clear();
    fKnown.clear();
    fReferred.clear();
}

} // namespace ZEL::Serializer
