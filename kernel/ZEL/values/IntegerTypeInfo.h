#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `Integer`: decimal; what follows the number in a text is ignored.
class ZEL_API IntegerTypeInfo final : public internal::TypeInfoBase<IntegerTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] IntegerTypeInfo * clone() const override;
};

} // namespace ZEL
