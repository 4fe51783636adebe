#include <ZEL/base/Exception.h>
#include <ZEL/sequences/IteratorType.h>

#include <utility>

namespace ZEL {

IteratorType::IteratorType(ImmutableObject elementType) : fElementType(std::move(elementType)) {}

IteratorType::~IteratorType() = default;

HASP::TypeInfo IteratorType::Create(ImmutableObject elementType) {
    return CreateTypeInfo(new IteratorType(std::move(elementType)));
}

HASP::any IteratorType::convertFromString(std::string const &, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    raiseInternalError("Not Implemented yet");
}

std::string IteratorType::convertToString(HASP::any const &) const { raiseInternalError("Not Implemented yet"); }

HASP::any IteratorType::defaultConstruct() const { raiseInternalError("Not Implemented yet"); }

IteratorType * IteratorType::clone() const { return new IteratorType(*this); }

} // namespace ZEL
