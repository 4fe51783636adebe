// The container ends of every object.

#include <ZEL/Boolean.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/ContaineeSequence.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PropertySupport.h>

namespace ZEL::NSInterface {

namespace {

/// The model of an object as its state has it, null if it has none.
ModelIntf * storedModel(ClassObjectIntf const & object, Deviant deviant) {
    internal::BodyCore const & body = *object.internal_body();
    return body.readState(deviant)->hasModel() ? body.internal_model() : nullptr;
}

bool isModelAlive(ModelIntf const * model, Deviant deviant) {
    return model != nullptr && model->deviant_isValid(deviant);
}

/// Whether other objects can name `object` as their container. False while an object without contents is new, which
/// saves the building of deep models a walk per object. Later the lists alone do not tell: by isolation, assignment and
/// trimmed history an object can come to name a container whose own state does not list it.
bool canHaveContents(ClassObjectIntf const & object, Deviant deviant) {
    return internal::hasContainees(object, deviant) ||
           (deviant.isWithinTransaction() &&
            deviant.getSavedOldStateOfObject(&object) != static_cast<ObjectIntf *>(Deviant::InvalidObject));
}

/// All that forbids `container` to become the container of `object`; throws before anything is written.
void checkContainer(ClassObjectIntf const & object, Deviant deviant, ClassObject const & container) {
    ClassObjectIntf const * const target = container.getImplementation();
    if (target == &object ||
        (canHaveContents(object, deviant) && deviant.willCauseCompositionCycles(target, &object))) {
        raiseInternalError("Cyclic composition");
    }
    ModelIntf const * const own = storedModel(object, deviant);
    ModelIntf const * const other = storedModel(*target, container.getDeviant());
    if (isModelAlive(own, deviant) && isModelAlive(other, container.getDeviant()) && own != other) {
        raiseInternalError("Cross-model composition");
    }
    if (own != nullptr && static_cast<ClassObjectIntf const *>(own) == &object) {
        raiseInternalError("Parenting of Model");
    }
    // The container's handle may be one of another deviant than that in which the object is placed.
    static_cast<void>(internal::coreToRead(*target, deviant));
}

} // namespace

Boolean ClassObjectOperations::hasContainerZEL(Deviant deviant) const {
    return internal::readStateOf<ClassObjectIntf>(*this, deviant).hasContainerZEL(deviant);
}

ClassObject ClassObjectOperations::getContainerZEL(Deviant deviant) const {
    return internal::readStateOf<ClassObjectIntf>(*this, deviant).getContainerZEL(deviant);
}

void ClassObjectOperations::setContainerZEL(Deviant deviant, ClassObject const & container) {
    if (!container.isValid()) {
        removeContainerZEL(deviant);
        return;
    }
    if (container == getContainerZEL(deviant)) {
        return;
    }
    internal::FieldDescriptor const * const field = internal::acceptingField(*container.getImplementation(), *this);
    if (field == nullptr) {
        checkContainer(*this, deviant, container);
        raiseInternalError("cannot insert value into the combined sequence");
    }
    setOnlyContainerZEL(deviant, container);
    internal::addContainee(*container.getImplementation(), deviant, *field, *this);
}

void ClassObjectOperations::removeContainerZEL(Deviant deviant) {
    ClassObject const container = getContainerZEL(deviant);
    if (container.getImplementationWithoutAssert() != nullptr && container.isValid()) {
        internal::eraseContainee(*container.getImplementation(), deviant, *this);
    }
    removeOnlyContainerZEL(deviant);
}

void ClassObjectOperations::setOnlyContainerZEL(Deviant deviant, ClassObject const & container) {
    bool const isSet = container.isValid();
    if (isSet) {
        checkContainer(*this, deviant, container);
    }
    ClassObject const old = getContainerZEL(deviant);
    if (isSet && old == container) {
        return;
    }
    if (old.getImplementationWithoutAssert() == nullptr) {
        if (!isSet) {
            return;
        }
        if (storedModel(*this, deviant) != nullptr) {
            internal::eraseUnparented(*this, deviant);
        }
    } else {
        if (old.isValid()) {
            internal::eraseContainee(*old.getImplementation(), deviant, *this);
        }
        if (!isSet) {
            removeOnlyContainerZEL(deviant);
            return;
        }
    }
    internal::writeStateOf<ClassObjectIntf>(*this, deviant).setContainerZEL(deviant, container);
}

void ClassObjectOperations::removeOnlyContainerZEL(Deviant deviant) {
    internal::addUnparented(*this, deviant);
    internal::writeStateOf<ClassObjectIntf>(*this, deviant).setContainerZEL(deviant, ClassObject());
}

Sequence<ClassObject> ClassObjectOperations::getContaineeZELs(Deviant deviant) const {
    if (internal::BodyCore const * const body = internal_body()) {
        return internal::ContaineeSequence::of(*body, deviant);
    }
    return internal::containeeView(*this, deviant, getContaineeZELsWithoutAssociation(deviant)); // of a state
}

Sequence<ClassObject> ClassObjectOperations::getContaineeZELsWithoutAssociation(Deviant deviant) const {
    return internal::combinedContainees<ClassObject>(*this, deviant);
}

} // namespace ZEL::NSInterface
