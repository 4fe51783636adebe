#include <ZEL/values/NumberText.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueTypeInfoMembers.h>

namespace ZEL {

template <> struct internal::ValueText<String> {
    static std::optional<String> from(std::string const & text) { return String(text); }
    static std::string to(String const & value) { return value.str(); }
    static constexpr ErrorPlace place{}; // every text is one
};
template class internal::ValueTypeInfo<String>;

String::String(double number) : fText(internal::textOfFloating(number)) {}

String::String(float number) : fText(internal::textOfFloating(static_cast<double>(number))) {}

String::String(int number) : fText(std::to_string(number)) {}

String::String(unsigned int number) : fText(std::to_string(number)) {}

String::String(ImmutableValueObject const & object) : String(internal::unboxed<String>(object)) {}

String::String(ImmutableObject const & object) : String(internal::unboxed<String>(object)) {}

HASP::TypeInfo const & String::getTypeInfo() {
    static HASP::TypeInfo const info = StringTypeInfo::Create();
    return info;
}

} // namespace ZEL
