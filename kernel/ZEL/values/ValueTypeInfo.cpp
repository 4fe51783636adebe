#include <ZEL/Boolean.h>
#include <ZEL/Double.h>
#include <ZEL/Integer.h>
#include <ZEL/Real.h>
#include <ZEL/Single.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

#include <concepts>
#include <optional>

namespace ZEL::internal {

namespace {

/// What an error says of a type, and where it says that it was found.
struct ErrorPlace {
    char const * nativeType;
    char const * file;
    int line;
};
template <class Value> constexpr ErrorPlace kPlace{};
template <> constexpr ErrorPlace kPlace<Boolean>{"bool", "kernel/ZEL/Boolean", 32};
template <> constexpr ErrorPlace kPlace<Double>{"double", "kernel/ZEL/Double", 33};
template <> constexpr ErrorPlace kPlace<Integer>{"INT32_T", "kernel/ZEL/Integer", 33};
template <> constexpr ErrorPlace kPlace<Real>{"double", "kernel/ZEL/Real", 31};
template <> constexpr ErrorPlace kPlace<Single>{"float", "kernel/ZEL/Single", 31};
template <> constexpr ErrorPlace kPlace<UnlimitedNatural>{"UINT32_T", "kernel/ZEL/UnlimitedNatural", 34};

template <class Value> std::optional<Value> valueFrom(std::string const & text) {
    if constexpr (std::same_as<Value, String>) {
        return String(text);
    } else if constexpr (std::same_as<Value, Boolean>) {
        return text == "true" || text == "false" ? std::optional(Boolean(text == "true")) : std::nullopt;
    } else {
        if (std::same_as<Value, UnlimitedNatural> && (text == "*" || text == "-1")) {
            return Value(UnlimitedNatural::GetUnlimitedValue());
        }
        auto const number = numberFromText<typename Value::Native>(text);
        return number ? std::optional(Value(*number)) : std::nullopt;
    }
}

std::string textOf(String const & value) { return value.str(); }
std::string textOf(Boolean const & value) { return value.getValue() ? "true" : "false"; }
std::string textOf(Integer const & value) { return std::to_string(value.getValue()); }
std::string textOf(UnlimitedNatural const & value) {
    return value.isUnlimited() ? "*" : std::to_string(value.getValue());
}
template <class Value>
requires std::floating_point<typename Value::Native> std::string textOf(Value const & value) {
    return textOfFloating(value.getValue());
}

} // namespace

template <class Value>
HASP::any ValueTypeInfo<Value>::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    requireNoError(errors);
    if (std::optional<Value> const value = valueFrom<Value>(text)) {
        return *value;
    }
    reportBadText(errors, text, kPlace<Value>.nativeType, kPlace<Value>.file, kPlace<Value>.line);
    return {};
}

template <class Value> std::string ValueTypeInfo<Value>::convertToString(HASP::any const & value) const {
    return textOf(HASP::any_cast<Value const &>(value));
}

template <class Value> HASP::any ValueTypeInfo<Value>::defaultConstruct() const { return Value(); }

template <class Value> ValueTypeInfo<Value> * ValueTypeInfo<Value>::clone() const { return new ValueTypeInfo(*this); }

template class ValueTypeInfo<Boolean>;
template class ValueTypeInfo<Double>;
template class ValueTypeInfo<Integer>;
template class ValueTypeInfo<Real>;
template class ValueTypeInfo<Single>;
template class ValueTypeInfo<String>;
template class ValueTypeInfo<UnlimitedNatural>;

} // namespace ZEL::internal
