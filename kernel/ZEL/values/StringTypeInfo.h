#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `String`: every text is a value.
class ZEL_API StringTypeInfo final : public internal::TypeInfoBase<StringTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] StringTypeInfo * clone() const override;
};

} // namespace ZEL
