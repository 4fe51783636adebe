#include <ZEL/Real.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

namespace ZEL {

Real::Real(String const & text) : fValue(internal::requiredNumber<double>(text.str(), "double")) {}

HASP::TypeInfo const & Real::getTypeInfo() {
    static HASP::TypeInfo const info = RealTypeInfo::Create();
    return info;
}

String Real::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
