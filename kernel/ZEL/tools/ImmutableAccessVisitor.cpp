#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/ImmutableAccessVisitor.h>
#include <ZEL/tools/VisitByKind.h>
#include <ZEL/values/ValueObject.h>

namespace ZEL {

ImmutableAccessVisitor::~ImmutableAccessVisitor() = default;

bool ImmutableAccessVisitor::visitObject(ImmutableObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("Attempt to traverse invalid object!");
    }
    return internal::visitByKind<ImmutableModel, ImmutableStereotypeObject, ImmutableClassObject, ImmutableValueObject>(
        *this, object, "ImmutableAccessVisitor");
}

} // namespace ZEL
