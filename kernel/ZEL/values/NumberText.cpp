#include <ZEL/values/NumberText.h>

#include <charconv>
#include <limits>
#include <locale>
#include <sstream>
#include <system_error>

namespace ZEL::internal {

namespace {

struct Signed {
    bool negative;
    std::uint64_t magnitude;
};

std::optional<Signed> readInteger(std::string_view text) {
    std::size_t const start = text.find_first_not_of(" \t\n\v\f\r");
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(start);
    Signed result{text.front() == '-', 0};
    if (text.front() == '-' || text.front() == '+') {
        text.remove_prefix(1);
    }
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), result.magnitude);
    if (error != std::errc()) {
        return std::nullopt;
    }
    return result;
}

// A stream knows which characters may belong to a number and when they are too many or too few for one.
template <class T> std::optional<T> readFloating(std::string_view text) {
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    T value{};
    if (!(stream >> value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace

template <> std::optional<std::int32_t> numberFromText<std::int32_t>(std::string_view text) {
    std::optional<Signed> const number = readInteger(text);
    std::uint64_t const limit = std::uint64_t{1} << 31;
    if (!number || number->magnitude > (number->negative ? limit : limit - 1)) {
        return std::nullopt;
    }
    auto const magnitude = static_cast<std::int64_t>(number->magnitude);
    return static_cast<std::int32_t>(number->negative ? -magnitude : magnitude);
}

template <> std::optional<std::uint32_t> numberFromText<std::uint32_t>(std::string_view text) {
    std::optional<Signed> const number = readInteger(text);
    if (!number || number->magnitude > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    auto const magnitude = static_cast<std::uint32_t>(number->magnitude);
    return number->negative ? 0u - magnitude : magnitude;
}

template <> std::optional<bool> numberFromText<bool>(std::string_view text) {
    std::optional<std::int32_t> const number = numberFromText<std::int32_t>(text);
    if (!number || *number < 0 || *number > 1) {
        return std::nullopt;
    }
    return *number == 1;
}

template <> std::optional<float> numberFromText<float>(std::string_view text) { return readFloating<float>(text); }

template <> std::optional<double> numberFromText<double>(std::string_view text) { return readFloating<double>(text); }

std::string textOfFloating(double value) {
    char buffer[32];
    auto const [end, error] = std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::general, 6);
    return {buffer, end};
}

} // namespace ZEL::internal
