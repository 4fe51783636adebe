#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `Double`: six significant digits; what follows the number in a text is ignored.
class ZEL_API DoubleTypeInfo final : public internal::TypeInfoBase<DoubleTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] DoubleTypeInfo * clone() const override;
};

} // namespace ZEL
