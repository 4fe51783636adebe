#include <hasp_util/StringTokenizer.h>

#include <algorithm>
#include <stdexcept>

namespace HASP {

StringTokenizer::StringTokenizer(std::string_view text, std::string_view delimiters)
    : fText(text), fDelimiters(delimiters) {
    skipDelimiters();
}

std::string_view StringTokenizer::nextToken() {
    if (!hasMoreTokens()) {
        throw std::out_of_range("StringTokenizer: no more tokens");
    }
    std::size_t const end = std::min(fText.find_first_of(fDelimiters, fNext), fText.size());
    std::string_view const token = fText.substr(fNext, end - fNext);
    fNext = end;
    skipDelimiters();
    return token;
}

void StringTokenizer::skipDelimiters() noexcept {
    fNext = std::min(fText.find_first_not_of(fDelimiters, fNext), fText.size());
}

} // namespace HASP
