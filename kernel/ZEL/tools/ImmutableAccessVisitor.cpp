#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/ImmutableAccessVisitor.h>
#include <ZEL/values/ValueObject.h>

namespace ZEL {

ImmutableAccessVisitor::~ImmutableAccessVisitor() = default;

bool ImmutableAccessVisitor::visitObject(ImmutableObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("Attempt to traverse invalid object!");
    }
    if (ImmutableModel const model(object); model.isValid()) {
        return visitModel(model);
    }
    if (ImmutableStereotypeObject const instance(object); instance.isValid()) {
        return visitStereotypeObject(instance);
    }
    if (ImmutableClassObject const classObject(object); classObject.isValid()) {
        return visitClassObject(classObject);
    }
    if (ImmutableValueObject const value(object); value.isValid()) {
        return visitValueObject(value);
    }
    raiseInternalError("ImmutableAccessVisitor::visitObject() should never reach this point!");
}

bool ImmutableAccessVisitorEmpty::visitObject(ImmutableObject const &) { return true; }
bool ImmutableAccessVisitorEmpty::visitClassObject(ImmutableClassObject const &) { return true; }
bool ImmutableAccessVisitorEmpty::visitValueObject(ImmutableValueObject const &) { return true; }
bool ImmutableAccessVisitorEmpty::visitStereotypeObject(ImmutableStereotypeObject const &) { return true; }
bool ImmutableAccessVisitorEmpty::visitModel(ImmutableModel const &) { return true; }
bool ImmutableAccessVisitorEmpty::visitProperty(ImmutableClassObject const &, ImmutableProperty const &) {
    return true;
}

} // namespace ZEL
