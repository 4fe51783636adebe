#include <ZEL/interchange/ProfileNames.h>

#include <algorithm>
#include <cctype>

namespace ZEL::Interchange {
namespace {

bool isLetterOrDigit(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

bool isOfName(char c) { return isLetterOrDigit(c) || c == '_' || c == '-'; }

} // namespace

std::string_view nameInNamespace(std::string_view uri) {
    while (!uri.empty()) {
        std::size_t const slash = uri.rfind('/');
        std::string_view part = slash == std::string_view::npos ? uri : uri.substr(slash + 1);
        part = part.substr(0, part.find('.'));
        if (!part.empty() && std::isalpha(static_cast<unsigned char>(part.front())) != 0 &&
            std::all_of(part.begin(), part.end(), isOfName)) {
            return part;
        }
        uri = slash == std::string_view::npos ? std::string_view() : uri.substr(0, slash);
    }
    return {};
}

std::string xmlNameOf(std::string_view name) {
    std::string made(name);
    // Letters of other alphabets stay.
    std::replace_if(
        made.begin(), made.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80 && !isLetterOrDigit(c); },
        '_');
    return made;
}

} // namespace ZEL::Interchange
