#include <ZEL/base/Exception.h>
#include <ZEL/sequences/SequenceType.h>

#include <utility>

namespace ZEL {

SequenceType::SequenceType(ImmutableObject elementType) : fElementType(std::move(elementType)) {}

SequenceType::~SequenceType() = default;

HASP::TypeInfo SequenceType::Create(ImmutableObject elementType) {
    return CreateTypeInfo(new SequenceType(std::move(elementType)));
}

HASP::any SequenceType::convertFromString(std::string const &, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    raiseInternalError("Not Implemented yet");
}

std::string SequenceType::convertToString(HASP::any const &) const { raiseInternalError("Not Implemented yet"); }

HASP::any SequenceType::defaultConstruct() const { raiseInternalError("Not Implemented yet"); }

SequenceType * SequenceType::clone() const { return new SequenceType(*this); }

} // namespace ZEL
