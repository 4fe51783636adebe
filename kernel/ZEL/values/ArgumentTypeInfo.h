#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of `Argument`: "(" name "," value ")".
///
/// The value is printed as it prints itself, and as "()" if there is none. Reading accepts an empty text, and one whose
/// closing parenthesis is missing; of the value it checks the shape only, since the text does not tell its type: the
/// result has no value. A text of another shape throws.
class ZEL_API ArgumentTypeInfo final : public internal::TypeInfoBase<ArgumentTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] ArgumentTypeInfo * clone() const override;
};

} // namespace ZEL
