#pragma once

#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

#include <optional>

// The bodies of `ValueTypeInfo`. The source of a value class says by `ValueText` what its texts are, and makes its type.

namespace ZEL::internal {

/// What an error says of a type, and where it says that it was found.
struct ErrorPlace {
    char const * nativeType;
    char const * file;
    int line;
};

/// The texts of a value class: `from` yields nothing for a text that is no value, of which `place` tells.
template <class Value> struct ValueText;

/// The texts of a class that holds a number.
template <class Value> struct NumberValueText {
    static std::optional<Value> from(std::string const & text) {
        auto const number = numberFromText<typename Value::Native>(text);
        return number ? std::optional(Value(*number)) : std::nullopt;
    }
    static std::string to(Value const & value) {
        if constexpr (std::is_floating_point_v<typename Value::Native>) {
            return textOfFloating(value.getValue());
        } else {
            return std::to_string(value.getValue());
        }
    }
};

template <class Value>
HASP::any ValueTypeInfo<Value>::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    requireNoError(errors);
    if (std::optional<Value> const value = ValueText<Value>::from(text)) {
        return *value;
    }
    constexpr ErrorPlace place = ValueText<Value>::place;
    reportBadText(errors, text, place.nativeType, place.file, place.line);
    return {};
}

template <class Value> std::string ValueTypeInfo<Value>::convertToString(HASP::any const & value) const {
    return ValueText<Value>::to(HASP::any_cast<Value const &>(value));
}

template <class Value> HASP::any ValueTypeInfo<Value>::defaultConstruct() const { return Value(); }

template <class Value> ValueTypeInfo<Value> * ValueTypeInfo<Value>::clone() const { return new ValueTypeInfo(*this); }

} // namespace ZEL::internal
