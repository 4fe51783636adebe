#include "write/Emit.h"
#include "write/forms/PropertyForm.h"

#include <cstdio>

namespace zelgen {
namespace {

/// Models need an id of their own that is the same in every process. If the definition has none, it is made from the
/// prefix, in the form of a name-based uuid.
std::string uuidOf(Metamodel const & metamodel) {
    if (!metamodel.uuid.empty()) {
        return metamodel.uuid;
    }
    auto const hash = [&](std::uint64_t value) {
        for (char const c : "zelgen " + metamodel.prefix) {
            value = (value ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
        }
        return static_cast<unsigned long long>(value);
    };
    unsigned long long const high = hash(0xcbf29ce484222325u);
    unsigned long long const low = hash(high);
    char text[37];
    std::snprintf(text, sizeof text, "%08llx-%04llx-8%03llx-%04llx-%012llx", high >> 32, (high >> 16) & 0xFFFF,
                  high & 0xFFF, (low >> 48 & 0x3FFF) | 0x8000, low & 0xFFFFFFFFFFFF);
    return text;
}

std::string uriTable(Emission const & emission, std::string const & name, std::vector<Uri> const & uris) {
    std::string texts;
    std::string pointers;
    for (std::size_t i = 0; i < uris.size(); ++i) {
        std::string const path = Printer::quoted(uris[i].path);
        texts += uris[i].base.empty() ? path + ",\n" : "std::string(ZEL::" + uris[i].base + ") + " + path + ",\n";
        pointers += name + "Texts[" + std::to_string(i) + "].c_str(),\n";
    }
    if (uris.empty()) {
        return "";
    }
    return emission.print(R"(
static std::string const $name$Texts[] = {
    $texts$
};
static char const * const $name$[] = {
    $pointers$
};
)",
                          {{"name", name}, {"texts", texts}, {"pointers", pointers}});
}

std::string declareOrder(Metamodel const & metamodel) {
    std::string rows;
    for (auto const & type : metamodel.types) {
        rows += Printer::quoted(type->name) + ",\n";
    }
    return rows;
}

std::string classes(Metamodel const & metamodel) {
    std::string rows;
    for (auto const & c : metamodel.classes) {
        rows += classPointer(c.get()) + ",\n";
    }
    return rows;
}

std::string enumerations(Emission const & emission) {
    std::string literals;
    std::string rows;
    for (auto const & type : emission.metamodel.types) {
        if (type->kind != TypeKind::Enumeration) {
            continue;
        }
        std::vector<std::string> texts;
        for (std::string const & literal : type->literals) {
            texts.push_back(Printer::quoted(literal));
        }
        literals += "static char const * const " + type->name + "Literals[] = {" + Printer::join(texts, ", ") + "};\n";
        rows += emission.print("{\"$X$\", \"$P$.$X$\", $X$Literals, &$T$::getTypeInfo},\n",
                               {{"X", type->name}, {"P", emission.metamodel.prefix}, {"T", type->cppName()}});
    }
    if (rows.empty()) {
        return "";
    }
    return emission.print(R"(
$literals$
static ZEL::internal::EnumerationDescriptor const enumerations[] = {
    $rows$
};
)",
                          {{"literals", literals}, {"rows", rows}});
}

std::string primitives(Emission const & emission) {
    std::string rows;
    for (auto const & type : emission.metamodel.types) {
        if (type->kind == TypeKind::Primitive) {
            std::string const info = type->qualifiedName() == "ZEL.PropertyStorage"
                                         ? "ZEL::PropertyStorageType::Create()"
                                         : type->cppName() + "::getTypeInfo()";
            rows += emission.print("{\"$X$\", \"$P$.$X$\", []() -> HASP::TypeInfo { return $info$; }},\n",
                                   {{"X", type->name}, {"P", emission.metamodel.prefix}, {"info", info}});
        }
    }
    if (rows.empty()) {
        return "";
    }
    return emission.print(R"(
static ZEL::internal::PrimitiveDescriptor const primitives[] = {
    $rows$
};
)",
                          {{"rows", rows}});
}

std::set<std::string> headersOf(Emission const & emission) {
    std::set<std::string> headers{"ZEL/metamodel/Constants.h", "ZEL/metamodel/Descriptors.h", emission.path("Tables.h"),
                                  "ZEL/metamodel/Model.h", "ZEL/metamodel/FactoryObject.h"};
    for (auto const & type : emission.metamodel.types) {
        if (type->kind != TypeKind::Class) {
            headers.insert(Emission::valueHeader(*type));
        }
        if (type->qualifiedName() == "ZEL.PropertyStorage") {
            headers.insert("ZEL/metamodel/PropertyStorageType.h");
        }
    }
    for (Class const * const c : {emission.metamodel.modelClass, emission.metamodel.factoryClass}) {
        if (c != nullptr) {
            headers.insert({Emission::header(*c), Emission::header(*c, "Intf")});
        }
    }
    return headers;
}

