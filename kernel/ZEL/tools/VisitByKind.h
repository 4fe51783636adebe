#pragma once

#include <ZEL/base/Exception.h>

#include <string>

namespace ZEL::internal {

/// Passes a valid object on to the operation of the visitor for the first of the kinds, which are handles, that it is
/// of.
template <class ModelKind, class StereotypeKind, class ClassKind, class ValueKind, class Visitor, class AnyObject>
bool visitByKind(Visitor & visitor, AnyObject const & object, char const * visitorName) {
    if (ModelKind const model(object); model.isValid()) {
        return visitor.visitModel(model);
    }
    if (StereotypeKind const instance(object); instance.isValid()) {
        return visitor.visitStereotypeObject(instance);
    }
    if (ClassKind const classObject(object); classObject.isValid()) {
        return visitor.visitClassObject(classObject);
    }
    if (ValueKind const value(object); value.isValid()) {
        return visitor.visitValueObject(value);
    }
    raiseInternalError(std::string(visitorName) + "::visitObject() should never reach this point!");
}

} // namespace ZEL::internal
