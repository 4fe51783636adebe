#include "MetamodelCommand.h"

#include "Models.h"

#include <ZEL/Integer.h>
#include <ZEL/MetaModelRegistry.h>
#include <ZEL/NamespaceRegistry.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/Type.h>

#include <CLI/CLI.hpp>

#include <iostream>

namespace cli {
namespace {

ZEL::Model modelOf(std::string const & uri) { return ZEL::MetaModelRegistry::instance()->getModelFromUri(uri); }

/// A class has a copy of each property that it inherits; it shares the access to the value.
bool isInherited(ZEL::ImmutableProperty const & property, ZEL::ImmutableClass const & owner) {
    for (ZEL::ImmutableClass const & superClass : owner.getSuperClasses()) {
        ZEL::ImmutableProperty const inherited = superClass.getProperty(property.getName());
        if (inherited.isValid() &&
            inherited.getStorage().getImplementation() == property.getStorage().getImplementation()) {
            return true;
        }
    }
    return false;
}

void print(ZEL::ImmutableProperty const & property) {
    std::cout << "    " << property.getName() << " : " << property.getType().getName() << " ["
              << property.lowerBound().toString() << ".." << property.upperBound().toString() << ']';
    if (property.hasDefault()) {
        std::cout << " = " << property.getDefault();
    }
    std::cout << (property.isComposite() ? " composite" : "") << (property.isDerived() ? " derived" : "")
              << (property.isReadOnly() ? " read-only" : "") << (property.isOrdered() ? " ordered" : "") << '\n';
}

void print(ZEL::ImmutableClass const & metaClass) {
    std::cout << (metaClass.isAbstract() ? "abstract class " : "class ") << metaClass.getName();
    char const * separator = " : ";
    for (ZEL::ImmutableClass const & superClass : metaClass.getSuperClasses()) {
        std::cout << separator << superClass.getQualifiedName();
        separator = ", ";
    }
    std::cout << '\n';
    for (ZEL::ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
        if (!isInherited(property, metaClass)) {
            print(property);
        }
    }
}

void print(ZEL::ImmutableEnumeration const & enumeration) {
    std::cout << "enumeration " << enumeration.getName();
    char const * separator = " { ";
    for (ZEL::ImmutableEnumerationLiteral const & literal : enumeration.getOwnedLiterals()) {
        std::cout << separator << literal.getName();
        separator = ", ";
    }
    std::cout << " }\n";
}

void list() {
    for (auto const & entry : ZEL::NamespaceRegistry::instance()->getMetaUriMappings()) {
        std::size_t classes = 0;
        std::vector<ZEL::ImmutableClassObject> const objects = objectsOf(modelOf(entry.first));
        for (ZEL::ImmutableClassObject const & object : objects) {
            classes += ZEL::ImmutableClass(object).isValid() ? 1U : 0U;
        }
        std::cout << entry.first << ' ' << entry.second << ' ' << classes << " classes" << '\n';
    }
}

} // namespace

void MetamodelCommand::declare(CLI::App & app) {
    app.add_option("URI", fName, "The URI or the prefix of the metamodel to show; without it, all are listed");
}

ExitCode MetamodelCommand::run() {
    if (fName.empty()) {
        list();
        return Done;
    }
    std::string const uri = ZEL::NamespaceRegistry::instance()->getMetaUri(fName);
    ZEL::Model const model = modelOf(uri.empty() ? fName : uri);
    if (!model.isValid()) {
        throw Trouble("metamodel: found " + fName + ", expected a registered URI or prefix (see `zel metamodel`)");
    }
    for (ZEL::ImmutableClassObject const & object : objectsOf(model)) {
        ZEL::ImmutableClass const metaClass(object);
        ZEL::ImmutableEnumeration const enumeration(object);
        ZEL::ImmutableDataType const dataType(object);
        if (metaClass.isValid()) {
            print(metaClass);
        } else if (enumeration.isValid()) {
            print(enumeration);
        } else if (dataType.isValid()) {
            std::cout << "primitive " << dataType.getName() << '\n';
        }
    }
    return Done;
}

} // namespace cli
