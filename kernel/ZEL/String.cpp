#include <ZEL/Boolean.h>
#include <ZEL/Double.h>
#include <ZEL/Integer.h>
#include <ZEL/Real.h>
#include <ZEL/Single.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/ValueTypeInfo.h>

namespace ZEL {

String::String(double number) : fText(internal::textOfFloating(number)) {}

String::String(float number) : fText(internal::textOfFloating(static_cast<double>(number))) {}

String::String(int number) : fText(std::to_string(number)) {}

String::String(unsigned int number) : fText(std::to_string(number)) {}

String::String(Boolean const & value) : String(value.toString()) {}

String::String(Integer const & value) : String(value.toString()) {}

String::String(UnlimitedNatural const & value) : String(value.toString()) {}

String::String(Double const & value) : String(value.toString()) {}

String::String(Real const & value) : String(value.toString()) {}

String::String(Single const & value) : String(value.toString()) {}

HASP::TypeInfo const & String::getTypeInfo() {
    static HASP::TypeInfo const info = StringTypeInfo::Create();
    return info;
}

} // namespace ZEL
