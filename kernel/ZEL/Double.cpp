#include <ZEL/Double.h>
#include <ZEL/values/ValueTypeInfoMembers.h>

namespace ZEL {

template <> struct internal::ValueText<Double> : NumberValueText<Double> {
    static constexpr ErrorPlace place{"double", "kernel/ZEL/Double", 33};
};
template class internal::ValueTypeInfo<Double>;

Double::Double(String const & text) : fValue(internal::requiredNumber<double>(text.str(), "double")) {}

Double::Double(ImmutableValueObject const & object) : Double(internal::unboxed<Double>(object)) {}

Double::Double(ImmutableObject const & object) : Double(internal::unboxed<Double>(object)) {}

HASP::TypeInfo const & Double::getTypeInfo() {
    static HASP::TypeInfo const info = DoubleTypeInfo::Create();
    return info;
}

String Double::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
