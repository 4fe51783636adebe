#include <ZEL/Double.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

namespace ZEL {

Double::Double(String const & text) : fValue(internal::requiredNumber<double>(text.str(), "double")) {}

HASP::TypeInfo const & Double::getTypeInfo() {
    static HASP::TypeInfo const info = DoubleTypeInfo::Create();
    return info;
}

String Double::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
