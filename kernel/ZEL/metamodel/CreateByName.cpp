#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/CreateByName.h>
#include <ZEL/metamodel/FactorySupport.h>
#include <ZEL/values/ValueObjectFactory.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace ZEL::internal {
namespace {

ClassDescriptor const * findClass(std::span<ClassDescriptor const * const> classes, std::string_view name) {
    auto const found = std::find_if(classes.begin(), classes.end(), [name](ClassDescriptor const * descriptor) {
        return name == descriptor->name || name == descriptor->orcaName;
    });
    return found == classes.end() ? nullptr : *found;
}

ClassObject handleOn(BodyCore & body, Deviant deviant) {
    return ClassObject(static_cast<ClassObjectIntf *>(&body), deviant);
}

/// "library." for a factory of the metamodel library.
std::string prefixOf(ClassObjectIntf const & factory) {
    std::string_view const name = factory.internal_body()->internal_descriptor().orcaName;
    return std::string(name.substr(0, name.find('.') + 1));
}

} // namespace

ClassObject createByName(ClassObjectIntf & factory, Deviant deviant, std::span<ClassDescriptor const * const> classes,
                         String const & name) {
    ClassDescriptor const * const found = findClass(classes, name.str());
    return found == nullptr ? ClassObject()
                            : handleOn(createObject(modelOfFactory(factory, deviant), deviant, *found), deviant);
}

ClassObject createByName(ClassObjectIntf & factory, Deviant deviant, std::span<ClassDescriptor const * const> classes,
                         String const & name, Integer const & id) {
    ClassDescriptor const * const found = findClass(classes, name.str());
    return found == nullptr
               ? ClassObject()
               : handleOn(createObject(modelOfFactory(factory, deviant), deviant, *found, id.getValue()), deviant);
}

Object createByName(ClassObjectIntf & factory, Deviant deviant, std::span<ClassDescriptor const * const> classes,
                    String const & name, String const & text) {
    if (findClass(classes, name.str()) != nullptr) {
        return createByName(factory, deviant, classes, name);
    }
    // Data types of the factory's own metamodel and of the built-in one may be named without a prefix.
    for (std::string const & typeName : {name.str(), prefixOf(factory) + name.str(), "ZEL." + name.str()}) {
        if (ValueObjectFactory::isValueObjectType(typeName)) {
            return Object(ValueObjectFactory::createFromString(typeName, text.str()));
        }
    }
    return Object();
}

} // namespace ZEL::internal
