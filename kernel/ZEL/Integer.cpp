#include <ZEL/Integer.h>
#include <ZEL/values/ValueTypeInfoMembers.h>

namespace ZEL {

template <> struct internal::ValueText<Integer> : NumberValueText<Integer> {
    static constexpr ErrorPlace place{"INT32_T", "kernel/ZEL/Integer", 33};
};
template class internal::ValueTypeInfo<Integer>;

Integer::Integer(String const & text) : fValue(internal::requiredNumber<std::int32_t>(text.str(), "INT32_T")) {}

Integer::Integer(ImmutableValueObject const & object) : Integer(internal::unboxed<Integer>(object)) {}

Integer::Integer(ImmutableObject const & object) : Integer(internal::unboxed<Integer>(object)) {}

HASP::TypeInfo const & Integer::getTypeInfo() {
    static HASP::TypeInfo const info = IntegerTypeInfo::Create();
    return info;
}

String Integer::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
