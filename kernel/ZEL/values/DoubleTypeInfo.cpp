#include <ZEL/Double.h>
#include <ZEL/values/DoubleTypeInfo.h>
#include <ZEL/values/NumberText.h>

namespace ZEL {

HASP::any DoubleTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    if (auto const number = internal::numberFromText<double>(text)) {
        return Double(*number);
    }
    internal::reportBadText(errors, text, "double", "kernel/ZEL/Double", 33);
    return {};
}

std::string DoubleTypeInfo::convertToString(HASP::any const & value) const {
    return internal::textOfFloating(HASP::any_cast<Double const &>(value).getValue());
}

HASP::any DoubleTypeInfo::defaultConstruct() const { return Double(); }

DoubleTypeInfo * DoubleTypeInfo::clone() const { return new DoubleTypeInfo(*this); }

} // namespace ZEL
