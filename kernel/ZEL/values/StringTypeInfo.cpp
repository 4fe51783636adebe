#include <ZEL/String.h>
#include <ZEL/values/StringTypeInfo.h>

namespace ZEL {

HASP::any StringTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    return String(text);
}

std::string StringTypeInfo::convertToString(HASP::any const & value) const {
    return HASP::any_cast<String const &>(value).str();
}

HASP::any StringTypeInfo::defaultConstruct() const { return String(); }

StringTypeInfo * StringTypeInfo::clone() const { return new StringTypeInfo(*this); }

} // namespace ZEL
