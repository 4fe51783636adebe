#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `UnlimitedNatural`: decimal, and "*" for the unlimited value, which is also read from "-1". What follows
/// the number in a text is ignored.
class ZEL_API UnlimitedNaturalTypeInfo final : public internal::TypeInfoBase<UnlimitedNaturalTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] UnlimitedNaturalTypeInfo * clone() const override;
};

} // namespace ZEL
