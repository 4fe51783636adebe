#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/interchange/FileFinder.h>
#include <ZEL/interchange/OwnFolder.h>
#include <ZEL/interchange/UnpackedFile.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

namespace ZEL::Interchange {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFileScheme = "file://";

bool isFile(std::string const & path) {
    std::error_code failure;
    return fs::is_regular_file(path, failure);
}

/// The file in the folder; empty if there is none, or if the name leads out of the folder.
std::string fileIn(std::string const & folder, std::string_view name) {
    fs::path const relative = fs::path(name).relative_path();
    if (folder.empty() || std::find(relative.begin(), relative.end(), "..") != relative.end()) {
        return {};
    }
    std::string const path = (fs::path(folder) / relative).string();
    return isFile(path) ? path : std::string();
}

/// Whether the entry says where the URI leads.
bool fits(Place const & place, std::string const & uri) {
    if (place.uri.find(':') != std::string::npos) {
        return uri.starts_with(place.uri);
    }
    return uri.ends_with('/' + place.uri);
}

std::string fileAt(Place const & place, std::string const & uri) {
    if (isFile(place.path)) {
        return place.path;
    }
    bool const isBeginning = place.uri.find(':') != std::string::npos;
    return fileIn(place.path, isBeginning ? std::string_view(uri).substr(place.uri.size()) : place.uri);
}

/// The part of the URI that names a place: "pathmap://A/b.uml" and "http://A/b.uml" are both "A/b.uml".
std::string_view withoutScheme(std::string_view uri) {
    std::size_t const end = uri.find("://");
    return end == std::string_view::npos ? std::string_view() : uri.substr(end + 3);
}

} // namespace

std::string pathOfFileUri(std::string const & uri) {
    std::string path;
    for (std::size_t i = uri.starts_with(kFileScheme) ? kFileScheme.size() : uri.size(); i < uri.size(); ++i) {
        unsigned char code = 0;
        bool const isEscape =
            uri[i] == '%' && i + 2 < uri.size() &&
            std::from_chars(uri.data() + i + 1, uri.data() + i + 3, code, 16).ptr == uri.data() + i + 3;
        path += isEscape ? static_cast<char>(code) : uri[i];
        i += isEscape ? 2 : 0;
    }
    return path;
}

class FileFinder::Impl {
public:
    explicit Impl(std::vector<Place> places) : fPlaces(std::move(places)) {
        std::stable_sort(fPlaces.begin(), fPlaces.end(),
                         [](Place const & a, Place const & b) { return a.uri.size() > b.uri.size(); });
    }

    /// The same container is unpacked once, however many links lead to it.
    std::string unpackedOr(std::string const & file) {
        std::string const container = fs::absolute(file).lexically_normal().string();
        if (auto const known = fUnpacked.find(container); known != fUnpacked.end()) {
            return known->second->path();
        }
        if (!UnpackedFile::isPacked(container)) {
            return {};
        }
        return fUnpacked.emplace(container, std::make_unique<UnpackedFile>(container)).first->second->path();
    }

    /// For a link: a container that cannot be unpacked is a file that cannot be read.
    std::string find(std::string const & uri) {
        std::string const path = besideContainer(pathOfFileUri(uri));
        std::string found = lookUp(path.empty() ? uri : std::string(kFileScheme) + path);
        bool const isNamed = !found.empty();
        if (found.empty()) {
            found = path;
        }
        try {
            bool const mayUnpack = fMayUnpackLinked && !found.empty();
            if (std::string const unpacked = mayUnpack ? unpackedOr(found) : std::string(); !unpacked.empty()) {
                found = unpacked;
            }
        } catch (Exception const &) {
            return found;
        }
        if (isNamed) {
            fNames[fs::absolute(found).lexically_normal().string()] = uri;
        }
        return found;
    }

    /// Where links are bounded by a folder, containers that they lead to stay closed: the reader, who knows the bounds,
    /// sees the unpacked file only.
    void follow(Serializer::XmiReaderSettings const & settings) {
        fResolver = settings.getExternalUriResolver();
        fMayUnpackLinked = settings.getExternalRootFolder().empty();
    }

    /// By what a model's file was named; empty if it is the file itself.
    [[nodiscard]] std::string nameOf(std::string const & path) const {
        if (auto const named = fNames.find(path); named != fNames.end()) {
            return named->second;
        }
        for (auto const & [container, unpacked] : fUnpacked) {
            if (unpacked->path() == path) {
                return std::string(kFileScheme) + container;
            }
        }
        return {};
    }

    [[nodiscard]] std::string withoutTemporaryNames(std::string text) const {
        for (auto const & [container, unpacked] : fUnpacked) {
            std::string const & path = unpacked->path();
            for (std::size_t at = text.find(path); at != std::string::npos; at = text.find(path, at)) {
                text.replace(at, path.size(), container);
            }
        }
        return text;
    }

private:
    /// A path below the folder of an unpacked file means one beside its container.
    [[nodiscard]] std::string besideContainer(std::string path) const {
        for (auto const & [container, unpacked] : fUnpacked) {
            if (path.starts_with(unpacked->folder() + '/') && path != unpacked->path()) {
                return path.substr(unpacked->folder().size());
            }
        }
        return path;
    }

    [[nodiscard]] std::string lookUp(std::string const & uri) const {
        for (Place const & place : fPlaces) {
            if (std::string const file = fits(place, uri) ? fileAt(place, uri) : std::string(); !file.empty()) {
                return file;
            }
        }
        if (std::string const file = fResolver ? fResolver(uri) : std::string(); !file.empty()) {
            return file;
        }
        return uri.starts_with(kFileScheme) ? std::string() : fileIn(librariesFolder(), withoutScheme(uri));
    }

    std::vector<Place> fPlaces;
    Serializer::XmiReaderSettings::ExternalUriResolver fResolver;
    bool fMayUnpackLinked = true;
    std::map<std::string, std::unique_ptr<UnpackedFile>> fUnpacked; ///< by the container's path
    std::map<std::string, std::string> fNames;                      ///< the URI of a link by the path it leads to
};

FileFinder::FileFinder(std::vector<Place> places) : fImpl(std::make_unique<Impl>(std::move(places))) {}
FileFinder::~FileFinder() = default;

std::string FileFinder::open(std::string const & file) {
    std::string const unpacked = fImpl->unpackedOr(file);
    return unpacked.empty() ? file : unpacked;
}

void FileFinder::prepare(Serializer::XmiReaderSettings & settings) {
    fImpl->follow(settings);
    settings.setExternalUriResolver([impl = fImpl.get()](std::string const & uri) { return impl->find(uri); });
}

void FileFinder::restoreUri(Model const & model) const {
    std::string const name = fImpl->nameOf(pathOfFileUri(model.getUri()));
    if (!name.empty()) {
        Transaction transaction(model.getRootDeviant(), "name by which the file was found");
        model.setUri(name);
        transaction.commit();
    }
}

std::string FileFinder::withoutTemporaryNames(std::string text) const {
    return fImpl->withoutTemporaryNames(std::move(text));
}

std::string librariesFolder() {
    static std::string const folder = [] {
        std::error_code failure;
        fs::path const found = (ownFolder() / ZEL_LIBRARIES).lexically_normal();
        return fs::is_directory(found, failure) ? found.string() : std::string();
    }();
    return folder;
}

} // namespace ZEL::Interchange
