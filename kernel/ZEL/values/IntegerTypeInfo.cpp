#include <ZEL/Integer.h>
#include <ZEL/values/IntegerTypeInfo.h>
#include <ZEL/values/NumberText.h>

namespace ZEL {

HASP::any IntegerTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    if (auto const number = internal::numberFromText<std::int32_t>(text)) {
        return Integer(*number);
    }
    internal::reportBadText(errors, text, "INT32_T", "kernel/ZEL/Integer", 33);
    return {};
}

std::string IntegerTypeInfo::convertToString(HASP::any const & value) const {
    return std::to_string(HASP::any_cast<Integer const &>(value).getValue());
}

HASP::any IntegerTypeInfo::defaultConstruct() const { return Integer(); }

IntegerTypeInfo * IntegerTypeInfo::clone() const { return new IntegerTypeInfo(*this); }

} // namespace ZEL
