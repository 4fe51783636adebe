#pragma once

#include <ZEL/values/EnumerationValue.h>

namespace ZEL {

/// Whether and how the values of a property go into files.
class ZEL_API PersistenceKind : public EnumerationValue<PersistenceKind> {
public:
    enum Value { Default, Transient, Extension };

    using EnumerationValue::EnumerationValue;
    constexpr PersistenceKind() noexcept = default;
    constexpr PersistenceKind(Value value) noexcept : EnumerationValue(value) {}
    constexpr operator Value() const noexcept { return getValue(); }

    [[nodiscard]] static std::string getTypeName() { return "ZEL.PersistenceKind"; }
    [[nodiscard]] static std::map<std::string, Value> const & getLiterals();
};

} // namespace ZEL
