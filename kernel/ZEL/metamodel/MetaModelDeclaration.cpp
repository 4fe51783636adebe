#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelDeclaration.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PrimitiveType.h>
#include <ZEL/metamodel/Stereotype.h>
#include <ZEL/metamodel/Type.h>

#include <algorithm>
#include <string_view>

namespace ZEL::internal {

namespace {

/// The part of a property's key after "ZEL.X::".
std::string_view keyTail(PropertyDescriptor const & property) {
    std::string_view const key(property.key);
    return key.substr(key.find("::") + 2);
}

void enter(std::string const & key, Object const & object) { GlobalXMIIdToObjectMap::getMap()[key] = object; }

} // namespace

MetaModelDeclaration::MetaModelDeclaration(MetaModelDescriptor const & descriptor, MetaModel const & model)
    : fDescriptor(descriptor), fModel(model), fFactory(model.getFactoryFactory()), fRoot(model.getDeviant()) {}

void MetaModelDeclaration::declareAll() {
    fTopPackage = fFactory.createPackage();
    fTopPackage.setName(String(fDescriptor.topPackage));
    for (char const * const declared : fDescriptor.declareOrder) {
        std::string_view const name(declared);
        auto const named = [name](auto const & candidate) { return name == candidate.name; };
        auto const enumeration = std::find_if(fDescriptor.enumerations.begin(), fDescriptor.enumerations.end(), named);
        auto const primitive = std::find_if(fDescriptor.primitives.begin(), fDescriptor.primitives.end(), named);
        auto const type = std::find_if(fDescriptor.classes.begin(), fDescriptor.classes.end(),
                                       [name](ClassDescriptor const * candidate) { return name == candidate->name; });
        if (enumeration != fDescriptor.enumerations.end()) {
            declareEnumeration(*enumeration);
        } else if (primitive != fDescriptor.primitives.end()) {
            declarePrimitive(*primitive);
        } else if (type != fDescriptor.classes.end()) {
            declareClass(**type);
        } else {
            raiseAnInternalError();
        }
    }
}

std::vector<Property> const & MetaModelDeclaration::properties(ClassDescriptor const & descriptor) const {
    return fProperties.at(&descriptor);
}

void MetaModelDeclaration::placeType(Type const & type) const {
    type.getImplementation()->setOnlyPackage(fRoot, fTopPackage);
    fTopPackage.getImplementation()->getOwnedTypesWithoutAssociation(fRoot).push_back(type);
}

void MetaModelDeclaration::declareClass(ClassDescriptor const & descriptor) {
    // The class of models is the metamodel itself. It cannot stand in a package of its own contents.
    Class const object = descriptor.builtAs == BuiltAs::Model        ? Class(fModel)
                         : descriptor.builtAs == BuiltAs::Stereotype ? Class(fFactory.createStereotype())
                                                                     : fFactory.createClass();
    if (descriptor.builtAs != BuiltAs::Model) {
        placeType(object);
    }
    object.setName(String(descriptor.name));
    if (descriptor.isAbstract) {
        object.setIsAbstract(Boolean(true));
    }
    enterType(descriptor.orcaName, descriptor.name, object);
    descriptor.runtime->bind(descriptor, object.getImplementation(), fRoot);

    std::vector<Property> & properties = fProperties[&descriptor];
    for (PropertyDescriptor const & property : descriptor.ownProperties) {
        properties.push_back(declareProperty(object, property));
        enterOwnProperty(property, properties.back());
        describe(properties.back(), property.description);
    }
    for (PropertyDescriptor const * const property : descriptor.clones) {
        properties.push_back(declareProperty(object, *property));
        enter(std::string(descriptor.orcaName) + "::" + std::string(keyTail(*property)), properties.back());
        describe(properties.back(), property->description);
    }
}

Property MetaModelDeclaration::declareProperty(Class const & owner, PropertyDescriptor const & descriptor) const {
    Property property = fFactory.createProperty();
    property.setName(String(descriptor.name));
    property.getImplementation()->setOnlyClass(fRoot, owner);
    owner.getImplementation()->getOwnedAttributesWithoutAssociation(fRoot).push_back(property);
    return property;
}

void MetaModelDeclaration::describe(Property const & property, char const * text) const {
    if (*text == '\0') {
        return;
    }
    Comment const comment = fFactory.createComment();
    comment.setBody(String(text));
    comment.getImplementation()->getAnnotatedElementsWithoutAssociation(fRoot).push_back(property);
    comment.getImplementation()->setOnlyOwner(fRoot, property);
    property.getImplementation()->getOwnedCommentsWithoutAssociation(fRoot).push_back(comment);
}

void MetaModelDeclaration::declareEnumeration(EnumerationDescriptor const & descriptor) const {
    Enumeration const enumeration = fFactory.createEnumeration();
    placeType(enumeration);
    enumeration.setName(String(descriptor.name));
    enterType(descriptor.registeredName, descriptor.name, enumeration);
    for (char const * const text : descriptor.literals) {
        EnumerationLiteral const literal = fFactory.createEnumerationLiteral();
        literal.setName(String(text));
        literal.getImplementation()->setOnlyEnumeration(fRoot, enumeration);
        enumeration.getImplementation()->getOwnedLiteralsWithoutAssociation(fRoot).push_back(literal);
    }
}

void MetaModelDeclaration::declarePrimitive(PrimitiveDescriptor const & descriptor) const {
    PrimitiveType const type = fFactory.createPrimitiveType();
    type.setName(String(descriptor.name));
    placeType(type);
    enterType(descriptor.registeredName, descriptor.name, type);
}

void MetaModelDeclaration::enterType(char const * registeredName, char const * name, Object const & type) const {
    enter(registeredName, type);
    for (char const * const uri : fDescriptor.uris) {
        enter(std::string(uri) + "#" + name, type);
    }
}

void MetaModelDeclaration::enterOwnProperty(PropertyDescriptor const & descriptor, Property const & property) const {
    enter(descriptor.key, property);
    std::string const dashed = std::string(descriptor.owner->name) + "-" + descriptor.name;
    std::string const regular = std::string(descriptor.owner->orcaName) + "." + descriptor.name;
    for (char const * const uri : fDescriptor.uris) {
        enter(std::string(uri) + "#" + dashed, property);
        if (keyTail(descriptor) != regular) {
            enter(std::string(uri) + "#" + std::string(keyTail(descriptor)), property);
        }
    }
}

void MetaModelDeclaration::forget(MetaModelDescriptor const & descriptor, MetaModel const & model) noexcept {
    BodyCore const * const owner = model.getImplementationWithoutAssert()->internal_body();
    std::erase_if(GlobalXMIIdToObjectMap::getMap(), [owner](auto const & entry) {
        BodyCore const * const body = entry.second.getImplementationWithoutAssert()->internal_body();
        return body != nullptr && body->internal_model() == owner;
    });
    for (ClassDescriptor const * const entry : descriptor.classes) {
        entry->runtime->unbind();
    }
}

} // namespace ZEL::internal
