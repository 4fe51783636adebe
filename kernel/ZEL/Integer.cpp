#include <ZEL/Integer.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

namespace ZEL {

Integer::Integer(String const & text) : fValue(internal::requiredNumber<std::int32_t>(text.str(), "INT32_T")) {}

HASP::TypeInfo const & Integer::getTypeInfo() {
    static HASP::TypeInfo const info = IntegerTypeInfo::Create();
    return info;
}

String Integer::toString() const { return getTypeInfo().convertToString(*this); }

} // namespace ZEL
