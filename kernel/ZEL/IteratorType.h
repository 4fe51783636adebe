#pragma once

#include <ZEL/TypeInfoBase.h>
#include <ZEL/metamodel/Object.h>

namespace ZEL {

/// The type of iterators over one element type. It stands for a registered name; its values have no text form, so all
/// conversions raise "Not Implemented yet".
class ZEL_API IteratorType final : public internal::TypeInfoBase<IteratorType> {
public:
    explicit IteratorType(ImmutableObject elementType);
    ~IteratorType() override;

    /// The element type may be null. A count is held on it.
    [[nodiscard]] static HASP::TypeInfo Create(ImmutableType const & elementType);

    [[nodiscard]] ImmutableType getElementType() const;

    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] IteratorType * clone() const override;

private:
    ImmutableObject fElementType; ///< a `Type`, as the most general handle
};

} // namespace ZEL
