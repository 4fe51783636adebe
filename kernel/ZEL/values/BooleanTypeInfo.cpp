#include <ZEL/Boolean.h>
#include <ZEL/values/BooleanTypeInfo.h>

namespace ZEL {

HASP::any BooleanTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    if (text == "true" || text == "false") {
        return Boolean(text == "true");
    }
    internal::reportBadText(errors, text, "bool", "kernel/ZEL/Boolean", 32);
    return {};
}

std::string BooleanTypeInfo::convertToString(HASP::any const & value) const {
    return HASP::any_cast<Boolean const &>(value).getValue() ? "true" : "false";
}

HASP::any BooleanTypeInfo::defaultConstruct() const { return Boolean(); }

BooleanTypeInfo * BooleanTypeInfo::clone() const { return new BooleanTypeInfo(*this); }

} // namespace ZEL
