#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `PropertyStorage` handles. They have no text form: every text makes a null handle, and every handle the
/// empty text.
class ZEL_API PropertyStorageType final : public internal::TypeInfoBase<PropertyStorageType> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] PropertyStorageType * clone() const override;
};

} // namespace ZEL
