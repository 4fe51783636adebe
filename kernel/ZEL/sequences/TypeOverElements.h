#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/values/Object.h>
#include <ZEL/values/TypeInfoBase.h>

#include <string>
#include <utility>

namespace ZEL::internal {

/// What `SequenceType` and `IteratorType` share, the types over one element type. Such a type stands for a registered
/// name; its values have no text form, so all conversions throw "Not Implemented yet".
template <class Info> class TypeOverElements : public TypeInfoBase<Info> {
public:
    explicit TypeOverElements(ImmutableObject elementType) : fElementType(std::move(elementType)) {}

    /// The element type is a `Type`, and may be null. A count is held on it.
    [[nodiscard]] static HASP::TypeInfo Create(ImmutableObject elementType) {
        return HASP::Type::CreateTypeInfo(new Info(std::move(elementType)));
    }

    template <class Type = ImmutableType> [[nodiscard]] Type getElementType() const { return Type(fElementType); }

    [[nodiscard]] HASP::any convertFromString(std::string const &, HASP::ErrorHolder & errors) const override {
        requireNoError(errors);
        raiseInternalError("Not Implemented yet");
    }
    [[nodiscard]] std::string convertToString(HASP::any const &) const override {
        raiseInternalError("Not Implemented yet");
    }
    [[nodiscard]] HASP::any defaultConstruct() const override { raiseInternalError("Not Implemented yet"); }

private:
    ImmutableObject fElementType;
};

} // namespace ZEL::internal
