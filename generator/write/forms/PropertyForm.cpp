#include "write/forms/PropertyForm.h"

namespace zelgen {

PropertyForm const & PropertyForm::of(Property const & property) {
    return property.form == Form::Reference ? referenceForm() : property.form == Form::Many ? manyForm() : valueForm();
}

Printer PropertyForm::forHandle(Printer const & print, Property const & p, bool immutable) {
    return print.knowing({{"Immutable", immutable ? "Immutable" : ""}, {"H", p.type->cppName(immutable)}});
}

Printer PropertyForm::forwarding(Printer const & print, Property const & p, Property const & by) {
    return print.knowing({{"Q", by.capital}, {"Qs", by.plural}, {"I", qualifierOf(p, by)}});
}

std::string interfaceOf(Class const & c) { return c.home->cppNamespace + "::NSInterface::" + c.name + "Intf"; }

std::string operationsOf(Class const & c) {
    return c.hasGeneratedInterface ? interfaceOf(c) : c.home->cppNamespace + "::NSInterface::" + c.name + "Operations";
}

std::string descriptorOperation(Property const & p) { return p.base + "Property"; }

std::string descriptorOf(Property const & p) { return operationsOf(*p.owner) + "::" + descriptorOperation(p) + "()"; }

std::string holderName(Class const & of, Holder holder) {
    return of.name + (holder == Holder::Body ? "Impl" : "DeviantImpl");
}

std::string qualifierOf(Property const & p, Property const & by) {
    return p.base == by.base ? interfaceOf(*by.owner) + "::" : "";
}

std::string unimplementedText(Property const & p) {
    return "\"The " + p.owner->name + '.' + p.base + " derived property is not yet implemented!\"";
}

} // namespace zelgen
