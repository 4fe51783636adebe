#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Association.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/MetaModelDefinition.h>
#include <ZEL/metamodel/MultiValuedPropertyManager.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/values/TypeInfoRegistry.h>

#include <memory>

namespace ZEL::internal {

namespace {

PropertyStorage makeStorage(PropertyDescriptor const & descriptor) {
    if (descriptor.isMany()) {
        return PropertyStorage(
            std::make_unique<MultiValuedPropertyManager>(descriptor.many, descriptor.manyWithoutAssociation).release());
    }
    return PropertyStorage(std::make_unique<SingleValuedPropertyManager>(descriptor.single, 0).release());
}

std::size_t placeAmongOwn(PropertyDescriptor const & descriptor) noexcept {
    return static_cast<std::size_t>(&descriptor - descriptor.owner->ownProperties.data());
}

} // namespace

void MetaModelDefinition::defineAll() {
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        defineClass(*descriptor);
    }
    fDeclaration.fillTopPackage();
    defineStorages();
}

void MetaModelDefinition::defineStorages() const {
    // A clone may stand before the property that it copies, so own ones come first.
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        DeclaredClass const & declared = *fDeclaration.find(*descriptor);
        for (std::size_t i = 0; i < descriptor->ownProperties.size(); ++i) {
            declared.properties[i].state->setStorage(fObjects.root(), makeStorage(descriptor->ownProperties[i]));
        }
    }
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        auto clone = fDeclaration.find(*descriptor)->properties.begin() +
                     static_cast<std::ptrdiff_t>(descriptor->ownProperties.size());
        for (PropertyDescriptor const * const original : descriptor->clones) {
            PropertyInWork const defining = definingProperty(*original);
            (clone++)->state->setStorage(fObjects.root(), defining.state->getStorage(fObjects.root()));
        }
    }
}

void MetaModelDefinition::defineClass(ClassDescriptor const & descriptor) {
    DeclaredClass const & declared = *fDeclaration.find(descriptor);
    linkSuperClasses(descriptor, declared.made);
    auto property = declared.properties.begin();
    for (PropertyDescriptor const & own : descriptor.ownProperties) {
        defineProperty(descriptor, own, *property++);
    }
    for (PropertyDescriptor const * const inherited : descriptor.clones) {
        defineProperty(descriptor, *inherited, *property++);
    }
}

void MetaModelDefinition::linkSuperClasses(ClassDescriptor const & descriptor, ClassInWork const & made) {
    for (ClassDescriptor const * const base : descriptor.superClasses) {
        if (DeclaredClass const * const own = fDeclaration.find(*base)) {
            made.state->internal_superClassField(FieldUse::Write)
                .push_back(static_cast<ObjectIntf *>(own->made.object));
            own->made.state->internal_subClassField(FieldUse::Write).push_back(static_cast<ObjectIntf *>(made.object));
            continue;
        }
        // A class that has been in use for long: what is kept of its model may change with it.
        Class const object(made.object, fObjects.root());
        Class const superClass(base->runtime->metaClass(), base->runtime->deviant());
        object.getImplementation()->getSuperClassesWithoutAssociation(fObjects.root()).push_back(superClass);
        superClass.getImplementation()->getSubClassesWithoutAssociation(superClass.getDeviant()).push_back(object);
    }
}

NSInterface::TypeIntf & MetaModelDefinition::typeOf(PropertyDescriptor const & descriptor) const {
    NSInterface::TypeIntf * type = descriptor.typeClass != nullptr ? descriptor.typeClass->runtime->metaClass()
                                                                   : fDeclaration.findDataType(descriptor.typeName);
    if (type == nullptr) {
        type = ImmutableType(TypeInfoRegistry::getMetaTypeObject(descriptor.typeName)).getImplementationWithoutAssert();
    }
    if (type == nullptr) {
        raiseAnInternalError();
    }
    return *type;
}

void MetaModelDefinition::setType(PropertyInWork const & property, NSInterface::TypeIntf & type) const {
    fObjects.noteReferred(type);
    property.state->setType(fObjects.root(), Type(&type, fObjects.root()));
}

void MetaModelDefinition::defineProperty(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                                         PropertyInWork const & property) {
    setType(property, typeOf(descriptor));
    // It may have been made when the other end was defined.
    if (descriptor.association != nullptr && !property.state->hasAssociation(fObjects.root())) {
        defineAssociation(owner, descriptor, property);
    }
}

void MetaModelDefinition::setAssociation(PropertyInWork const & property, AssociationInWork const & association) const {
    Association const value(association.object, fObjects.root());
    if (property.object->internal_model() == &fObjects.model()) {
        property.state->setAssociation(fObjects.root(), value);
    } else {
        property.object->setOnlyAssociation(fObjects.root(), value);
    }
}

void MetaModelDefinition::defineAssociation(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                                            PropertyInWork const & property) {
    bool const isDefiner = descriptor.owner == &owner;
    auto const association = fObjects.make<AssociationInWork>();
    fDeclaration.place(*association.object, *association.state);
    association.state->setName(fObjects.root(), String(descriptor.association));
    setAssociation(property, association);
    PropertyInWork otherEnd;
    // A stereotype's link to its element runs along the element's list of instances, but has an end of its own.
    if (descriptor.opposite != nullptr && descriptor.ownedEnd == nullptr) {
        otherEnd = definingProperty(*descriptor.opposite);
        fObjects.noteReferred(*otherEnd.object);
        // The other end belongs to the association of the two definers; a clone's association borrows it.
        if (isDefiner) {
            setAssociation(otherEnd, association);
        }
    } else {
        otherEnd = makeOwnedEnd(association, descriptor, owner);
        if (isDefiner) {
            fDeclaration.keyed().ownedEnds.emplace_back(&descriptor, otherEnd.object);
        }
    }
    association.state->internal_memberEndField(FieldUse::Write).push_back(static_cast<ObjectIntf *>(property.object));
    association.state->internal_memberEndField(FieldUse::Write).push_back(static_cast<ObjectIntf *>(otherEnd.object));
}

PropertyInWork MetaModelDefinition::makeOwnedEnd(AssociationInWork const & association,
                                                 PropertyDescriptor const & descriptor, ClassDescriptor const & type) {
    auto const end = fObjects.make<PropertyInWork>();
    end.state->setName(fObjects.root(), String(descriptor.ownedEnd));
    end.state->setContainer(association.object);
    association.state->internal_ownedEndField(FieldUse::Write).push_back(static_cast<ObjectIntf *>(end.object));
    setAssociation(end, association);
    setType(end, *fDeclaration.find(type)->made.object);
    end.state->setLower(fObjects.root(), Integer(0));
    return end;
}

PropertyInWork MetaModelDefinition::definingProperty(PropertyDescriptor const & descriptor) const {
    std::size_t const place = placeAmongOwn(descriptor);
    if (DeclaredClass const * const declared = fDeclaration.find(*descriptor.owner)) {
        return declared->properties[place];
    }
    Deviant const root = descriptor.owner->runtime->deviant();
    Class const owner(descriptor.owner->runtime->metaClass(), root);
    auto const & attributes = readStateOf<NSInterface::ClassIntf>(*owner.getImplementation(), root)
                                  .internal_ownedAttributeField(FieldUse::Read);
    if (place >= attributes.size()) {
        raiseAnInternalError();
    }
    auto * const property = static_cast<ObjectIntf *>(attributes.at(place))->internal_body();
    return {static_cast<NSImplementation::PropertyImpl *>(property),
            static_cast<NSImplementation::PropertyDeviantImpl *>(property->readState(root))};
}

} // namespace ZEL::internal
