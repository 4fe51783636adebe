#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/AccessVisitor.h>
#include <ZEL/tools/VisitByKind.h>
#include <ZEL/values/ValueObject.h>

namespace ZEL {

AccessVisitor::~AccessVisitor() = default;

bool AccessVisitor::visitObject(Object object) {
    return object.isValid() &&
           internal::visitByKind<Model, StereotypeObject, ClassObject, ValueObject>(*this, object, "AccessVisitor");
}

bool AccessVisitorEmpty::visitObject(Object) { return true; }
bool AccessVisitorEmpty::visitClassObject(ClassObject) { return true; }
bool AccessVisitorEmpty::visitValueObject(ValueObject) { return true; }
bool AccessVisitorEmpty::visitStereotypeObject(StereotypeObject) { return true; }
bool AccessVisitorEmpty::visitModel(Model) { return true; }
bool AccessVisitorEmpty::visitProperty(ClassObject, Property) { return true; }

} // namespace ZEL
