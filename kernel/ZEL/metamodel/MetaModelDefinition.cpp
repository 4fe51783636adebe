#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/GeneratorUtil.h>
#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelDefinition.h>
#include <ZEL/metamodel/MultiValuedPropertyManager.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/metamodel/Type.h>

#include <memory>
#include <string>
#include <string_view>

namespace ZEL::internal {

namespace {

Object objectByKey(std::string const & key) {
    auto const & map = GlobalXMIIdToObjectMap::getMap();
    auto const found = map.find(key);
    if (found == map.end()) {
        raiseAnInternalError();
    }
    return found->second;
}

PropertyStorage makeStorage(PropertyDescriptor const & descriptor) {
    if (descriptor.isMany()) {
        return PropertyStorage(
            std::make_unique<MultiValuedPropertyManager>(descriptor.many, descriptor.manyWithoutAssociation).release());
    }
    return PropertyStorage(std::make_unique<SingleValuedPropertyManager>(descriptor.single, 0).release());
}

} // namespace

Class classObjectOf(ClassDescriptor const & descriptor) {
    return Class(descriptor.runtime->metaClass(), descriptor.runtime->deviant());
}

Property definingProperty(PropertyDescriptor const & descriptor) {
    Class const owner = classObjectOf(*descriptor.owner);
    auto const index = &descriptor - descriptor.owner->ownProperties.data();
    return owner.getImplementation()
        ->getOwnedAttributesWithoutAssociation(owner.getDeviant())
        .at(static_cast<int>(index));
}

void MetaModelDefinition::defineAll() {
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        defineClass(*descriptor);
    }
    // A clone may stand before the property that it copies, so storages come last, own ones first.
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        std::vector<Property> const & properties = fDeclaration.properties(*descriptor);
        for (std::size_t i = 0; i < descriptor->ownProperties.size(); ++i) {
            properties[i].setStorage(makeStorage(descriptor->ownProperties[i]));
        }
    }
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        defineStorages(*descriptor);
    }
}

void MetaModelDefinition::defineStorages(ClassDescriptor const & descriptor) {
    std::vector<Property> const & properties = fDeclaration.properties(descriptor);
    std::size_t const own = descriptor.ownProperties.size();
    for (std::size_t i = 0; i < descriptor.clones.size(); ++i) {
        properties[own + i].setStorage(definingProperty(*descriptor.clones[i]).getStorage());
    }
}

void MetaModelDefinition::defineClass(ClassDescriptor const & descriptor) {
    linkSuperClasses(descriptor);
    std::vector<Property> const & properties = fDeclaration.properties(descriptor);
    std::size_t const own = descriptor.ownProperties.size();
    for (std::size_t i = 0; i < properties.size(); ++i) {
        defineProperty(descriptor, i < own ? descriptor.ownProperties[i] : *descriptor.clones[i - own], properties[i]);
    }
}

void MetaModelDefinition::linkSuperClasses(ClassDescriptor const & descriptor) {
    Class const object = classObjectOf(descriptor);
    for (ClassDescriptor const * const base : descriptor.superClasses) {
        Class const superClass = classObjectOf(*base);
        object.getImplementation()->getSuperClassesWithoutAssociation(fRoot).push_back(superClass);
        superClass.getImplementation()->getSubClassesWithoutAssociation(superClass.getDeviant()).push_back(object);
    }
}

void MetaModelDefinition::defineProperty(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                                         Property const & property) {
    property.getImplementation()->setOnlyType(fRoot, Type(objectByKey(descriptor.typeName)));
    if (std::string_view(descriptor.typeName) == "ZEL.Boolean") {
        property.setDefault(String("false"));
    }
    if (descriptor.association != nullptr) {
        defineAssociation(owner, descriptor, property);
    }
    GeneratorUtil::setupPropertyData(property.getImplementation(), descriptor.isReadOnly, descriptor.isDerived,
                                     descriptor.isComposite, descriptor.isOrdered, descriptor.isUnique,
                                     descriptor.defaultValue, VisibilityKind(VisibilityKind::Public), descriptor.lower,
                                     UnlimitedNatural(descriptor.upper),
                                     PersistenceKind(static_cast<PersistenceKind::Value>(descriptor.persistence)));
}

void MetaModelDefinition::defineAssociation(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                                            Property const & property) {
    if (property.hasAssociation()) {
        return; // made when the other end was defined
    }
    bool const isDefiner = descriptor.owner == &owner;
    Association const association = fDeclaration.factory().createAssociation();
    fDeclaration.placeType(association);
    association.setName(String(descriptor.association));
    auto const addEnd = [&](Property const & end) {
        association.getImplementation()->getMemberEndsWithoutAssociation(fRoot).push_back(end);
    };
    addEnd(property);
    property.getImplementation()->setOnlyAssociation(fRoot, association);
    // A stereotype's link to its element runs along the element's list of instances, but has an end of its own.
    if (descriptor.opposite != nullptr && descriptor.ownedEnd == nullptr) {
        Property const opposite = definingProperty(*descriptor.opposite);
        addEnd(opposite);
        // The other end belongs to the association of the two definers; a clone's association borrows it.
        if (isDefiner) {
            opposite.getImplementation()->setOnlyAssociation(fRoot, association);
        }
        return;
    }
    Property const end = makeOwnedEnd(association, descriptor, classObjectOf(owner));
    addEnd(end);
    if (isDefiner) {
        std::string const name(descriptor.association);
        GlobalXMIIdToObjectMap::getMap()[std::string(fDescriptor.ownedEndKeyPrefix) + name + "::" +
                                         std::string(fDescriptor.ownedEndKeyInfix) + name + "-" + descriptor.ownedEnd] =
            end;
    }
}

Property MetaModelDefinition::makeOwnedEnd(Association const & association, PropertyDescriptor const & descriptor,
                                           Class const & type) {
    Property const end = fDeclaration.factory().createProperty();
    end.setName(String(descriptor.ownedEnd));
    end.getImplementation()->setOnlyOwningAssociation(fRoot, association);
    association.getImplementation()->getOwnedEndsWithoutAssociation(fRoot).push_back(end);
    end.getImplementation()->setOnlyAssociation(fRoot, association);
    end.getImplementation()->setOnlyType(fRoot, type);
    end.setLower(Integer(0));
    return end;
}

} // namespace ZEL::internal
