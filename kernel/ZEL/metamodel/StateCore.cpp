#include <ZEL/Boolean.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <cassert>
#include <cstdlib>
#include <memory>
#include <unordered_map>
#include <utility>

namespace ZEL::internal {

struct Rarities {
    PersistentSequence stereotypeInstances;
    std::shared_ptr<Remainder const> remainder;
    unsigned int persistence = 0;
};

namespace {

using RarityTable = std::unordered_map<StateCore const *, Rarities>;

/// Never destroyed: states of handles that outlive everything else still give up their entries.
RarityTable & rarityTable() {
    static RarityTable & table = *new RarityTable;
    return table;
}

} // namespace

Rarities const * StateCore::rarities() const noexcept {
    return (fOwner & kHasRarities) != 0 ? &rarityTable().find(this)->second : nullptr;
}

Rarities & StateCore::writableRarities() {
    Rarities & own = rarityTable()[this];
    fOwner |= kHasRarities;
    return own;
}

void StateCore::dropRarities() noexcept {
    if ((fOwner & kHasRarities) != 0) {
        rarityTable().erase(this);
    }
}

void StateCore::internal_end(StateCore & state, std::size_t size) noexcept {
    state.dropRarities();
    state.ReferenceCountingIntf::~ReferenceCountingIntf();
    giveToPool(&state, size);
}

void StateCore::internal_neverDestroyed() noexcept { std::abort(); }

void StateCore::assignRarities(StateCore const & other) {
    // A copy, since making this state's entry may move the other's.
    Rarities const * const others = other.rarities();
    Rarities copy = others != nullptr ? *others : Rarities();
    writableRarities() = std::move(copy);
}

PersistentSequence const & StateCore::stereotypeInstances() const noexcept {
    static PersistentSequence const none;
    Rarities const * const own = rarities();
    return own != nullptr ? own->stereotypeInstances : none;
}

PersistentSequence & StateCore::writableStereotypeInstances() { return writableRarities().stereotypeInstances; }

unsigned int StateCore::persistence() const noexcept {
    Rarities const * const own = rarities();
    return own != nullptr ? own->persistence : 0;
}

void StateCore::setPersistence(unsigned int value) {
    if (value != persistence()) {
        writableRarities().persistence = value;
    }
}

Remainder const * StateCore::remainder() const noexcept {
    Rarities const * const own = rarities();
    return own != nullptr ? own->remainder.get() : nullptr;
}

void StateCore::setRemainder(Remainder && remainder) {
    writableRarities().remainder =
        remainder.empty() ? nullptr : std::make_shared<Remainder const>(std::move(remainder));
}

void StateCore::setOwner(void const * pointer, std::uintptr_t bits) noexcept {
    auto const address = reinterpret_cast<std::uintptr_t>(pointer);
    assert((address & ~kPointer) == 0);
    fOwner = address | bits | (fOwner & kHasRarities);
}

void StateCore::setContainer(ClassObjectIntf * container) noexcept {
    if (container != nullptr) {
        setOwner(container, fOwner & kHasModel);
    } else if (this->container() != nullptr) {
        setOwner(model(), (fOwner & kHasModel) | kIsModel); // which the container shows for the last time
    }
}

NSInterface::ModelIntf * StateCore::model() const noexcept {
    if (!hasModel()) {
        return nullptr;
    }
    if ((fOwner & kIsModel) != 0) {
        return reinterpret_cast<NSInterface::ModelIntf *>(fOwner & kPointer);
    }
    BodyCore const * const body = container()->internal_body();
    return body != nullptr ? body->internal_model() : nullptr;
}

void StateCore::setModel(NSInterface::ModelIntf * model) noexcept {
    std::uintptr_t const hasModel = model != nullptr ? kHasModel : 0;
    if (ClassObjectIntf * const present = container()) {
        setOwner(present, hasModel);
    } else {
        setOwner(model, hasModel | kIsModel);
    }
}

void StateCore::internal_deviationAssign(Deviant, ObjectIntf * source, Deviant) {
    StateCore const * const other = source->internal_state();
    if (other == nullptr || &other->internal_stateDescriptor() != &internal_stateDescriptor()) {
        raiseAnInternalError();
    }
    internal_stateDescriptor().assignState(*this, *other);
}

Boolean StateCore::hasModelZEL(Deviant) const { return Boolean(hasModel()); }
void StateCore::removeModelZEL(Deviant) { setModel(nullptr); }
void StateCore::setModelZEL(Deviant, Model const & model) { setModel(model.getImplementationWithoutAssert()); }
Model StateCore::getModelZEL(Deviant deviant) const { return Model(model(), deviant); }

Boolean StateCore::hasContainerZEL(Deviant) const { return Boolean(container() != nullptr); }
void StateCore::removeContainerZEL(Deviant) { setContainer(nullptr); }
void StateCore::setContainerZEL(Deviant, ClassObject const & container) {
    setContainer(container.getImplementationWithoutAssert());
}
ClassObject StateCore::getContainerZEL(Deviant deviant) const { return ClassObject(container(), deviant); }

Sequence<StereotypeObject> StateCore::getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const {
    return storedSequence<StereotypeObject>(*this, deviant, stereotypeInstanceField());
}

} // namespace ZEL::internal
