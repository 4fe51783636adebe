#include <ZEL/metamodel/Constants.h>
#include <ZEL/serializer/IdText.h>

#include <hasp_util/StringTokenizer.h>

#include <charconv>
#include <string_view>
#include <system_error>

namespace ZEL {

namespace {

constexpr std::string_view prefix = ID_PREFIX;

} // namespace

std::string getPrefixedId(std::string const & id) { return std::string(prefix) + id; }

Integer getIdValue(std::string const & id) {
    if (!id.starts_with(prefix)) {
        return 0;
    }
    std::size_t const underscore = id.find('_', prefix.size());
    if (underscore == std::string::npos) {
        return 0;
    }
    char const * const begin = id.data() + underscore + 1;
    char const * const end = id.data() + id.size();
    std::int32_t number = 0;
    auto const [stop, error] = std::from_chars(begin, end, number);
    return error == std::errc() && stop == end && number > 0 ? number : 0;
}

std::string getUuidValue(std::string const & id) {
    HASP::StringTokenizer parts(id, "_");
    for (int part = 0; parts.hasMoreTokens(); ++part) {
        std::string_view const text = parts.nextToken();
        if (part == 1) {
            return std::string(text);
        }
    }
    return {};
}

} // namespace ZEL
