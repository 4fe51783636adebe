#include <hasp_util/LowerCase.h>
#include <hasp_util/Uri.h>

#include <uriparser/Uri.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace HASP {

namespace {

bool isHexDigit(char c) noexcept { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

bool isLetterOrDigit(char c) noexcept {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

void appendEscape(std::string & text, char c) {
    static constexpr char digits[] = "0123456789ABCDEF";
    auto const byte = static_cast<unsigned char>(c);
    text += '%';
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

enum class Percent { Escape, KeepEscapes };

// Keeps the characters that a path may hold, and those of `further`.
std::string escape(std::string_view text, std::string_view further, Percent percent) {
    constexpr std::string_view ofPaths = "-._~!$&'()*+,;=:@/";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        bool const isEscape = c == '%' && percent == Percent::KeepEscapes && i + 2 < text.size() &&
                              isHexDigit(text[i + 1]) && isHexDigit(text[i + 2]);
        if (isLetterOrDigit(c) || ofPaths.find(c) != std::string_view::npos ||
            further.find(c) != std::string_view::npos || isEscape) {
            result += c;
        } else {
            appendEscape(result, c);
        }
    }
    return result;
}

std::string escapeNonAscii(std::string_view text) {
    std::string result;
    for (char const c : text) {
        if (static_cast<unsigned char>(c) < 0x80) {
            result += c;
        } else {
            appendEscape(result, c);
        }
    }
    return result;
}

std::string unescape(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && isHexDigit(text[i + 1]) && isHexDigit(text[i + 2])) {
            result += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

/// The parser's result for a text, which must outlive it.
class Parsed {
public:
    Parsed() noexcept : fUri() {}
    explicit Parsed(std::string const & text) : Parsed() {
        char const * errorAt = nullptr;
        fResult = uriParseSingleUriExA(&fUri, text.data(), text.data() + text.size(), &errorAt);
        fErrorPosition = errorAt != nullptr ? static_cast<std::size_t>(errorAt - text.data()) : 0;
    }
    ~Parsed() { uriFreeUriMembersA(&fUri); }
    Parsed(Parsed const &) = delete;
    Parsed & operator=(Parsed const &) = delete;

    [[nodiscard]] bool isGood() const noexcept { return fResult == URI_SUCCESS; }
    [[nodiscard]] std::size_t errorPosition() const noexcept { return fErrorPosition; }
    [[nodiscard]] UriUriA * get() noexcept { return &fUri; }

    [[nodiscard]] std::string toString() const {
        int size = 0;
        if (uriToStringCharsRequiredA(&fUri, &size) != URI_SUCCESS) {
            return {};
        }
        std::string text(static_cast<std::size_t>(size) + 1, '\0');
        if (uriToStringA(text.data(), &fUri, size + 1, nullptr) != URI_SUCCESS) {
            return {};
        }
        text.resize(static_cast<std::size_t>(size));
        return text;
    }

private:
    UriUriA fUri;
    int fResult = URI_SUCCESS;
    std::size_t fErrorPosition = 0;
};

// ".." after a symbolic link leads to the parent of the link's target, so the path before it must be looked up on the
// disk.
std::filesystem::path withoutDots(std::filesystem::path const & path) {
    std::filesystem::path head;
    std::filesystem::path tail;
    for (std::filesystem::path const & segment : path) {
        tail /= segment;
        if (segment == "..") {
            head /= tail;
            tail.clear();
        }
    }
    if (!head.empty()) {
        std::error_code failure;
        std::filesystem::path const real = std::filesystem::weakly_canonical(head, failure);
        if (!failure) {
            head = real;
        }
    }
    return (head / tail).lexically_normal();
}

} // namespace

Uri::Uri() : fError("the URI is empty") {}

Uri::Uri(std::string_view text) : fText(escapeNonAscii(text)) {
    Parsed const parsed(fText);
    if (parsed.isGood()) {
        split();
    } else {
        std::size_t const at = parsed.errorPosition();
        fError = at < fText.size() ? "'" + fText + "' is no URI: '" + fText[at] + "' may not stand at position " +
                                         std::to_string(at + 1)
                                   : "'" + fText + "' is no URI: it is not complete";
        fText.clear();
    }
}

Uri::Uri(std::string_view scheme, std::string_view host, std::string_view path, std::string_view fragment) : Uri() {
    std::string text;
    if (!scheme.empty()) {
        text.append(scheme).append(":");
    }
    if (!host.empty() || lowerCase(scheme) == "file" || path.starts_with("//")) {
        text.append("//").append(escape(host, "[]", Percent::KeepEscapes));
    }
    text += escape(path, "", Percent::KeepEscapes);
    if (!fragment.empty()) {
        text.append("#").append(escape(fragment, "?", Percent::KeepEscapes));
    }
    *this = Uri(text);
}

Uri Uri::invalid(std::string error) {
    Uri result;
    result.fError = std::move(error);
    return result;
}

// A text that the parser has accepted can be split at these characters; see the regular expression in RFC 3986,
// appendix B.
void Uri::split() {
    std::string_view const text = fText;
    std::size_t end = text.find('#');
    fHasFragment = end != std::string_view::npos;
    if (fHasFragment) {
        fFragment = {end + 1, text.size() - end - 1};
    } else {
        end = text.size();
    }
    std::size_t const query = text.substr(0, end).find('?');
    fHasQuery = query != std::string_view::npos;
    end = fHasQuery ? query : end;

    std::size_t at = 0;
    std::size_t const colon = text.substr(0, end).find_first_of(":/");
    if (colon != std::string_view::npos && text[colon] == ':') {
        fScheme = {0, colon};
        at = colon + 1;
    }
    if (text.substr(at, end - at).starts_with("//")) {
        at += 2;
        std::size_t slash = text.substr(0, end).find('/', at);
        slash = slash == std::string_view::npos ? end : slash;
        fHost = {at, slash - at};
        at = slash;
    }
    fPath = {at, end - at};
}

Uri Uri::fromLocalFile(std::string const & fileName) {
    if (fileName.empty() || fileName.find('\0') != std::string::npos) {
        return invalid("'" + fileName + "' is no file name");
    }
    std::error_code failure;
    std::filesystem::path const absolute = std::filesystem::absolute(fileName, failure);
    if (failure) {
        return invalid("cannot tell the folder of '" + fileName + "': " + failure.message());
    }
    return Uri("file://" + escape(withoutDots(absolute).string(), "", Percent::Escape));
}

std::string Uri::toLocalFile() const {
    std::string const host = lowerCase(part(fHost));
    if (lowerCase(part(fScheme)) != "file" || !(host.empty() || host == "localhost") || fHasQuery) {
        return {};
    }
    std::string path = unescape(part(fPath));
    return path.starts_with('/') && path.find('\0') == std::string::npos ? path : std::string();
}

Uri Uri::withoutFragment() const {
    return fHasFragment ? Uri(std::string_view(fText).substr(0, fFragment.begin - 1)) : *this;
}

Uri Uri::relativize(Uri const & base) const {
    if (!isValid() || !base.isValid()) {
        return invalid(isValid() ? base.error() : error());
    }
    std::string const baseText = base.withoutFragment().toString();
    Parsed source(fText);
    Parsed against(baseText);
    Parsed relative;
    if (uriRemoveBaseUriA(relative.get(), source.get(), against.get(), URI_FALSE) != URI_SUCCESS) {
        return invalid("'" + fText + "' cannot be made relative to '" + baseText + "'");
    }
    // If one path continues the last segment of the other, the parser's result is wrong.
    Uri result(relative.toString());
    return result.isValid() && base.resolve(result) == *this ? result : *this;
}

Uri Uri::resolve(Uri const & reference) const {
    if (!isValid() || !reference.isValid()) {
        return invalid(isValid() ? reference.error() : error());
    }
    Parsed base(fText);
    Parsed given(reference.fText);
    Parsed resolved;
    if (uriAddBaseUriA(resolved.get(), given.get(), base.get()) != URI_SUCCESS) {
        return invalid("'" + fText + "' is not absolute");
    }
    return Uri(resolved.toString());
}

} // namespace HASP
