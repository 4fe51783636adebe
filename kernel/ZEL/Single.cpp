#include <ZEL/Single.h>
#include <ZEL/values/ValueTypeInfoMembers.h>

namespace ZEL {

template <> struct internal::ValueText<Single> : NumberValueText<Single> {
    static constexpr ErrorPlace place{"float", "kernel/ZEL/Single", 31};
};
template class internal::ValueTypeInfo<Single>;

Single::Single(String const & text) : fValue(internal::requiredNumber<float>(text.str(), "float")) {}

Single::Single(ImmutableValueObject const & object) : Single(internal::unboxed<Single>(object)) {}

Single::Single(ImmutableObject const & object) : Single(internal::unboxed<Single>(object)) {}

HASP::TypeInfo const & Single::getTypeInfo() {
    static HASP::TypeInfo const info = SingleTypeInfo::Create();
    return info;
}

String Single::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
