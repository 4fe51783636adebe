#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `Boolean`: exactly "true" and "false".
class ZEL_API BooleanTypeInfo final : public internal::TypeInfoBase<BooleanTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] BooleanTypeInfo * clone() const override;
};

} // namespace ZEL
