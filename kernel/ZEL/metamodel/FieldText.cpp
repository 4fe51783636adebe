#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/FieldText.h>

#include <charconv>

namespace ZEL::internal {
namespace {

template <class Number> std::string_view write(Number number, NumberBuffer & buffer) noexcept {
    char const * const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

} // namespace

std::optional<std::string> textOf(FieldValue const & value) {
    NumberBuffer buffer;
    std::optional<std::string_view> const text = viewOf(value, buffer);
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::optional<std::string_view> viewOf(FieldValue const & value, NumberBuffer & buffer) {
    switch (value.form()) {
    case FieldValue::Form::Flag:
        return value.flag() ? "true" : "false";
    case FieldValue::Form::Integer:
        return write(value.integer(), buffer);
    case FieldValue::Form::UnlimitedNatural:
        return UnlimitedNatural(value.number()).isUnlimited() ? "*" : write(value.number(), buffer);
    case FieldValue::Form::Text:
        return value.text();
    default:
        return std::nullopt;
    }
}

} // namespace ZEL::internal
