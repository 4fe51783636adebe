#include <ZEL/UnlimitedNatural.h>
#include <ZEL/values/ValueTypeInfoMembers.h>

namespace ZEL {

template <> struct internal::ValueText<UnlimitedNatural> : NumberValueText<UnlimitedNatural> {
    static std::optional<UnlimitedNatural> from(std::string const & text) {
        return text == "*" || text == "-1" ? UnlimitedNatural(UnlimitedNatural::GetUnlimitedValue())
                                           : NumberValueText<UnlimitedNatural>::from(text);
    }
    static std::string to(UnlimitedNatural const & value) {
        return value.isUnlimited() ? "*" : NumberValueText<UnlimitedNatural>::to(value);
    }
    static constexpr ErrorPlace place{"UINT32_T", "kernel/ZEL/UnlimitedNatural", 34};
};
template class internal::ValueTypeInfo<UnlimitedNatural>;

UnlimitedNatural::UnlimitedNatural(String const & text)
    : fValue(internal::requiredNumber<std::uint32_t>(text.str(), "UINT32_T")) {}

UnlimitedNatural::UnlimitedNatural(ImmutableValueObject const & object)
    : UnlimitedNatural(internal::unboxed<UnlimitedNatural>(object)) {}

UnlimitedNatural::UnlimitedNatural(ImmutableObject const & object)
    : UnlimitedNatural(internal::unboxed<UnlimitedNatural>(object)) {}

HASP::TypeInfo const & UnlimitedNatural::getTypeInfo() {
    static HASP::TypeInfo const info = UnlimitedNaturalTypeInfo::Create();
    return info;
}

String UnlimitedNatural::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
