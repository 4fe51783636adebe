#include "Command.h"
#include "MetaModels.h"
#include "Models.h"
#include "Options.h"

#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cli {
namespace {

/// A class has a copy of each property that it inherits, with the same storage.
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

std::size_t numberOfClasses(ZEL::Model const & metamodel) {
    std::vector<ZEL::ImmutableClassObject> const objects = ZEL::objectsIn(metamodel);
    return static_cast<std::size_t>(
        std::count_if(objects.begin(), objects.end(),
                      [](ZEL::ImmutableClassObject const & object) { return ZEL::ImmutableClass(object).isValid(); }));
}

void list() {
    registerAllMetaModels();
    auto const entries = ZEL::NamespaceRegistry::instance()->getMetaUriMappings();
    std::size_t uriWidth = 0;
    std::size_t prefixWidth = 0;
    for (auto const & entry : entries) {
        uriWidth = std::max(uriWidth, entry.first.size());
        prefixWidth = std::max(prefixWidth, entry.second.size());
    }
    for (auto const & entry : entries) {
        std::cout << std::left << std::setw(static_cast<int>(uriWidth)) << entry.first << "  "
                  << std::setw(static_cast<int>(prefixWidth)) << entry.second << "  "
                  << numberOfClasses(metamodelOf(entry.first)) << " classes" << '\n';
    }
}

void show(std::string const & name) {
    for (ZEL::ImmutableClassObject const & object : ZEL::objectsIn(metamodelOf(name))) {
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
}

} // namespace

Command metamodelCommand(CLI::App & app) {
    auto const name = std::make_shared<std::optional<std::string>>();
    addOptionalArgument(app, "URI", *name,
                        "The URI or the prefix of the metamodel to show; without it, all are listed");
    return [name] {
        if (name->has_value()) {
            show(**name);
        } else {
            list();
        }
        return Done;
    };
}

} // namespace cli
