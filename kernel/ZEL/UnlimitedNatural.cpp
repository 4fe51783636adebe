#include <ZEL/UnlimitedNatural.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

namespace ZEL {

UnlimitedNatural::UnlimitedNatural(String const & text)
    : fValue(internal::requiredNumber<std::uint32_t>(text.str(), "UINT32_T")) {}

HASP::TypeInfo const & UnlimitedNatural::getTypeInfo() {
    static HASP::TypeInfo const info = UnlimitedNaturalTypeInfo::Create();
    return info;
}

String UnlimitedNatural::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
