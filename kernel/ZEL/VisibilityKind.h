#pragma once

#include <ZEL/values/EnumerationValue.h>

namespace ZEL {

/// Who may see an element of a namespace.
class ZEL_API VisibilityKind : public EnumerationValue<VisibilityKind> {
public:
    enum Value { Public, Private, Protected, Package };

    using EnumerationValue::EnumerationValue;
    constexpr VisibilityKind() noexcept = default;
    constexpr VisibilityKind(Value value) noexcept : EnumerationValue(value) {}
    constexpr operator Value() const noexcept { return getValue(); }

    [[nodiscard]] static std::string getTypeName() { return "ZEL.VisibilityKind"; }
    [[nodiscard]] static std::map<std::string, Value> const & getLiterals();
};

} // namespace ZEL
