#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/FieldText.h>

namespace ZEL::internal {

std::optional<std::string> textOf(FieldValue const & value) {
    switch (value.form()) {
    case FieldValue::Form::Flag:
        return value.flag() ? "true" : "false";
    case FieldValue::Form::Integer:
        return std::to_string(value.integer());
    case FieldValue::Form::UnlimitedNatural:
        return UnlimitedNatural(value.number()).toString().str();
    case FieldValue::Form::Text:
        return std::string(value.text());
    default:
        return std::nullopt;
    }
}

} // namespace ZEL::internal
