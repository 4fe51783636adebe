// How a built metamodel becomes known by names and URIs.

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/FactoryIntf.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/metamodel/MetaModelBuilder.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/IteratorType.h>
#include <ZEL/sequences/SequenceType.h>
#include <ZEL/values/TypeInfoRegistry.h>

#include <array>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZEL::internal {

namespace {

using Affixes = std::span<char const * const>;

/// Calls `visit` for each name of an iterator or sequence over the type with the registered name "PREFIX.Name": of a
/// class those that write come last, of a value type they come first.
template <class Visit> void visitCollections(std::string_view registeredName, bool isClass, Visit visit) {
    static constexpr std::array immutableFirst{"Immutable", ""};
    static constexpr std::array immutableLast{"", "Immutable"};
    Affixes const elements = isClass ? Affixes(immutableFirst) : Affixes(immutableLast).first(1);
    Affixes const collections = isClass ? Affixes(immutableFirst) : Affixes(immutableLast);
    std::size_t const prefixSize = registeredName.find('.') + 1;
    std::string_view const name = registeredName.substr(prefixSize);
    std::string text(registeredName.substr(0, prefixSize));
    auto const visitNamed = [&](std::initializer_list<std::string_view> parts, auto create) {
        text.resize(prefixSize);
        for (std::string_view const part : parts) {
            text += part;
        }
        visit(std::as_const(text), create);
    };
    for (char const * const collection : collections) {
        for (char const * const element : elements) {
            visitNamed({element, name, collection, "Iterator"}, &IteratorType::Create);
        }
    }
    for (char const * const collection : collections) {
        for (char const * const element : elements) {
            visitNamed({collection, "SequenceOf", element, name}, &SequenceType::Create);
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

void registerValueType(std::string const & registeredName, HASP::TypeInfo const & info, DataType const & type) {
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
    auto dataType = fDataTypes.begin();
    auto const nextDataType = [&] { return DataType(Object(*dataType++, fRoot)); };
    for (PrimitiveDescriptor const & primitive : fDescriptor.primitives) {
        registerValueType(primitive.registeredName, primitive.typeInfo(), nextDataType());
    }
    for (EnumerationDescriptor const & enumeration : fDescriptor.enumerations) {
        registerValueType(enumeration.registeredName, enumeration.typeInfo(), nextDataType());
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

void MetaModelBuilder::unregisterTypes() const {
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
}

void MetaModelBuilder::unregisterNames() const {
    if (!TypeInfoRegistry::internal_forgetLater(*this)) {
        unregisterTypes();
    }
    for (std::string const & uri : allUris(fDescriptor)) {
        FactoryRegistry::instance()->unregisterModelCreator(uri);
        FactoryRegistry::instance()->unregisterFactoryCreator(uri);
        MetaModelRegistry::instance()->unbindModelUri(uri);
    }
    NamespaceRegistry::instance()->unbindPrefixMetaUri(fDescriptor.uris.front());
}

} // namespace ZEL::internal
