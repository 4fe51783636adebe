#pragma once

#include <ZEL/values/Object.h>
#include <ZEL/values/TypeInfoBase.h>

namespace ZEL {

/// The type of iterators over one element type. It stands for a registered name; its values have no text form, so all
/// conversions raise "Not Implemented yet".
class ZEL_API IteratorType final : public internal::TypeInfoBase<IteratorType> {
public:
    explicit IteratorType(ImmutableObject elementType);
    ~IteratorType() override;

    /// The element type is a `Type`, and may be null. A count is held on it.
    [[nodiscard]] static HASP::TypeInfo Create(ImmutableObject elementType);

    template <class Type = ImmutableType> [[nodiscard]] Type getElementType() const { return Type(fElementType); }

    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] IteratorType * clone() const override;

private:
    ImmutableObject fElementType;
};

} // namespace ZEL
