#include <ZEL/Real.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/RealTypeInfo.h>

namespace ZEL {

HASP::any RealTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    if (auto const number = internal::numberFromText<double>(text)) {
        return Real(*number);
    }
    internal::reportBadText(errors, text, "double", "kernel/ZEL/Real", 31);
    return {};
}

std::string RealTypeInfo::convertToString(HASP::any const & value) const {
    return internal::textOfFloating(HASP::any_cast<Real const &>(value).getValue());
}

HASP::any RealTypeInfo::defaultConstruct() const { return Real(); }

RealTypeInfo * RealTypeInfo::clone() const { return new RealTypeInfo(*this); }

} // namespace ZEL
