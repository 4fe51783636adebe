#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/OppositeEnds.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

namespace ZEL::internal {

namespace {

Sequence<Object> rawSequence(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end) {
    return end.manyWithoutAssociation(ImmutableClassObject(&classObject(object), deviant));
}

} // namespace

ClassObject singleValue(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end) {
    return end.single->has(&object, deviant)
               ? Generic::RefTraits<ClassObject>::fromRef(end.single->get(&object, deviant))
               : ClassObject();
}

bool setLoneLink(ClassObjectIntf & object, Deviant deviant, FieldDescriptor const & field, ClassObjectIntf & value) {
    PropertyDescriptor const & property = *field.property;
    if (field.get == nullptr || property.otherEnd != OtherEnd::None || property.storage != Storage::Field ||
        isContainment(property) || !accepts(field, value) || !value.deviant_isValid(deviant)) {
        return false;
    }
    BodyCore const & body = *object.internal_body();
    if (field.get(*body.readState(deviant)) != static_cast<ObjectIntf *>(&value)) {
        body.internal_noteElement(&value);
        field.set(*body.writeState(deviant), &value);
    }
    return true;
}

void addOppositeOnly(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end, ClassObjectIntf & value) {
    if (end.isMany()) {
        rawSequence(object, deviant, end).push_back(Object(&value, deviant));
    } else {
        if (isContainment(end)) {
            ClassObject const present = singleValue(object, deviant, end);
            if (present.isValid() && present.getImplementation() != &value) {
                unparentDisplaced(classObject(object), deviant, *present.getImplementation());
            }
        }
        end.single->setEndOnly(&object, deviant, Generic::Ref::ofBody(&value, deviant));
    }
}

void eraseOppositeOnly(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end,
                       ClassObjectIntf const & value) {
    if (end.isMany()) {
        rawSequence(object, deviant, end).remove(Object(const_cast<ClassObjectIntf *>(&value), deviant));
    } else if (singleValue(object, deviant, end).getImplementationWithoutAssert() == &value) {
        end.single->removeEndOnly(&object, deviant);
    }
}

} // namespace ZEL::internal
