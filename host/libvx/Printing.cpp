#include <libvx/MessageCatalogue.h>
#include <libvx/MessageFormat.h>
#include <libvx/Printing.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::FILE * printStream = nullptr;

int copyCut(char * buffer, std::size_t size, std::string_view text) {
    std::string_view const cut = vx::cutUtf8(text, size - 1);
    std::memcpy(buffer, cut.data(), cut.size());
    buffer[cut.size()] = '\0';
    return static_cast<int>(cut.size());
}

std::string textOrNull(char const * text) { return text != nullptr ? text : "(null)"; }

// Takes the arguments that the format uses and no more: reading past the end of the list is undefined.
std::vector<std::string> takeArguments(char const * format, std::va_list arguments) {
    std::vector<std::string> taken;
    std::size_t positional = 0;
    for (; *format != '\0'; ++format) {
        if (*format != '%' || *++format == '%') {
            continue;
        }
        switch (*format) {
        case '\0':
            return taken;
        case 's':
            taken.push_back(textOrNull(va_arg(arguments, char const *)));
            break;
        case 'd':
            taken.push_back(std::to_string(va_arg(arguments, int)));
            break;
        case 'u':
            taken.push_back(std::to_string(va_arg(arguments, unsigned)));
            break;
        default:
            if (*format >= '1' && *format <= '9') {
                positional = std::max(positional, static_cast<std::size_t>(*format - '0'));
            }
        }
    }
    while (taken.size() < positional) {
        taken.push_back(textOrNull(va_arg(arguments, char const *)));
    }
    return taken;
}

} // namespace

int vxPrintf(char const * format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    int const written = std::vfprintf(printStream != nullptr ? printStream : stdout, format, arguments);
    va_end(arguments);
    return written;
}

int vxVSNprintf(char * buffer, std::size_t size, char const * format, std::va_list arguments) {
    if (size == 0) {
        return -1;
    }
    int const length = std::vsnprintf(buffer, size, format, arguments);
    if (length < 0 || static_cast<std::size_t>(length) < size) {
        return length < 0 ? -1 : length;
    }
    // vsnprintf has cut the text, but possibly inside a character.
    std::size_t const end = vx::wholeUtf8({buffer, size - 1});
    buffer[end] = '\0';
    return static_cast<int>(end);
}

int vx_vsprintm(VxContext *, char * buffer, std::size_t size, std::uint32_t identifier, std::va_list arguments) {
    char const * const format = vx::findMessage(identifier);
    if (format == nullptr || size == 0) {
        return -1;
    }
    std::vector<std::string> const taken = takeArguments(format, arguments);
    return copyCut(buffer, size, vx::formatMessage(format, taken));
}

namespace vx {

void setPrintStream(std::FILE * stream) noexcept { printStream = stream; }

} // namespace vx
