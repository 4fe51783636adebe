#pragma once

#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/Sequence.h>

#include <memory>
#include <unordered_map>
#include <vector>

namespace ZEL::Compare {

using NSInterface::ObjectIntf;

/// What is compared of the instances of a class. Left out is what follows from something else: derived properties, the
/// ends that name the container, numbers and models; and where the file of a model is.
struct ComparedClass {
    explicit ComparedClass(internal::ClassDescriptor const & descriptor);

    std::shared_ptr<MetaClassView const> view;
    std::vector<PropertyView const *> parts;  ///< what the object contains
    std::vector<PropertyView const *> values; ///< of data types
    std::vector<PropertyView const *> links;  ///< to what it does not contain
    PropertyView const * name;                ///< null if there is none, or none that is stored
};

/// Those of all classes that have been asked for.
class ComparedClasses {
public:
    [[nodiscard]] ComparedClass const & of(internal::ClassDescriptor const & descriptor);

private:
    std::unordered_map<internal::ClassDescriptor const *, std::unique_ptr<ComparedClass>> fClasses;
    internal::ClassDescriptor const * fLastDescriptor = nullptr;
    ComparedClass const * fLast = nullptr;
};

/// Calls `visit(ObjectIntf *)` for each object that the property leads to, in order.
template <class Visit>
void forEachTarget(PropertyView const & property, internal::BodyCore const & body, Deviant deviant, Visit visit) {
    if (property.links == nullptr) { // stored in a way of its own
        ImmutableClassObject(&body, deviant).get(property.property).forEach([&visit](ImmutableObject const & target) {
            visit(target.getImplementationWithoutAssert());
        });
    } else if (property.isMany) {
        property.linksIn(*body.readState(deviant)).forEach([&visit](void * target) {
            visit(static_cast<ObjectIntf *>(target));
        });
    } else if (ObjectIntf * const target = property.links->get(*body.readState(deviant))) {
        visit(target);
    }
}

[[nodiscard]] std::vector<ObjectIntf *> targetsOf(PropertyView const & property, internal::BodyCore const & body,
                                                  Deviant deviant);

/// Whether links are told from this end. Of an association with two stored ends one will do: the single one, since it
/// says more; of two alike the one that its class declares first.
[[nodiscard]] bool isTellingEnd(PropertyView const & property);

} // namespace ZEL::Compare
