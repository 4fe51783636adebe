#pragma once

#include <ZEL/values/TypeInfoBase.h>
#include <ZEL/values/ValuesFwd.h>

namespace ZEL {

namespace internal {

/// The type of a primitive value: how its text is read and printed, whatever the process's locale.
///
/// A text that is no value leaves the error in the holder and returns an empty `any`.
template <class Value> class ZEL_API ValueTypeInfo final : public TypeInfoBase<ValueTypeInfo<Value>> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] ValueTypeInfo * clone() const override;
};

extern template class ValueTypeInfo<Boolean>;
extern template class ValueTypeInfo<Double>;
extern template class ValueTypeInfo<Integer>;
extern template class ValueTypeInfo<Real>;
extern template class ValueTypeInfo<Single>;
extern template class ValueTypeInfo<String>;
extern template class ValueTypeInfo<UnlimitedNatural>;

} // namespace internal

/// Exactly "true" and "false".
using BooleanTypeInfo = internal::ValueTypeInfo<Boolean>;
/// Decimal; what follows the number in a text is ignored.
using IntegerTypeInfo = internal::ValueTypeInfo<Integer>;
/// The same, and "*" for the unlimited value, which is also read from "-1".
using UnlimitedNaturalTypeInfo = internal::ValueTypeInfo<UnlimitedNatural>;
/// Six significant digits; what follows the number in a text is ignored.
using DoubleTypeInfo = internal::ValueTypeInfo<Double>;
using RealTypeInfo = internal::ValueTypeInfo<Real>;
using SingleTypeInfo = internal::ValueTypeInfo<Single>;
/// Every text is a value.
using StringTypeInfo = internal::ValueTypeInfo<String>;

} // namespace ZEL
