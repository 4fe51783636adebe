#include <ZEL/Boolean.h>
#include <ZEL/values/ValueTypeInfoMembers.h>

namespace ZEL {

template <> struct internal::ValueText<Boolean> {
    static std::optional<Boolean> from(std::string const & text) {
        return text == "true" || text == "false" ? std::optional(Boolean(text == "true")) : std::nullopt;
    }
    static std::string to(Boolean const & value) { return value.getValue() ? "true" : "false"; }
    static constexpr ErrorPlace place{"bool", "kernel/ZEL/Boolean", 32};
};
template class internal::ValueTypeInfo<Boolean>;

Boolean::Boolean(String const & text) : fValue(internal::requiredNumber<bool>(text.str(), "bool")) {}

Boolean::Boolean(ImmutableValueObject const & object) : Boolean(internal::unboxed<Boolean>(object)) {}

Boolean::Boolean(ImmutableObject const & object) : Boolean(internal::unboxed<Boolean>(object)) {}

HASP::TypeInfo const & Boolean::getTypeInfo() {
    static HASP::TypeInfo const info = BooleanTypeInfo::Create();
    return info;
}

String Boolean::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
