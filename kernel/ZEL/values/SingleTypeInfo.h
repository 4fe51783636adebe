#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `Single`: six significant digits; what follows the number in a text is ignored.
class ZEL_API SingleTypeInfo final : public internal::TypeInfoBase<SingleTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] SingleTypeInfo * clone() const override;
};

} // namespace ZEL
