#include <ZEL/Argument.h>
#include <ZEL/values/ArgumentTypeInfo.h>
#include <ZEL/values/ValueObjectFactory.h>

#include <utility>

namespace ZEL {

HASP::StringID Argument::fName_ID("name");
HASP::StringID Argument::fValue_ID("value");

Argument::Argument(String name, Object const & value)
    : fName(std::move(name)), fValue(value.getImplementation(), Deviant()) {}

HASP::TypeInfo const & Argument::getTypeInfo() {
    static HASP::TypeInfo const info = ArgumentTypeInfo::Create();
    return info;
}

Argument Argument::fromString(String const & text) {
    return Argument(ValueObjectFactory::createFromString(getTypeName(), text.str()));
}

String Argument::toString() const { return getTypeInfo().convertToString(*this); }

void Argument::setValue(Object const & value) { fValue = Object(value.getImplementationWithoutAssert(), Deviant()); }

ImmutableObject Argument::getNameAsImmutableObject() const { return ValueObject(fName); }

void Argument::removeObjectName(ImmutableObject const & name) {
    if (fName == String(name)) {
        removeObjectFirstName();
    }
}

void Argument::removeObjectValue(ImmutableObject const & value) {
    if (fValue == value) {
        removeValue();
    }
}

} // namespace ZEL
