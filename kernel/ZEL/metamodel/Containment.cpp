#include <ZEL/Boolean.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/CompositeFields.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FactoryObjectIntf.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PointerMap.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <algorithm>

namespace ZEL::internal {

namespace {

StateCore const & stateToRead(ClassObjectIntf const & object, Deviant deviant) {
    return *object.internal_body()->readState(deviant);
}

StateCore & stateToWrite(ClassObjectIntf const & object, Deviant deviant) {
    return *object.internal_body()->writeState(deviant);
}

ClassObjectIntf * classObjectOf(void * element) { return &classObject(*static_cast<ObjectIntf *>(element)); }

ClassDescriptor const & classOf(ClassObjectIntf const & object) {
    return object.internal_body()->internal_descriptor();
}

ModelCore & modelOf(ClassObjectIntf & object, Deviant deviant) {
    BodyCore const & body = *object.internal_body();
    ModelCore * const model = body.readState(deviant)->hasModel() ? body.internal_model() : nullptr;
    if (model == nullptr) {
        raiseNullReference();
    }
    return *model;
}

/// Every new object asks for it, and a process seldom has models of more than one class.
FieldDescriptor const & unparentedField(ClassDescriptor const & modelClass) noexcept {
    static ClassDescriptor const * lastClass = nullptr;
    static FieldDescriptor const * lastField = nullptr;
    if (lastClass != &modelClass) {
        lastClass = &modelClass;
        lastField = fieldOf(modelClass, NSInterface::ModelIntf::unparentedProperty());
    }
    return *lastField;
}

bool holds(FieldDescriptor const & field, StateCore const & state, ObjectIntf const & element) {
    return field.sequence != nullptr ? field.sequence(state).contains(&element) : field.get(state) == &element;
}

PersistentSequence const & unparentedOf(ModelCore const & model, Deviant deviant) {
    return unparentedField(model.internal_descriptor()).sequence(*model.readState(deviant));
}

PersistentSequence & unparentedToWrite(ModelCore const & model, Deviant deviant) {
    return unparentedField(model.internal_descriptor()).writableSequence(*model.writeState(deviant));
}

} // namespace

FieldDescriptor const * fieldOf(ClassDescriptor const & descriptor, PropertyDescriptor const & property) noexcept {
    auto const found = std::find_if(descriptor.fields.begin(), descriptor.fields.end(),
                                    [&property](FieldDescriptor const & field) { return field.property == &property; });
    return found == descriptor.fields.end() ? nullptr : &*found;
}

bool isContainment(PropertyDescriptor const & property) noexcept {
    if (!property.isComposite || property.isDerived || property.typeClass == nullptr) {
        return false;
    }
    // Factories are held by single ends alone, so most properties need no look at their type.
    return property.isMany() || !property.typeClass->isKindOf(NSInterface::FactoryObjectIntf::descriptor());
}

bool accepts(FieldDescriptor const & field, ObjectIntf const & element) {
    return element.cast(field.elementInfo()) != nullptr;
}

FieldDescriptor const * acceptingField(ClassObjectIntf const & container, ClassObjectIntf const & element) {
    for (FieldDescriptor const & field : classOf(container).fields) {
        if (isContainment(*field.property) && accepts(field, element)) {
            return &field;
        }
    }
    return nullptr;
}

void addContainee(ClassObjectIntf & container, Deviant deviant, FieldDescriptor const & field,
                  ClassObjectIntf & element) {
    ObjectIntf * const added = &element;
    if (field.sequence != nullptr) {
        if (!field.sequence(stateToRead(container, deviant)).contains(added)) {
            field.writableSequence(stateToWrite(container, deviant)).push_back(added);
        }
        return;
    }
    ObjectIntf * const present = field.get(stateToRead(container, deviant));
    if (present == added) {
        return;
    }
    if (present != nullptr) {
        unparentDisplaced(container, deviant, classObject(*present));
    }
    field.set(stateToWrite(container, deviant), added);
}

bool addNewContainee(ClassObjectIntf & owner, Deviant deviant, FieldDescriptor const & field,
                     ClassObjectIntf & element) {
    ObjectIntf * const added = &element;
    StateCore const & state = stateToRead(element, deviant);
    StateCore const & ownerState = stateToRead(owner, deviant);
    BodyCore const * const body = element.internal_body();
    bool const isFree = state.container() == nullptr && state.hasModel() && ownerState.hasModel() &&
                        body->internal_model() == owner.internal_body()->internal_model() && &owner != &element &&
                        body->internal_model() != body && !hasContainees(element, deviant);
    if (!isFree || !isContainment(*field.property) || !accepts(field, element) ||
        (field.sequence == nullptr && field.get(ownerState) != nullptr)) {
        return false;
    }
    eraseUnparented(element, deviant);
    stateToWrite(element, deviant).setContainer(&owner);
    StateCore & written = stateToWrite(owner, deviant);
    if (field.sequence != nullptr) {
        field.writableSequence(written).push_back(added);
    } else {
        field.set(written, added);
    }
    return true;
}

void unparentDisplaced(ClassObjectIntf const & container, Deviant deviant, ClassObjectIntf & displaced) {
    if (!displaced.deviant_isValid(deviant)) {
        return;
    }
    ClassObjectIntf const * const present = stateToRead(displaced, deviant).container();
    if (present == nullptr || present == &container) {
        displaced.removeOnlyContainerZEL(deviant);
    }
}

void eraseContainee(ClassObjectIntf & container, Deviant deviant, ClassObjectIntf const & element) {
    ObjectIntf const * const erased = &element;
    for (FieldDescriptor const & field : classOf(container).fields) {
        if (!isContainment(*field.property) || !accepts(field, element)) {
            continue;
        }
        if (field.sequence != nullptr) {
            if (field.sequence(stateToRead(container, deviant)).contains(erased)) {
                field.writableSequence(stateToWrite(container, deviant)).erase(erased);
                return;
            }
        } else if (field.get(stateToRead(container, deviant)) == erased) {
            field.set(stateToWrite(container, deviant), nullptr);
            return;
        }
    }
}

void collectContainees(ClassObjectIntf const & object, Deviant deviant, std::vector<ClassObjectIntf *> & result) {
    StateCore const & state = stateToRead(object, deviant);
    for (FieldDescriptor const * const field : compositeFieldsOf(classOf(object))) {
        if (field->sequence != nullptr) {
            field->sequence(state).forEach([&result](void * element) { result.push_back(classObjectOf(element)); });
        } else if (ObjectIntf * const value = field->get(state); value != nullptr && isContainment(*field->property)) {
            result.push_back(classObjectOf(value));
        }
    }
}

bool hasContainees(ClassObjectIntf const & object, Deviant deviant) {
    StateCore const & state = stateToRead(object, deviant);
    CompositeFields const & fields = compositeFieldsOf(classOf(object));
    return std::any_of(fields.begin(), fields.end(), [&state](FieldDescriptor const * field) {
        return field->sequence != nullptr ? !field->sequence(state).empty()
                                          : field->get(state) != nullptr && isContainment(*field->property);
    });
}

std::vector<ClassObjectIntf *> collectSubtree(ClassObjectIntf & object, Deviant deviant) {
    // States of a deviant and of the root can have combined to two objects that list one, or each other.
    PointerMap<ClassObjectIntf *> met;
    met.add(&object, &object);
    std::vector<ClassObjectIntf *> objects;
    std::vector<ClassObjectIntf *> found;
    for (std::size_t next = 0; next < met.entries().size(); ++next) {
        ClassObjectIntf * const candidate = met.entries()[next].value;
        if (!candidate->deviant_isValid(deviant)) {
            continue;
        }
        objects.push_back(candidate);
        found.clear();
        collectContainees(*candidate, deviant, found);
        for (ClassObjectIntf * const each : found) {
            met.add(each, each);
        }
    }
    return objects;
}

std::vector<ClassObjectIntf *> modelRoots(ClassObjectIntf & object, Deviant deviant) {
    std::vector<ClassObjectIntf *> roots;
    FieldDescriptor const * const unparented = fieldOf(classOf(object), NSInterface::ModelIntf::unparentedProperty());
    if (unparented == nullptr) {
        return roots;
    }
    StateCore const & state = stateToRead(object, deviant);
    unparented->sequence(state).forEach([&roots](void * root) { roots.push_back(classObjectOf(root)); });
    for (FieldDescriptor const & field : classOf(object).fields) {
        PropertyDescriptor const & property = *field.property;
        if (property.typeClass != nullptr &&
            property.typeClass->isKindOf(NSInterface::FactoryObjectIntf::descriptor()) && field.get != nullptr &&
            field.get(state) != nullptr) {
            roots.push_back(classObjectOf(field.get(state)));
        }
    }
    return roots;
}

void addUnparented(ClassObjectIntf & object, Deviant deviant) {
    ModelCore const & model = modelOf(object, deviant);
    ObjectIntf * const added = &object;
    if (object.internal_body() != &model && !unparentedOf(model, deviant).contains(added)) {
        unparentedToWrite(model, deviant).push_back(added);
    }
}

void addNewUnparented(ClassObjectIntf & object, Deviant deviant) {
    unparentedToWrite(modelOf(object, deviant), deviant).push_back(static_cast<ObjectIntf *>(&object));
}

void eraseUnparented(ClassObjectIntf & object, Deviant deviant) {
    ModelCore const & model = modelOf(object, deviant);
    std::ptrdiff_t const index = unparentedOf(model, deviant).indexOf(static_cast<ObjectIntf const *>(&object));
    if (index >= 0) {
        unparentedToWrite(model, deviant).eraseAt(static_cast<std::size_t>(index));
    }
}

void attachToOwner(ClassObjectIntf & owner, Deviant deviant, PropertyDescriptor const & property,
                   ClassObjectIntf & element) {
    FieldDescriptor const * field = fieldOf(classOf(owner), property);
    if (field == nullptr) {
        field = acceptingField(owner, element); // where the push on a derived list ends
    }
    if (stateToRead(element, deviant).container() != &owner) {
        element.setOnlyContainerZEL(deviant, ClassObject(&owner, deviant));
    } else if (field == nullptr || !holds(*field, stateToRead(owner, deviant), element)) {
        eraseContainee(owner, deviant, element);
    }
}

} // namespace ZEL::internal
