// How a built metamodel becomes known by names and URIs.

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/FactoryIntf.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelBuilder.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/IteratorType.h>
#include <ZEL/sequences/SequenceType.h>
#include <ZEL/values/TypeInfoRegistry.h>

#include <string>
#include <vector>

namespace ZEL::internal {

namespace {

/// Calls `visit` for each name of an iterator or sequence over the type with the registered name "PREFIX.Name": of a
/// class those that write come last, of a value type they come first.
template <class Visit> void visitCollections(std::string const & registeredName, bool isClass, Visit visit) {
    using Affixes = std::vector<std::string>;
    std::string const prefix = registeredName.substr(0, registeredName.find('.') + 1);
    std::string const name = registeredName.substr(prefix.size());
    Affixes const elements = isClass ? Affixes{"Immutable", ""} : Affixes{""};
    Affixes const collections = isClass ? Affixes{"Immutable", ""} : Affixes{"", "Immutable"};
    for (std::string const & collection : collections) {
        for (std::string const & element : elements) {
            visit(prefix + element + name + collection + "Iterator", &IteratorType::Create);
        }
    }
    for (std::string const & collection : collections) {
        for (std::string const & element : elements) {
            visit(prefix + collection + "SequenceOf" + element + name, &SequenceType::Create);
        }
    }
}

void registerCollections(std::string const & registeredName, Type const & element, bool isClass) {
    visitCollections(registeredName, isClass, [&](std::string const & name, auto create) {
        TypeInfoRegistry::registerTypeInfo(name, create(element));
    });
}

void unregisterCollections(std::string const & registeredName, bool isClass) {
    visitCollections(registeredName, isClass,
                     [](std::string const & name, auto) { TypeInfoRegistry::unregisterTypeInfo(name); });
}

void registerValueType(std::string const & registeredName, HASP::TypeInfo const & info) {
    DataType const type(GlobalXMIIdToObjectMap::getMap().at(registeredName));
    TypeInfoRegistry::registerMetaType(registeredName, info, type);
    registerCollections(registeredName, type, false);
}

void unregisterValueType(std::string const & registeredName) {
    TypeInfoRegistry::unregisterMetaType(registeredName);
    unregisterCollections(registeredName, false);
}

/// The class of factories of the built-in metamodel has its own name in the type map too, without an element type.
bool hasFactoryRow(MetaModelDescriptor const & descriptor) {
    return descriptor.factoryClass == &NSInterface::FactoryIntf::descriptor();
}

std::vector<std::string> allUris(MetaModelDescriptor const & descriptor) {
    std::vector<std::string> uris(descriptor.uris.begin(), descriptor.uris.end());
    uris.insert(uris.end(), descriptor.additionalUris.begin(), descriptor.additionalUris.end());
    return uris;
}

} // namespace

void MetaModelBuilder::registerTypes() const {
    if (hasFactoryRow(fDescriptor)) {
        TypeInfoRegistry::registerTypeInfo(fDescriptor.factoryClass->orcaName, IteratorType::Create(Type()));
    }
    for (PrimitiveDescriptor const & primitive : fDescriptor.primitives) {
        registerValueType(primitive.registeredName, primitive.typeInfo());
    }
    for (EnumerationDescriptor const & enumeration : fDescriptor.enumerations) {
        registerValueType(enumeration.registeredName, enumeration.typeInfo());
    }
    for (ClassDescriptor const * const type : fDescriptor.classes) {
        registerCollections(type->orcaName, Class(type->runtime->metaClass(), type->runtime->deviant()), true);
    }
}

void MetaModelBuilder::registerCreators() const {
    for (std::string const & uri : allUris(fDescriptor)) {
        if (fDescriptor.createModel != nullptr) {
            FactoryRegistry::instance()->registerModelCreator(uri, fDescriptor.createModel);
        }
        if (fDescriptor.createFactory != nullptr) {
            FactoryRegistry::instance()->registerFactoryCreator(uri, fDescriptor.createFactory);
        }
    }
}

void MetaModelBuilder::bindUris(MetaModel const & model) const {
    for (std::string const & uri : allUris(fDescriptor)) {
        MetaModelRegistry::instance()->bindUriToModel(uri, model);
    }
    NamespaceRegistry::instance()->bindMetaUriToPrefix(fDescriptor.uris.front(), fDescriptor.prefix);
}

void MetaModelBuilder::unregisterNames() const {
    if (hasFactoryRow(fDescriptor)) {
        TypeInfoRegistry::unregisterTypeInfo(fDescriptor.factoryClass->orcaName);
    }
    for (PrimitiveDescriptor const & primitive : fDescriptor.primitives) {
        unregisterValueType(primitive.registeredName);
    }
    for (EnumerationDescriptor const & enumeration : fDescriptor.enumerations) {
        unregisterValueType(enumeration.registeredName);
    }
    for (ClassDescriptor const * const type : fDescriptor.classes) {
        unregisterCollections(type->orcaName, true);
    }
    for (std::string const & uri : allUris(fDescriptor)) {
        FactoryRegistry::instance()->unregisterModelCreator(uri);
        FactoryRegistry::instance()->unregisterFactoryCreator(uri);
        MetaModelRegistry::instance()->unbindModelUri(uri);
    }
    NamespaceRegistry::instance()->unbindPrefixMetaUri(fDescriptor.uris.front());
}

} // namespace ZEL::internal
