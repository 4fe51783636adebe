#pragma once

#include <ZEL/values/EnumerationValue.h>

namespace ZEL {

/// Which way a parameter passes a value.
class ZEL_API ParameterDirectionKind : public EnumerationValue<ParameterDirectionKind> {
public:
    enum Value { In, Inout, Out, Return };

    using EnumerationValue::EnumerationValue;
    constexpr ParameterDirectionKind() noexcept = default;
    constexpr ParameterDirectionKind(Value value) noexcept : EnumerationValue(value) {}
    constexpr operator Value() const noexcept { return getValue(); }

    [[nodiscard]] static std::string getTypeName() { return "ZEL.ParameterDirectionKind"; }
    [[nodiscard]] static std::map<std::string, Value> const & getLiterals();
};

} // namespace ZEL
