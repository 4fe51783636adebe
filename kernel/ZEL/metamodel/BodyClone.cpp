// Copies of an object with all it contains.

#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/CloneMap.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FactorySupport.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/OppositeEnds.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <vector>

namespace ZEL::internal {

namespace {

/// What a copied object refers to in place of `target`: the copy of it, `target` itself if a one-sided or many-sided
/// link to it can be kept, or nothing.
ObjectIntf * referenceFor(ObjectIntf * target, FieldDescriptor const & field, BodyCore & copy,
                          CloneMap const & copies) {
    if (target == nullptr) {
        return nullptr;
    }
    if (BodyCore * const own = copies.copyOf(target)) {
        return own;
    }
    BodyCore * const body = target->internal_body();
    bool const isForeign = body == nullptr || body->internal_model() != &copies.model();
    PropertyDescriptor const & property = *field.property;
    if (property.otherEnd == OtherEnd::Property && property.opposite->storage == Storage::Field) {
        // The target would have to know the copy: it cannot in another model, and a single end is taken already.
        if (isForeign || !property.opposite->isMany() || !target->deviant_isValid(copies.deviant())) {
            return nullptr;
        }
        addOppositeOnly(*target, copies.deviant(), *property.opposite, copy);
    }
    if (isForeign && body != nullptr) {
        copies.model().noteForeign(*body);
    }
    return target;
}

/// `targets` is room to work in, which the copies share.
void copyReferences(BodyCore & copy, CloneMap const & copies, std::vector<void *> & targets) {
    StateCore & state = *copy.writeState(copies.deviant());
    for (FieldDescriptor const & field : copy.internal_descriptor().fields) {
        if (field.sequence == nullptr) {
            if (ObjectIntf * const target = field.get(state)) {
                field.set(state, nullptr);
                field.set(state, referenceFor(target, field, copy, copies));
            }
            continue;
        }
        PersistentSequence const originals = field.sequence(state);
        if (originals.empty()) {
            continue;
        }
        targets.clear();
        originals.forEach([&](void * original) {
            if (ObjectIntf * const target = referenceFor(static_cast<ObjectIntf *>(original), field, copy, copies)) {
                targets.push_back(target);
            }
        });
        field.writableSequence(state).assign(targets.begin(), targets.end());
    }
}

} // namespace

ClassObject BodyCore::clone(Deviant deviant, ClassObject const & target) {
    ModelCore * const model = target.getImplementation()->internal_body()->internal_model();
    if (model == nullptr || model == this || static_cast<BodyCore *>(fModel) == this) {
        raiseAnInternalError();
    }
    CloneMap copies(*model, target.getDeviant());
    internal_cloneContents(deviant, copies);
    internal_cloneReferences(deviant, copies);
    return ClassObject(copies.copyOf(this), target.getDeviant());
}

void BodyCore::internal_cloneContents(Deviant deviant, CloneMap & copies) {
    Deviant const target = copies.deviant();
    std::vector<ClassObjectIntf *> const originals = collectSubtree(*this, deviant);
    copies.makeRoom(originals.size());
    // What one object contains comes together.
    ClassObjectIntf const * lastContainer = nullptr;
    BodyCore * container = nullptr;
    for (ClassObjectIntf * const original : originals) {
        BodyCore const & source = *original->internal_body();
        StateCore const & sourceState = *source.readState(deviant);
        ClassDescriptor const & descriptor = source.internal_descriptor();
        BodyCore & copy = createUnplaced(copies.model(), target, descriptor, copies.model().nextId());
        copies.add(original, &copy);
        if (original != this && sourceState.container() != lastContainer) {
            lastContainer = sourceState.container();
            container = copies.copyOf(lastContainer);
        }
        StateCore & state = *copy.writeState(target);
        descriptor.assignState(state, sourceState);
        state.setContainer(container);
        state.setModel(&copies.model());
        if (container == nullptr) {
            addNewUnparented(copy, target);
        }
    }
}

void BodyCore::internal_cloneReferences(Deviant, CloneMap & copies) {
    std::vector<void *> targets;
    for (auto const & entry : copies.copies()) {
        copyReferences(*entry.value, copies, targets);
    }
}

} // namespace ZEL::internal
