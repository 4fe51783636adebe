#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/OppositeEnds.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/GenericAssociationSequence.h>
#include <ZEL/sequences/GenericCombinedSequence.h>
#include <ZEL/sequences/GenericDeviantSequence.h>
#include <ZEL/sequences/GenericFilteredSequence.h>
#include <ZEL/sequences/GenericNullSequence.h>
#include <ZEL/sequences/GenericPropertyToSequenceProxy.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/SequenceField.h>

#include <memory>
#include <unordered_map>

namespace ZEL::internal {

namespace {

using Generic::GenericAssociationSequence;
using Generic::Ref;
using Generic::combined_sequence_internal::GenericCombinedSequence;
using Generic::filtered_sequence_internal::GenericFilter;
using Generic::filtered_sequence_internal::GenericFilteredSequence;

ClassObjectIntf & writable(ClassObjectIntf const & object) { return const_cast<ClassObjectIntf &>(object); }

/// The deviant in which `object` is written on behalf of `self`: that of `self` within one model, else the root of the
/// other model, which has to be open for writing itself.
Deviant deviantFor(ObjectIntf const & object, ClassObjectIntf const & self, Deviant deviant) {
    BodyCore const * const body = object.internal_body();
    BodyCore const * const own = self.internal_body();
    if (body == nullptr || own == nullptr || body->internal_model() == nullptr ||
        body->internal_model() == own->internal_model()) {
        return deviant;
    }
    return body->internal_model()->internal_deviantManager().getRootDeviant();
}

// --- what happens at the other end when an element enters or leaves --------------------------------------------------

/// Opposite ends that are fields: `end` is the property of the element.
void linkOpposite(Ref element, GenericAssociationSequence::Owner const & owner, PropertyDescriptor const * end,
                  bool add) {
    ObjectIntf & object = *element.body();
    ClassObjectIntf & self = *owner.getImplementation();
    Deviant const deviant = deviantFor(object, self, owner.getDeviant());
    if (!add) {
        eraseOppositeOnly(object, deviant, *end, self);
        return;
    }
    if (!end->isMany()) {
        // A single-valued end leaves its old partner.
        ClassObject const old = singleValue(object, deviant, *end);
        if (old.isValid() && old.getImplementation() != &self) {
            eraseOppositeOnly(*old.getImplementation(), deviant, *end->opposite, classObject(object));
        }
    }
    addOppositeOnly(object, deviant, *end, self);
}

/// Composite lists: `list` is the property of the owner.
void linkContainer(Ref element, GenericAssociationSequence::Owner const & owner, PropertyDescriptor const * list,
                   bool add) {
    ClassObjectIntf & object = classObject(*element.body());
    if (add) {
        attachToOwner(*owner.getImplementation(), owner.getDeviant(), *list, object);
    } else {
        object.removeOnlyContainerZEL(owner.getDeviant());
    }
}

/// For a part that has come into being in the open transaction and stands nowhere yet.
bool pushNewPart(Ref const & element, GenericAssociationSequence::Owner const & owner,
                 PropertyDescriptor const * list) {
    BodyCore * const part = element.body() == nullptr ? nullptr : element.body()->internal_body();
    Deviant const deviant = owner.getDeviant();
    // Nothing can name such an object as its container, see `ClassObjectOperations::setOnlyContainerZEL`.
    if (part == nullptr || !deviant.isWithinTransaction() ||
        deviant.getSavedOldStateOfObject(part) != static_cast<ObjectIntf *>(Deviant::InvalidObject)) {
        return false;
    }
    ClassObjectIntf & self = *owner.getImplementation();
    BodyCore const * const body = self.internal_body();
    FieldDescriptor const * const field = body == nullptr ? nullptr : fieldOf(body->internal_descriptor(), *list);
    return field != nullptr && !field->sequence(*body->readState(deviant)).contains(element.body()) &&
           addNewContainee(self, deviant, *field, *part);
}

GenericAssociationSequence::Owner ownerOf(ClassObjectIntf const & object, Deviant deviant) {
    return GenericAssociationSequence::Owner(&object, deviant);
}

bool isKindOf(ClassDescriptor const & a, ClassDescriptor const & b) { return a.isKindOf(b) || b.isKindOf(a); }

std::unique_ptr<GenericFilteredSequence> subSequence(SequenceHandle const & underlying, GenericFilter filter) {
    return std::make_unique<GenericFilteredSequence>(underlying, filter);
}

/// The property's operations with the one-ended forms in place of both.
Generic::PropertyToSequenceMethods const * oneEnded(Generic::PropertyToSequenceMethods const & methods) {
    static auto & table = *new std::unordered_map<Generic::PropertyToSequenceMethods const *,
                                                  std::unique_ptr<Generic::PropertyToSequenceMethods>>;
    auto & entry = table[&methods];
    if (entry == nullptr) {
        entry = std::make_unique<Generic::PropertyToSequenceMethods>(methods);
        entry->setMember = methods.setEndOnlyMember;
        entry->removeMember = methods.removeEndOnlyMember;
    }
    return entry.get();
}

/// A single-valued end of which other ends are not kept in step.
class OneEndedValue final : public Generic::GenericPropertyToSequenceProxy {
public:
    OneEndedValue(ObjectHandle object, PropertyDescriptor const & property)
        : GenericPropertyToSequenceProxy(std::move(object), oneEnded(*property.single), 0), fProperty(property) {}

protected:
    void assign(Deviant deviant, Ref const & element) override {
        if (isContainment(fProperty)) {
            // Whoever pushes on the contents of an object has no hand on the part that must make room.
            addOppositeOnly(*object(), deviant, fProperty, classObject(*element.body()));
        } else {
            GenericPropertyToSequenceProxy::assign(deviant, element);
        }
    }

private:
    PropertyDescriptor const & fProperty;
};

} // namespace

// --- states ----------------------------------------------------------------------------------------------------------

ObjectIntf & stateItself(ClassObjectIntf const & object) {
    StateCore * const state = object.internal_state();
    if (state == nullptr) {
        raiseAnInternalError();
    }
    return *state;
}

StateCore const & coreToRead(ClassObjectIntf const & object, Deviant deviant) {
    BodyCore const * const body = object.internal_body();
    return body != nullptr ? *body->readState(deviant) : *stateItself(object).internal_state();
}

StateCore & coreToWrite(ClassObjectIntf & object, Deviant deviant) {
    BodyCore const * const body = object.internal_body();
    return body != nullptr ? *body->writeState(deviant) : *stateItself(object).internal_state();
}

// --- single-valued ends ----------------------------------------------------------------------------------------------

void removeEnd(ClassObjectIntf & object, Deviant deviant, PropertyDescriptor const & property) {
    if (property.storage == Storage::Container) {
        // Whatever the container is: it may be of a kind that this end does not show.
        object.removeContainerZEL(deviant);
        return;
    }
    ClassObject const present = singleValue(object, deviant, property);
    if (present.isValid()) {
        if (property.otherEnd == OtherEnd::Property) {
            ClassObjectIntf & partner = *present.getImplementation();
            eraseOppositeOnly(partner, deviantFor(partner, object, deviant), *property.opposite, object);
        } else if (property.otherEnd == OtherEnd::Container) {
            present.getImplementation()->removeOnlyContainerZEL(deviant);
        }
    }
    property.single->removeEndOnly(&object, deviant);
}

void setEnd(ClassObjectIntf & object, Deviant deviant, PropertyDescriptor const & property, Object const & value) {
    if (!value.isValid()) {
        removeEnd(object, deviant, property);
        return;
    }
    ClassObject const present = singleValue(object, deviant, property);
    if (present == value) {
        return;
    }
    ClassObjectIntf & target = classObject(*value.getImplementation());
    Ref const targetRef = Ref::ofBody(&target, deviant);
    if (property.storage == Storage::Container) {
        static_cast<void>(
            coreToRead(target, deviant)); // a value of another deviant is refused before anything is written
        Object const element(&object, deviant);
        if (property.opposite->isMany() &&
            !property.opposite->manyWithoutAssociation(ImmutableClassObject(&target, deviant)).accepts(element)) {
            raiseInternalError("cannot insert value into the combined sequence");
        }
        // The container end leaves whatever held the object before; the container's own list takes it last.
        property.single->setEndOnly(&object, deviant, targetRef);
        addOppositeOnly(target, deviant, *property.opposite, object);
        return;
    }
    if (property.otherEnd == OtherEnd::Container || isContainment(property)) {
        attachToOwner(object, deviant, property, target);
        if (present.isValid()) {
            unparentDisplaced(object, deviant, *present.getImplementation());
        }
        property.single->setEndOnly(&object, deviant, targetRef);
        return;
    }
    if (property.otherEnd == OtherEnd::Property) {
        Deviant const targetDeviant = deviantFor(target, object, deviant);
        if (!property.opposite->isMany()) {
            ClassObject const partner = singleValue(target, targetDeviant, *property.opposite);
            if (partner.isValid()) {
                eraseOppositeOnly(*partner.getImplementation(),
                                  deviantFor(*partner.getImplementation(), object, deviant), property, target);
            }
        }
        addOppositeOnly(target, targetDeviant, *property.opposite, object);
        if (present.isValid()) {
            ClassObjectIntf & old = *present.getImplementation();
            eraseOppositeOnly(old, deviantFor(old, object, deviant), *property.opposite, object);
        }
    }
    property.single->setEndOnly(&object, deviant, targetRef);
}

// --- sequences -------------------------------------------------------------------------------------------------------

SequenceHandle storedSequenceHandle(ClassObjectIntf const & object, Deviant deviant,
                                    Generic::SequenceField const & field) {
    return SequenceHandle(std::make_unique<Generic::GenericDeviantSequence>(&object, deviant, field), deviant);
}

SequenceHandle associationViewHandle(ClassObjectIntf const & object, Deviant deviant,
                                     PropertyDescriptor const & property, SequenceHandle const & raw) {
    bool const isContainment = property.isComposite && property.typeClass != nullptr;
    if (property.otherEnd == OtherEnd::None && !isContainment) {
        return raw;
    }
    GenericAssociationSequence::Owner owner = ownerOf(object, deviant);
    if (isContainment) {
        return SequenceHandle(std::make_unique<GenericAssociationSequence>(raw, &property, std::move(owner),
                                                                           &linkContainer, &pushNewPart),
                              deviant);
    }
    return SequenceHandle(
        std::make_unique<GenericAssociationSequence>(raw, property.opposite, std::move(owner), &linkOpposite), deviant);
}

Sequence<ClassObject> containeeView(ClassObjectIntf const & object, Deviant deviant,
                                    Sequence<ClassObject> const & raw) {
    return Sequence<ClassObject>(
        std::make_unique<GenericAssociationSequence>(raw, &NSInterface::ClassObjectOperations::containeeZELProperty(),
                                                     ownerOf(object, deviant), &linkContainer),
        deviant);
}

SequenceHandle filteredViewHandle(Deviant deviant, SequenceHandle const & underlying,
                                  CooperativeVisitor::internal::ClassInfo const & shown) {
    return SequenceHandle(subSequence(underlying, Generic::filtered_sequence_internal::showsOnly(shown)), deviant);
}

SequenceHandle combinedContaineesHandle(ClassObjectIntf const & object, Deviant deviant,
                                        ClassDescriptor const & shown) {
    ImmutableClassObject const self(&object, deviant);
    auto combined = std::make_unique<GenericCombinedSequence>();
    for (FieldDescriptor const & field : coreToRead(object, deviant).internal_stateDescriptor().fields) {
        PropertyDescriptor const & property = *field.property;
        // A model's factory is shown among its contents, though it has no container and does not move or die like them.
        bool const isComposite = property.isComposite && !property.isDerived && property.typeClass != nullptr;
        if (!isComposite || !isKindOf(*property.typeClass, shown)) {
            continue;
        }
        SequenceHandle const raw = property.isMany() ? SequenceHandle(property.manyWithoutAssociation(self))
                                                     : singleAsSequenceHandle(object, deviant, property, true);
        bool const showsAll = property.isMany() && property.typeClass->isKindOf(shown);
        combined->append(subSequence(
            raw, showsAll ? Generic::filtered_sequence_internal::takesOnly(field.elementInfo())
                          : Generic::filtered_sequence_internal::showsOnly(
                                property.typeClass->isKindOf(shown) ? field.elementInfo() : shown.classInfo())));
    }
    return SequenceHandle(std::move(combined), deviant);
}

SequenceHandle unionHandle(Deviant deviant, std::initializer_list<SequenceHandle> parts,
                           CooperativeVisitor::internal::ClassInfo const & shown) {
    if (parts.size() == 0) {
        return SequenceHandle(Generic::GenericNullSequence::getSingleton(), deviant);
    }
    auto combined = std::make_unique<GenericCombinedSequence>();
    combined->reserve(static_cast<unsigned int>(parts.size()));
    for (SequenceHandle const & part : parts) {
        combined->append(subSequence(part, Generic::filtered_sequence_internal::showsOnly(shown)));
    }
    return SequenceHandle(std::move(combined), deviant);
}

SequenceHandle singleAsSequenceHandle(ClassObjectIntf const & object, Deviant deviant,
                                      PropertyDescriptor const & property, bool withoutAssociation) {
    GenericAssociationSequence::Owner owner = ownerOf(object, deviant);
    std::unique_ptr<Generic::SequenceProxy> proxy;
    if (withoutAssociation) {
        proxy = std::make_unique<OneEndedValue>(std::move(owner), property);
    } else {
        proxy = std::make_unique<Generic::GenericPropertyToSequenceProxy>(std::move(owner), property.single, 0);
    }
    SequenceHandle const values(std::move(proxy), deviant);
    if (property.typeClass == nullptr) {
        return values;
    }
    // The proxy itself knows nothing of types; a union of several has to find the one that takes an element.
    return SequenceHandle(
        subSequence(values, Generic::filtered_sequence_internal::takesOnly(property.typeClass->classInfo())), deviant);
}

Generic::SequenceField const & stereotypeInstanceField() noexcept {
    static constexpr Generic::SequenceField field = Generic::SequenceField::ofBodies(
        "ZEL.StereotypeObject", &NSInterface::StereotypeObjectIntf::classInfo,
        [](ClassObjectIntf const * object, Deviant deviant) -> PersistentSequence const & {
            return coreToRead(*object, deviant).stereotypeInstances();
        },
        [](ClassObjectIntf const * object, Deviant deviant) -> PersistentSequence & {
            return coreToWrite(writable(*object), deviant).writableStereotypeInstances();
        });
    return field;
}

} // namespace ZEL::internal
