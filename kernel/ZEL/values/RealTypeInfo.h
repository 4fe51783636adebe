#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `Real`: six significant digits; what follows the number in a text is ignored.
class ZEL_API RealTypeInfo final : public internal::TypeInfoBase<RealTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] RealTypeInfo * clone() const override;
};

} // namespace ZEL
