#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/AccessVisitor.h>
#include <ZEL/values/ValueObject.h>

namespace ZEL {

AccessVisitor::~AccessVisitor() = default;

bool AccessVisitor::visitObject(Object object) {
    if (!object.isValid()) {
        return false;
    }
    if (Model const model(object); model.isValid()) {
        return visitModel(model);
    }
    if (StereotypeObject const instance(object); instance.isValid()) {
        return visitStereotypeObject(instance);
    }
    if (ClassObject const classObject(object); classObject.isValid()) {
        return visitClassObject(classObject);
    }
    if (ValueObject const value(object); value.isValid()) {
        return visitValueObject(value);
    }
    raiseInternalError("AccessVisitor::visitObject() should never reach this point!");
}

bool AccessVisitorEmpty::visitObject(Object) { return true; }
bool AccessVisitorEmpty::visitClassObject(ClassObject) { return true; }
bool AccessVisitorEmpty::visitValueObject(ValueObject) { return true; }
bool AccessVisitorEmpty::visitStereotypeObject(StereotypeObject) { return true; }
bool AccessVisitorEmpty::visitModel(Model) { return true; }
bool AccessVisitorEmpty::visitProperty(ClassObject, Property) { return true; }

} // namespace ZEL
