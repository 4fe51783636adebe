#include "NamedUris.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>
#include <vector>

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPiece = 1U << 18U;

/// Whether the character stands around a URI, not in one, whatever the URI's place in the file.
bool isAround(char c) {
    switch (c) {
    case '"':
    case '\'':
    case '<':
    case '>':
    case ' ':
    case '\t':
    case '\r':
    case '\n':
        return true;
    default:
        return false;
    }
}

/// The URI, or the part of one, that ends at the place.
std::string_view uriBefore(std::string_view text, std::size_t at) {
    std::size_t begin = at;
    while (begin > 0 && !isAround(text[begin - 1])) {
        --begin;
    }
    return text.substr(begin, at - begin);
}

/// Where the URI around the place ends, without its fragment.
std::size_t endOfUri(std::string_view text, std::size_t at) {
    while (at < text.size() && text[at] != '#' && !isAround(text[at])) {
        ++at;
    }
    return at;
}

/// Whether the file is one that is read byte by byte as ASCII or one of its supersets, and declares no entities and no
/// values of attributes, by which names may come into it that do not stand in it.
bool isPlainHead(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    if (text.size() < 2 || text[0] != '<' || text[1] == '\0') {
        return false;
    }
    for (std::size_t at = 0; at != std::string_view::npos; at = text.find('<', at)) {
        std::string_view const rest = text.substr(at);
        if (rest.starts_with("<!--")) {
            at = text.find("-->", at);
        } else if (rest.starts_with("<?")) {
            at = text.find("?>", at);
        } else {
            return !rest.starts_with("<!");
        }
    }
    return false; // the root element is far away, if there is one
}

/// Whether the number of a character, as it stands after "&#", is that of one that occurs in no URI.
bool isOutsideOfUris(std::string_view number) {
    bool const isHexadecimal = number.starts_with('x');
    number.remove_prefix(isHexadecimal ? 1 : 0);
    std::uint32_t code = '#';
    std::from_chars(number.data(), number.data() + number.size(), code, isHexadecimal ? 16 : 10);
    return code <= 0x20U || code >= 0x7FU;
}

/// Whether the reference is a relative path with nothing in it that would have to be decoded.
bool isPlainPath(std::string_view reference) {
    return reference.front() != '/' && std::all_of(reference.begin(), reference.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
                      c == '/' || c == '_' || c == '-';
           });
}

class Survey {
public:
    Survey(bool mayFollowLinks, std::function<bool(std::string_view)> const & isKnown)
        : fMayFollowLinks(mayFollowLinks), fIsKnown(isKnown) {}

    bool isFineFrom(std::string const & file) {
        std::error_code failure;
        enter(fs::absolute(file, failure));
        while (!fToDo.empty()) {
            fFile = std::move(fToDo.back());
            fToDo.pop_back();
            if (!isFileFine()) {
                return false;
            }
        }
        return true;
    }

private:
    void enter(fs::path const & file) {
        if (fs::path const path = file.lexically_normal(); fFiles.insert(path).second) {
            fToDo.push_back(path);
        }
    }

    bool isFileFine() {
        std::error_code failure;
        if (!fs::is_regular_file(fFile, failure)) {
            return false; // nor is a pipe opened, which would wait
        }
        std::ifstream in(fFile, std::ios::binary);
        std::string text;
        fLastLink.clear();
        for (bool isFirst = true; in; isFirst = false) {
            std::size_t const kept = text.size();
            text.resize(kept + kPiece);
            in.read(text.data() + kept, static_cast<std::streamsize>(kPiece));
            text.resize(kept + static_cast<std::size_t>(in.gcount()));
            if (isFirst && !isPlainHead(text)) {
                return false;
            }
            // Only whole URIs are looked at: the last one may go on in the next piece.
            std::size_t const end = in ? text.size() - uriBefore(text, text.size()).size() : text.size();
            if ((in && end == 0) || !isTextFine(std::string_view(text).substr(0, end))) {
                return false;
            }
            text.erase(0, end);
        }
        return in.eof();
    }

    bool isTextFine(std::string_view text) {
        constexpr auto none = std::string_view::npos;
        for (std::size_t at = text.find('/'); at != none; at = text.find('/', at + 1)) {
            if (text.substr(at + 1).starts_with('/')) {
                at = endOfUri(text, at);
                if (!isUriKnown(uriBefore(text, at))) {
                    return false;
                }
            }
        }
        for (std::size_t at = text.find('#'); at != none; at = text.find('#', at + 1)) {
            bool const isCharacter = at > 0 && text[at - 1] == '&';
            if (isCharacter ? !isOutsideOfUris(text.substr(at + 1)) : !isLinkFine(uriBefore(text, at))) {
                return false;
            }
        }
        return true;
    }

    /// Most are the same as the one before.
    bool isUriKnown(std::string_view uri) {
        if (uri == fLastUri) {
            return true;
        }
        fLastUri = uri;
        return fIsKnown(uri);
    }

    /// `reference` is what stands before the "#".
    bool isLinkFine(std::string_view reference) {
        if (reference.empty() || reference == fLastLink || reference.find("//") != std::string_view::npos) {
            return true; // within the file; as before; or known
        }
        if (!fMayFollowLinks || !isPlainPath(reference)) {
            return false;
        }
        fLastLink = reference;
        enter(fFile.parent_path() / fs::path(reference));
        return true;
    }

    bool fMayFollowLinks;
    std::function<bool(std::string_view)> const & fIsKnown;
    std::set<fs::path> fFiles; ///< all that have been met
    std::vector<fs::path> fToDo;
    fs::path fFile; ///< at hand
    std::string fLastUri;
    std::string fLastLink; ///< of the file at hand
};

} // namespace

bool namesOnlyKnownUris(std::string const & file, bool mayFollowLinks,
                        std::function<bool(std::string_view uri)> const & isKnown) {
    return Survey(mayFollowLinks, isKnown).isFineFrom(file);
}

} // namespace cli
