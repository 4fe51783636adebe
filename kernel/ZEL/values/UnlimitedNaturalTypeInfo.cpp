#include <ZEL/UnlimitedNatural.h>
#include <ZEL/values/NumberText.h>
#include <ZEL/values/UnlimitedNaturalTypeInfo.h>

namespace ZEL {

HASP::any UnlimitedNaturalTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    if (text == "*" || text == "-1") {
        return UnlimitedNatural(UnlimitedNatural::GetUnlimitedValue());
    }
    if (auto const number = internal::numberFromText<std::uint32_t>(text)) {
        return UnlimitedNatural(*number);
    }
    internal::reportBadText(errors, text, "UINT32_T", "kernel/ZEL/UnlimitedNatural", 34);
    return {};
}

std::string UnlimitedNaturalTypeInfo::convertToString(HASP::any const & value) const {
    auto const & number = HASP::any_cast<UnlimitedNatural const &>(value);
    return number.isUnlimited() ? "*" : std::to_string(number.getValue());
}

HASP::any UnlimitedNaturalTypeInfo::defaultConstruct() const { return UnlimitedNatural(); }

UnlimitedNaturalTypeInfo * UnlimitedNaturalTypeInfo::clone() const { return new UnlimitedNaturalTypeInfo(*this); }

} // namespace ZEL
