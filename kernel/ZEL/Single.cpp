#include <ZEL/Single.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

namespace ZEL {

Single::Single(String const & text) : fValue(internal::requiredNumber<float>(text.str(), "float")) {}

HASP::TypeInfo const & Single::getTypeInfo() {
    static HASP::TypeInfo const info = SingleTypeInfo::Create();
    return info;
}

String Single::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
