#include <libvx/MessageFormat.h>

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

std::string_view cutUtf8(std::string_view text, std::size_t maxBytes) noexcept {
    if (text.size() <= maxBytes) {
        return text;
    }
    // The byte behind the cut must not continue a character; no character is longer than four bytes.
    std::size_t end = maxBytes;
    while (end > 0 && maxBytes - end < 4 && (static_cast<unsigned char>(text[end]) & 0xC0u) == 0x80u) {
        --end;
    }
    bool const broken = (static_cast<unsigned char>(text[end]) & 0xC0u) == 0x80u;
    return text.substr(0, broken ? maxBytes : end);
}

} // namespace vx
