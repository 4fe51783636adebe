#include <ZEL/Argument.h>
#include <ZEL/base/Exception.h>
#include <ZEL/values/ValueObjectFactory.h>

#include <array>
#include <optional>
#include <utility>

namespace ZEL {

namespace {

/// The texts of the parameters in a list of at most two; a place after the last one stays empty.
using Slots = std::array<std::optional<std::string>, 2>;

class SlotFiller {
public:
    void store(std::string text) {
        if (fUsed == fSlots.size()) {
            raiseInternalError("There are more parameters in the string than the object!");
        }
        fSlots[fUsed++] = std::move(text);
    }
    [[nodiscard]] Slots take() { return std::move(fSlots); }

private:
    Slots fSlots;
    std::size_t fUsed = 0;
};

Slots parse(std::string const & text) {
    if (text.front() != '(') {
        raiseInternalError("Expecting: '(' at start of string!");
    }
    SlotFiller slots;
    std::size_t begin = 1;
    int depth = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '(') {
            ++depth;
        } else if (text[i] == ')') {
            if (--depth < 0) {
                if (i + 1 < text.size()) {
                    raiseInternalError("Premature ')' in createFromString!");
                }
                slots.store(text.substr(begin, i - begin));
            }
        } else if (text[i] == ',' && depth == 0) {
            slots.store(text.substr(begin, i - begin));
            begin = i + 1;
        }
    }
    return slots.take();
}

} // namespace

HASP::StringID Argument::fName_ID("name");
HASP::StringID Argument::fValue_ID("value");

Argument::Argument(String name, Object const & value)
    : fName(std::move(name)), fValue(value.getImplementation(), Deviant()) {}

Argument::Argument(ImmutableValueObject const & object) : Argument(internal::unboxed<Argument>(object)) {}

Argument::Argument(ImmutableObject const & object) : Argument(internal::unboxed<Argument>(object)) {}

Object Argument::toZELObject() const { return *this; }

ValueObject Argument::toZELValueObject() const { return *this; }

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

HASP::any ArgumentTypeInfo::convertFromString(std::string const & text, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    Argument argument;
    if (!text.empty()) {
        Slots const slots = parse(text);
        if (slots[0]) {
            argument.setName(String(ValueObjectFactory::createFromString("ZEL.String", *slots[0])));
        }
    }
    return argument;
}

std::string ArgumentTypeInfo::convertToString(HASP::any const & value) const {
    auto const & argument = HASP::any_cast<Argument const &>(value);
    Object const object = argument.getValue();
    return "(" + argument.getName().str() + "," + (object.isValid() ? object.toString().str() : "()") + ")";
}

HASP::any ArgumentTypeInfo::defaultConstruct() const { return Argument(); }

ArgumentTypeInfo * ArgumentTypeInfo::clone() const { return new ArgumentTypeInfo(*this); }

} // namespace ZEL