/// The function that returns the table of the whole metamodel. Its statics are initialised by the first call, which may
/// come from a static initialiser.
std::string descriptorFunction(Emission const & emission, std::string const & name) {
    Metamodel const & metamodel = emission.metamodel;
    std::string const factory = metamodel.factoryClass == nullptr ? "" : interfaceOf(*metamodel.factoryClass);
    std::string const createModel = metamodel.modelClass == nullptr
                                        ? "nullptr"
                                        : "[]() -> ZEL::Model { return " + factory + "::createNewModel(); }";
    std::string const createFactory =
        metamodel.factoryClass == nullptr
            ? "nullptr"
            : "[](ZEL::Model model) -> ZEL::FactoryObject { return " + factory + "::createNewFactory(model); }";
    std::string const enumerationTable = enumerations(emission);
    std::string const primitiveTable = primitives(emission);
    return emission.print(R"(
ZEL::internal::MetaModelDescriptor const & $name$() {
    $uris$
    $additionalUris$
    static char const * const declareOrder[] = {
        $declareOrder$
    };
    static ZEL::internal::ClassDescriptor const * const classes[] = {
        $classes$
    };
    $enumerations$
    $primitives$
    static ZEL::internal::MetaModelDescriptor const descriptor{
        .prefix = "$P$",
        .topPackage = $topPackage$,
        .uris = uris,
        .additionalUris = $additionalSpan$,
        .ownedEndKeyPrefix = $endPrefix$,
        .ownedEndKeyInfix = $endInfix$,
        .uuidBase = $uuid$,
        .declareOrder = declareOrder,
        .classes = classes,
        .enumerations = $enumerationSpan$,
        .primitives = $primitiveSpan$,
        .modelClass = $modelClass$,
        .factoryClass = $factoryClass$,
        .createModel = $createModel$,
        .createFactory = $createFactory$,
    };
    return descriptor;
}
)",
                          {{"name", name},
                           {"uris", uriTable(emission, "uris", metamodel.uris)},
                           {"additionalUris", uriTable(emission, "additionalUris", metamodel.alsoRegistered)},
                           {"declareOrder", declareOrder(metamodel)},
                           {"classes", classes(metamodel)},
                           {"enumerations", enumerationTable},
                           {"primitives", primitiveTable},
                           {"P", metamodel.prefix},
                           {"topPackage", Printer::quoted(metamodel.topPackage)},
                           {"additionalSpan", metamodel.alsoRegistered.empty() ? "{}" : "additionalUris"},
                           {"endPrefix", Printer::quoted(metamodel.ownedEndKeys[0] + '.')},
                           {"endInfix", Printer::quoted(metamodel.ownedEndKeys[1] + '-')},
                           {"uuid", Printer::quoted(uuidOf(metamodel))},
                           {"enumerationSpan", enumerationTable.empty() ? "{}" : "enumerations"},
                           {"primitiveSpan", primitiveTable.empty() ? "{}" : "primitives"},
                           {"modelClass", classPointer(metamodel.modelClass)},
                           {"factoryClass", classPointer(metamodel.factoryClass)},
                           {"createModel", createModel},
                           {"createFactory", createFactory}});
}

} // namespace

std::string emitMetamodelHeader(Emission const & emission) {
    if (emission.metamodel.isBuiltIn()) {
        return emission.print(R"(
$banner$
#pragma once

#include <ZEL/metamodel/Descriptors.h>

namespace ZEL::internal {

/// The table of the built-in metamodel, which the bootstrap walks.
[[nodiscard]] MetaModelDescriptor const & builtInMetaModel();

} // namespace ZEL::internal
)",
                              {{"banner", emission.banner({}, "write/Bootstrap.cpp")}});
    }
    return emission.print(R"(
$banner$
#pragma once

#include <$forward$>
#include <ZEL/metamodel/MetaModel.h>

namespace $ns$ {

/// Builds the metamodel $P$ and makes it known to the registries, after those that it builds on; nothing if it is
/// known.
$API$ void registerMetaModel();
/// Takes it back. No model of it may be alive, nor may a metamodel that builds on it be known. At the end of the
/// process it happens by itself.
$API$ void unregisterMetaModel();
/// An invalid handle as long as it is not known.
[[nodiscard]] $API$ ZEL::ImmutableMetaModel getMetaModel();

} // namespace $ns$
)",
                          {{"banner", emission.banner({}, "write/Bootstrap.cpp")},
                           {"forward", emission.path("Forward.h")},
                           {"P", emission.metamodel.prefix}});
}

std::string emitBootstrap(Emission const & emission) {
    std::set<std::string> headers = headersOf(emission);
    if (emission.metamodel.isBuiltIn()) {
        return emission.print(R"(
$banner$
#include <ZEL/metamodel/BuiltInMetaModel.h>

$headers$
#include <string>

namespace ZEL::internal {

$descriptor$

} // namespace ZEL::internal
)",
                              {{"banner", emission.banner({}, "write/Bootstrap.cpp")},
                               {"headers", Emission::includes(headers)},
                               {"descriptor", descriptorFunction(emission.within("internal"), "builtInMetaModel")}});
    }
    std::string others;
    headers.insert({"ZEL/Initialize.h", "ZEL/metamodel/ApplicationMetaModel.h"});
    for (Metamodel const * const other : emission.metamodel.dependencies) {
        if (!other->isBuiltIn()) {
            headers.insert(other->includeDirectory + "/MetaModelRegistration.h");
            others += other->cppNamespace + "::registerMetaModel();\n";
        }
    }
    return emission.print(R"(
$banner$
#include <$header$>

$headers$
#include <string>

namespace $ns$ {

namespace {

$descriptor$

ZEL::internal::ApplicationMetaModel & registration() {
    static ZEL::internal::ApplicationMetaModel metaModel(metaModelTable());
    return metaModel;
}

} // namespace

void registerMetaModel() {
    ZEL::initialize();
    $others$
    registration().enter();
}

void unregisterMetaModel() { registration().leave(); }

ZEL::ImmutableMetaModel getMetaModel() { return registration().model(); }

} // namespace $ns$
)",
                          {{"banner", emission.banner({}, "write/Bootstrap.cpp")},
                           {"header", emission.path("MetaModelRegistration.h")},
                           {"headers", Emission::includes(headers)},
                           {"descriptor", descriptorFunction(emission, "metaModelTable")},
                           {"others", others}});
}

} // namespace zelgen
