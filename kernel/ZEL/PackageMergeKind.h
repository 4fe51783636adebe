#pragma once

#include <ZEL/values/EnumerationValue.h>

namespace ZEL {

/// How a package takes in another one. The first literal is spelt as files have it.
class ZEL_API PackageMergeKind : public EnumerationValue<PackageMergeKind> {
public:
    enum Value { Extend, Define };

    using EnumerationValue::EnumerationValue;
    constexpr PackageMergeKind() noexcept = default;
    constexpr PackageMergeKind(Value value) noexcept : EnumerationValue(value) {}
    constexpr operator Value() const noexcept { return getValue(); }

    [[nodiscard]] static std::string getTypeName() { return "ZEL.PackageMergeKind"; }
    [[nodiscard]] static std::map<std::string, Value> const & getLiterals();
};

} // namespace ZEL
