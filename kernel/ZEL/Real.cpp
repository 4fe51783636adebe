#include <ZEL/Real.h>
#include <ZEL/values/ValueTypeInfoMembers.h>

namespace ZEL {

template <> struct internal::ValueText<Real> : NumberValueText<Real> {
    static constexpr ErrorPlace place{"double", "kernel/ZEL/Real", 31};
};
template class internal::ValueTypeInfo<Real>;

Real::Real(String const & text) : fValue(internal::requiredNumber<double>(text.str(), "double")) {}

Real::Real(ImmutableValueObject const & object) : Real(internal::unboxed<Real>(object)) {}

Real::Real(ImmutableObject const & object) : Real(internal::unboxed<Real>(object)) {}

HASP::TypeInfo const & Real::getTypeInfo() {
    static HASP::TypeInfo const info = RealTypeInfo::Create();
    return info;
}

String Real::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
