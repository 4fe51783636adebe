#include <ZEL/Single.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/SingleTypeInfo.h>

namespace ZEL {

HASP::any SingleTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    if (auto const number = internal::numberFromText<float>(text)) {
        return Single(*number);
    }
    internal::reportBadText(errors, text, "float", "kernel/ZEL/Single", 31);
    return {};
}

std::string SingleTypeInfo::convertToString(HASP::any const & value) const {
    return internal::textOfFloating(HASP::any_cast<Single const &>(value).getValue());
}

HASP::any SingleTypeInfo::defaultConstruct() const { return Single(); }

SingleTypeInfo * SingleTypeInfo::clone() const { return new SingleTypeInfo(*this); }

} // namespace ZEL
