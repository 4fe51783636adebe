#include <ZEL/Boolean.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <cstdlib>
#include <unordered_map>
#include <utility>

namespace ZEL::internal {

namespace {

using SparseTable = std::unordered_map<StateCore const *, PersistentSequence>;

/// Never destroyed: states of handles that outlive everything else still give up their entries.
SparseTable & stereotypeInstanceTable() {
    static SparseTable & table = *new SparseTable;
    return table;
}

} // namespace

void StateCore::dropStereotypeInstances() noexcept {
    if ((fBits & kHasStereotypeInstances) != 0) {
        stereotypeInstanceTable().erase(this);
    }
}

void StateCore::internal_end(StateCore & state, std::size_t size) noexcept {
    state.dropStereotypeInstances();
    state.ReferenceCountingIntf::~ReferenceCountingIntf();
    giveToPool(&state, size);
}

void StateCore::internal_neverDestroyed() noexcept { std::abort(); }

void StateCore::assignCore(StateCore const & other) {
    if (this == &other) {
        return;
    }
    modelZEL = other.modelZEL;
    containerZEL = other.containerZEL;
    setPersistence(other.persistence());
    if (((fBits | other.fBits) & kHasStereotypeInstances) != 0) {
        // A copy, since making this state's entry may move the other's.
        PersistentSequence instances = other.stereotypeInstances();
        writableStereotypeInstances() = std::move(instances);
    }
}

PersistentSequence const & StateCore::stereotypeInstances() const noexcept {
    static PersistentSequence const none;
    return (fBits & kHasStereotypeInstances) != 0 ? stereotypeInstanceTable().find(this)->second : none;
}

PersistentSequence & StateCore::writableStereotypeInstances() {
    PersistentSequence & instances = stereotypeInstanceTable()[this];
    fBits |= kHasStereotypeInstances;
    return instances;
}

void StateCore::internal_deviationAssign(Deviant, ObjectIntf * source, Deviant) {
    StateCore const * const other = source->internal_state();
    if (other == nullptr || &other->internal_stateDescriptor() != &internal_stateDescriptor()) {
        raiseAnInternalError();
    }
    internal_stateDescriptor().assignState(*this, *other);
}

Boolean StateCore::hasModelZEL(Deviant) const { return Boolean(modelZEL != nullptr); }
void StateCore::removeModelZEL(Deviant) { modelZEL = nullptr; }
void StateCore::setModelZEL(Deviant, Model const & model) { modelZEL = model.getImplementationWithoutAssert(); }
Model StateCore::getModelZEL(Deviant deviant) const { return Model(modelZEL, deviant); }

Boolean StateCore::hasContainerZEL(Deviant) const { return Boolean(containerZEL != nullptr); }
void StateCore::removeContainerZEL(Deviant) { containerZEL = nullptr; }
void StateCore::setContainerZEL(Deviant, ClassObject const & container) {
    containerZEL = container.getImplementationWithoutAssert();
}
ClassObject StateCore::getContainerZEL(Deviant deviant) const { return ClassObject(containerZEL, deviant); }

Sequence<StereotypeObject> StateCore::getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const {
    return storedSequence<StereotypeObject>(*this, deviant, stereotypeInstanceField());
}

} // namespace ZEL::internal
