// How an object ends in a deviant.

#include <ZEL/base/Exception.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/OppositeEnds.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <unordered_set>
#include <vector>

namespace ZEL::internal {

namespace {

using Subtree = std::unordered_set<ObjectIntf const *>;

/// Takes `object` off the ends that objects outside the subtree hold of it. Its own fields stay as they are: they go
/// into the change set with its state.
void unlink(ClassObjectIntf & object, Deviant deviant, Subtree const & subtree) {
    StateCore const & state = *object.internal_body()->readState(deviant);
    for (FieldDescriptor const & field : object.internal_body()->internal_descriptor().fields) {
        PropertyDescriptor const & property = *field.property;
        if (property.otherEnd != OtherEnd::Property || property.isComposite ||
            property.opposite->storage != Storage::Field) {
            continue;
        }
        std::vector<ObjectIntf *> partners;
        if (field.sequence != nullptr) {
            field.sequence(state).forEach(
                [&partners](void * partner) { partners.push_back(static_cast<ObjectIntf *>(partner)); });
        } else if (ObjectIntf * const partner = field.get(state)) {
            partners.push_back(partner);
        }
        for (ObjectIntf * const partner : partners) {
            // Links from other models stay: those are not open for writing here.
            bool const isOfThisModel =
                partner->internal_body() != nullptr &&
                partner->internal_body()->internal_model() == object.internal_body()->internal_model();
            if (isOfThisModel && subtree.count(partner) == 0 && partner->deviant_isValid(deviant)) {
                eraseOppositeOnly(*partner, deviant, *property.opposite, object);
            }
        }
    }
}

/// What ends together with `object`: all it contains and, if it is a model, what has no container and the factory.
std::vector<ClassObjectIntf *> destroyedWith(ClassObjectIntf & object, Deviant deviant) {
    std::vector<ClassObjectIntf *> objects = collectSubtree(object, deviant);
    for (ClassObjectIntf * const root : modelRoots(object, deviant)) {
        std::vector<ClassObjectIntf *> const more = collectSubtree(*root, deviant);
        objects.insert(objects.end(), more.begin(), more.end());
    }
    return objects;
}

} // namespace

void BodyCore::checkWritable(Deviant deviant) const {
    checkAccess(deviant);
    DeviantAssertions(deviant.getImpl()).assertWritable(this);
}

void BodyCore::destroy(Deviant deviant) {
    if (!deviant_isValid(deviant)) {
        return;
    }
    checkWritable(deviant);
    if (!readState(deviant)->hasModel()) {
        raiseNullReference();
    }
    internal_unlinkForDestroy(deviant);
    ClassObject const container = getContainerZEL(deviant);
    if (container.isValid()) {
        eraseContainee(*container.getImplementation(), deviant, *this);
    }
    eraseUnparented(*this, deviant);
    internal_destroyContents(deviant);
}

void BodyCore::internal_unlinkForDestroy(Deviant deviant) {
    std::vector<ClassObjectIntf *> const objects = destroyedWith(*this, deviant);
    Subtree const subtree(objects.begin(), objects.end());
    for (ClassObjectIntf * const object : objects) {
        unlink(*object, deviant, subtree);
    }
}

void BodyCore::internal_destroyContents(Deviant deviant) {
    std::vector<ClassObjectIntf *> const objects = destroyedWith(*this, deviant);
    // Contents go before what contains them.
    for (auto object = objects.rbegin(); object != objects.rend(); ++object) {
        (*object)->internal_body()->destroyState(deviant);
    }
}

void BodyCore::destroyState(Deviant deviant) {
    ObjectIntf * const present = internal_getDeviation(deviant);
    DeviantImpl * const impl = deviant.getImpl();
    // The present state moves into the change set as it is, unless an older one is there.
    if (impl == nullptr || !impl->savesOldStates() || hasSavedState(*impl)) {
        internal_destroyDeviation(deviant);
        return;
    }
    save(*impl, present);
    auto * const invalid = static_cast<ObjectIntf *>(Deviant::InvalidObject);
    if (deviant.getDeviantId() == 0) {
        setRootState(invalid);
    } else {
        fHasDeviantEntries = true;
        static_cast<void>(deviant.setStateOfObject(this, invalid));
    }
}

} // namespace ZEL::internal
