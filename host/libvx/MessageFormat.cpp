#include <libvx/MessageFormat.h>

#include <algorithm>

namespace vx {

std::string formatMessage(std::string_view format, std::span<std::string const> args) {
    std::string text;
    std::size_t next = 0;
    std::size_t at = 0;
    while (at < format.size()) {
        std::size_t const percent = format.find('%', at);
        text.append(format.substr(at, percent - at));
        if (percent == std::string_view::npos) {
            break;
        }
        char const directive = percent + 1 < format.size() ? format[percent + 1] : '\0';
        std::size_t argument = args.size();
        if (directive == 's' || directive == 'd' || directive == 'u') {
            argument = next++;
        } else if (directive >= '1' && directive <= '9') {
            argument = static_cast<std::size_t>(directive - '1');
        }
        if (argument < args.size()) {
            text += args[argument];
        } else if (directive == '%') {
            text += '%';
        } else {
            text.append(format.substr(percent, 2));
        }
        at = percent + 2;
    }
    return text;
}

std::string formatMessage(std::string_view format, std::initializer_list<std::string> args) {
    return formatMessage(format, std::span(args.begin(), args.size()));
}

std::size_t wholeUtf8(std::string_view text) noexcept {
    // A character is at most four bytes long: a first byte, which determines the length, and its continuation bytes.
    for (std::size_t back = 1; back <= std::min<std::size_t>(text.size(), 3); ++back) {
        auto const byte = static_cast<unsigned char>(text[text.size() - back]);
        if (byte >= 0xC0) {
            std::size_t const length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
            return text.size() - (length > back ? back : 0);
        }
    }
    return text.size();
}

std::string_view cutUtf8(std::string_view text, std::size_t maxBytes) noexcept {
    return text.size() <= maxBytes ? text : text.substr(0, wholeUtf8(text.substr(0, maxBytes)));
}

} // namespace vx
