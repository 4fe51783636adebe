#include <ZEL/Boolean.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

namespace ZEL {

Boolean::Boolean(String const & text) : fValue(internal::requiredNumber<bool>(text.str(), "bool")) {}

HASP::TypeInfo const & Boolean::getTypeInfo() {
    static HASP::TypeInfo const info = BooleanTypeInfo::Create();
    return info;
}

String Boolean::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
