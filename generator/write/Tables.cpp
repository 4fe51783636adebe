#include "family/Names.h"
#include "write/Emit.h"
#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

#include <algorithm>

namespace zelgen {
namespace {

std::string flag(bool value) { return value ? "true" : "false"; }

std::string propertyElement(Property const & p) {
    std::vector<Property const *> const own = p.owner->reflectiveOwn();
    auto const index = std::find(own.begin(), own.end(), &p) - own.begin();
    return p.owner->home->cppNamespace + "::tables::" + p.owner->name + "Properties[" + std::to_string(index) + ']';
}

std::string literal(std::string const & text) { return text.empty() ? "nullptr" : Printer::quoted(text); }

std::string otherEnd(Property const & p) {
    return p.otherEnd == OtherEnd::Property ? "Property" : p.otherEnd == OtherEnd::Container ? "Container" : "None";
}

std::string storage(Property const & p) {
    return p.isField() || p.making == Making::Core ? "Field"
           : p.making == Making::Body              ? "Body"
           : p.making == Making::Container         ? "Container"
                                                   : "Derived";
}

int persistence(Property const & p) { return p.persistence == "transient" ? 1 : p.persistence == "extension" ? 2 : 0; }

/// The last three entries of a property's row: its reflective access.
std::string access(Emission const & emission, Property const & p) {
    Printer const print = emission.printerFor(p).knowing({{"I", interfaceOf(*p.owner)}});
    if (p.many) {
        return print(R"(
.single = nullptr,
.many = &ZEL::internal::manyAccess<$I$, $T$, &$I$::get$Ps$>,
.manyWithoutAssociation = &ZEL::internal::manyAccess<$I$, $T$, &$I$::get$Ps$WithoutAssociation>,
)");
    }
    return print(R"(
.single = &ZEL::internal::singleAccess<$I$, $T$,
                                       &$I$::has$P$, &$I$::$get$,
                                       &$I$::set$P$, &$I$::set$only$$P$,
                                       &$I$::remove$P$, &$I$::remove$only$$P$>,
.many = nullptr,
.manyWithoutAssociation = nullptr,
)",
                 {{"only", p.form == Form::Reference ? "Only" : ""}});
}

std::string propertyRow(Emission const & emission, Property const & p) {
    return emission.print(R"(
{
    .name = $name$,
    .owner = $owner$,
    .typeName = $typeName$,
    .typeClass = $typeClass$,
    .lower = $lower$,
    .upper = $upper$,
    .isReadOnly = $readOnly$,
    .isDerived = $derived$,
    .isComposite = $composite$,
    .isOrdered = $ordered$,
    .isUnique = $unique$,
    .defaultValue = $default$,
    .persistence = $persistence$,
    .association = $association$,
    .ownedEnd = $ownedEnd$,
    .opposite = $opposite$,
    .key = $key$,
    .description = $description$,
    .otherEnd = ZEL::internal::OtherEnd::$otherEnd$,
    .storage = ZEL::internal::Storage::$storage$,
    $access$
},
)",
                          {{"name", Printer::quoted(p.name)},
                           {"owner", classPointer(p.owner)},
                           {"typeName", Printer::quoted(p.type->qualifiedName())},
                           {"typeClass", classPointer(p.type->asClass)},
                           {"lower", std::to_string(p.lower)},
                           {"upper", p.upper == 0xFFFFFFFF ? "0xFFFFFFFF" : std::to_string(p.upper)},
                           {"readOnly", flag(p.isReadOnly)},
                           {"derived", flag(p.isDerived)},
                           {"composite", flag(p.isComposite)},
                           {"ordered", flag(p.isOrdered)},
                           {"unique", flag(p.isUnique)},
                           {"default", Printer::quoted(p.defaultValue)},
                           {"persistence", std::to_string(persistence(p))},
                           {"association", literal(p.association)},
                           {"ownedEnd", literal(p.ownedEnd)},
                           {"opposite", p.opposite == nullptr ? "nullptr" : '&' + propertyElement(*p.opposite)},
                           {"key", Printer::quoted(p.key)},
                           {"description", Printer::quoted(p.description)},
                           {"otherEnd", otherEnd(p)},
                           {"storage", storage(p)},
                           {"access", access(emission, p)}});
}

/// The definition of a table, and what a span of it is initialised with. Empty tables, which C++ does not have, are
/// left out.
struct Table {
    std::string text;
    std::string span;
};

Table table(Emission const & emission, std::string const & type, std::string const & name,
            std::vector<std::string> const & rows) {
    if (rows.empty()) {
        return {"", "{}"};
    }
    return {emission.print(R"(
$type$ $name$[] = {
    $rows$
};
)",
                           {{"type", type}, {"name", name}, {"rows", Printer::join(rows, "")}}),
            name};
}

/// The stored properties of class type in the order of the class, including the stereotype instances that all objects
/// have.
std::vector<Property const *> fieldsOfClassType(Class const & of) {
    std::vector<Property const *> all = of.reflectiveOwn();
    all.insert(all.end(), of.clones.begin(), of.clones.end());
    std::vector<Property const *> result;
    std::copy_if(all.begin(), all.end(), std::back_inserter(result), [&](Property const * p) {
        bool const isStored = p->isField() || (p->making == Making::Core && p->many);
        return isStored && p->type->asClass != nullptr;
    });
    return result;
}

std::string fieldRow(Emission const & emission, Class const & of, Property const & p) {
    std::string const state = of.home->cppNamespace + "::NSImplementation::" + of.name + "DeviantImpl";
    std::string const member = '&' + of.home->cppNamespace + "::NSImplementation::" + of.name +
                               (p.isSeldom ? "Fields::internal_Seldom::" : "Fields::") + Names::field(p.base);
    std::string const type = interfaceOf(*p.type->asClass);
    std::string access;
    if (p.making == Making::Core) {
        access = "&ZEL::internal::stereotypeInstances, &ZEL::internal::writableStereotypeInstances, nullptr, nullptr";
    } else if (p.many) {
        access = "&ZEL::internal::sequenceField<" + state + ", " + member +
                 ">,\n&ZEL::internal::writableSequenceField<" + state + ", " + member + ">, nullptr, nullptr";
    } else {
        access = "nullptr, nullptr, &ZEL::internal::pointerField<" + state + ", " + member +
                 ">,\n&ZEL::internal::setPointerField<" + state + ", " + type + ", " + member + ">";
    }
    return emission.print("{&$property$, &$I$::classInfo,\n $access$},\n",
                          {{"property", propertyElement(p)}, {"I", type}, {"access", access}});
}

/// The single values of data types that are stored in fields of native types.
std::vector<Property const *> valueFields(Class const & of) {
    std::vector<Property const *> result;
    std::copy_if(of.fields.begin(), of.fields.end(), std::back_inserter(result), [](Property const * p) {
        return !p->isHidden && p->type->asClass == nullptr && !p->many && p->field != FieldKind::Value;
    });
    return result;
}

/// The kind of `FieldValue` that holds the property's value.
std::string valueForm(Property const & p) {
    switch (p.field) {
    case FieldKind::Flag:
        return "Flag";
    case FieldKind::Bits:
        return "Literal";
    case FieldKind::Int32:
        return "Integer";
    case FieldKind::Unsigned32:
        return "UnlimitedNatural";
    case FieldKind::Double:
        return "Double";
    case FieldKind::Single:
        return "Single";
    default:
        return "Text";
    }
}

std::string valueRow(Emission const & emission, Class const & of, Property const & p) {
    std::string const member = fieldText::member("fields.", p);
    return emission.print(R"(
{&$property$, [](ZEL::internal::StateCore const & state) {
     auto const & fields = ZEL::internal::fieldsOf<$state$>(state);
     return ZEL::internal::FieldValue::of$form$($isSet$, $value$);
 }},
)",
                          {{"property", propertyElement(p)},
                           {"state", of.home->cppNamespace + "::NSImplementation::" + of.name + "DeviantImpl"},
                           {"form", valueForm(p)},
                           {"isSet", p.form == Form::Value ? fieldText::isSet("fields.", p) : "true"},
                           {"value", p.field == FieldKind::Text ? member + ".view()" : member}});
}

std::string constraintRow(Emission const & emission, Class const & of, Constraint const & constraint) {
    return emission.print(R"(
{$name$, ZEL::internal::Severity::$severity$, $text$,
 &ZEL::internal::satisfies<$I$, &$I$::$function$>},
)",
                          {{"name", Printer::quoted(constraint.name)},
                           {"severity", constraint.severity},
                           {"text", Printer::quoted(constraint.text)},
                           {"I", interfaceOf(of)},
                           {"function", constraint.function}});
}

std::string builtAs(Class const & of) {
    if (of.isModel && !of.isAbstract && of.isKindOf(*of.home->modelClass) && of.home->isBuiltIn()) {
        return "Model";
    }
    return of.builtAsStereotype ? "Stereotype" : "Class";
}

std::string concretePart(Emission const & emission, Class const & of) {
    if (of.isAbstract) {
        return ".createBody = nullptr,\n.createState = nullptr,\n.assignState = nullptr,\n.bodySize = 0,\n.stateSize = "
               "0,";
    }
    return emission.print(R"(
.createBody = &ZEL::internal::createBody<$ns$::NSImplementation::$X$Impl>,
.createState = &ZEL::internal::createState<$ns$::NSImplementation::$X$DeviantImpl>,
.assignState = &ZEL::internal::assignState<$ns$::NSImplementation::$X$DeviantImpl>,
.bodySize = sizeof($ns$::NSImplementation::$X$Impl),
.stateSize = sizeof($ns$::NSImplementation::$X$DeviantImpl),
)");
}

/// The header that declares the property among those of its class.
std::string propertyTableHeader(Property const & p) { return Emission::header(*p.owner, "PropertyTable"); }

std::set<std::string> headersOf(Emission const & emission, Class const & of) {
    std::set<std::string> headers{"ZEL/metamodel/ClassRuntime.h", "ZEL/metamodel/ClassTables.h",
                                  Emission::header(of, "Intf")};
    for (Metamodel const * const other : emission.metamodel.dependencies) {
        headers.insert(other->includeDirectory + "/Tables.h");
    }
    for (Property const * const p : of.reflectiveOwn()) {
        headers.insert({Emission::valueHeader(*p->type), propertyTableHeader(*p)});
        if (p->opposite != nullptr) {
            headers.insert(propertyTableHeader(*p->opposite));
        }
    }
    for (Property const * const p : of.clones) {
        headers.insert(propertyTableHeader(*p));
    }
    if (!of.isAbstract) {
        headers.insert({Emission::header(of, "Impl"), Emission::header(of, "DeviantImpl")});
        for (Property const * const p : fieldsOfClassType(of)) {
            headers.insert(Emission::header(*p->type->asClass, "Intf"));
        }
    }
    return headers;
}

/// The operations of the interface that return the tables; the interface of `Object` has none.
std::string accessors(Emission const & emission, Class const & of) {
    if (!of.hasGeneratedHandles) {
        return "";
    }
    Printer const print = emission.within("NSInterface").print;
    std::string text = print(R"(
ZEL::internal::ClassDescriptor const & $I$::descriptor() noexcept { return $ns$::tables::$X$Class; }
)",
                             {{"I", operationsOf(of)}});
    for (Property const * const p : of.reflectiveOwn()) {
        text += print(R"(

ZEL::internal::PropertyDescriptor const & $I$::$p$() noexcept { return $element$; }
)",
                      {{"I", operationsOf(of)}, {"p", descriptorOperation(*p)}, {"element", propertyElement(*p)}});
    }
    return print(R"(

namespace $ns$::NSInterface {

$text$

} // namespace $ns$::NSInterface
)",
                 {{"text", text}});
}

} // namespace

/// Declares the tables of all classes, for each other and for metamodels that build on this one.
std::string emitTablesHeader(Emission const & emission) {
    std::string tables;
    for (auto const & c : emission.metamodel.classes) {
        tables += emission.print("extern $API$ ZEL::internal::ClassDescriptor const $X$Class;\n", {{"X", c->name}});
    }
    return emission.print(R"(
$banner$
#pragma once

#include <$forward$>
#include <ZEL/metamodel/Descriptors.h>

/// What is known of each class as constants. Applications reach them through the interfaces:
/// `CommentIntf::descriptor()`.
namespace $ns$::tables {

$tables$

} // namespace $ns$::tables
)",
                          {{"banner", emission.banner({}, "write/Tables.cpp")},
                           {"forward", emission.path("Forward.h")},
                           {"tables", tables}});
}

/// Declares the properties of one class, in a header of its own so that a changed class rebuilds only what refers to
/// its properties.
std::string emitPropertyTableHeader(Emission const & emission, Class const & of) {
    return emission.print(R"(
$banner$
#pragma once

#include <$forward$>
#include <ZEL/metamodel/Descriptors.h>

namespace $ns$::tables {

extern $API$ ZEL::internal::PropertyDescriptor const $X$Properties[$count$];

} // namespace $ns$::tables
)",
                          {{"banner", emission.banner(of.mark, "write/Tables.cpp")},
                           {"forward", emission.path("Forward.h")},
                           {"count", std::to_string(of.reflectiveOwn().size())}});
}

std::string emitTables(Emission const & emission, Class const & of) {
    std::vector<std::string> properties;
    for (Property const * const p : of.reflectiveOwn()) {
        properties.push_back(propertyRow(emission, *p));
    }
    std::vector<std::string> superClasses;
    for (Class const * const super : of.superclasses) {
        superClasses.push_back(classPointer(super) + ",\n");
    }
    std::vector<std::string> clones;
    for (Property const * const p : of.clones) {
        clones.push_back('&' + propertyElement(*p) + ", // " + p->name + '\n');
    }
    std::vector<std::string> fields;
    std::vector<std::string> values;
    if (!of.isAbstract) {
        for (Property const * const p : fieldsOfClassType(of)) {
            fields.push_back(fieldRow(emission, of, *p));
        }
        for (Property const * const p : valueFields(of)) {
            values.push_back(valueRow(emission, of, *p));
        }
    }
    std::vector<std::string> constraints;
    for (Constraint const & constraint : of.constraints) {
        constraints.push_back(constraintRow(emission, of, constraint));
    }
    Table const propertyTable =
        table(emission, "constinit ZEL::internal::PropertyDescriptor const", of.name + "Properties", properties);
    Table const superTable =
        table(emission, "constexpr ZEL::internal::ClassDescriptor const *", of.name + "SuperClasses", superClasses);
    Table const cloneTable =
        table(emission, "constexpr ZEL::internal::PropertyDescriptor const *", of.name + "Clones", clones);
    Table const fieldTable =
        table(emission, "constexpr ZEL::internal::FieldDescriptor", of.name + "FieldTable", fields);
    Table const valueTable =
        table(emission, "constexpr ZEL::internal::ValueDescriptor", of.name + "ValueTable", values);
    Table const constraintTable =
        table(emission, "constexpr ZEL::internal::ConstraintDescriptor", of.name + "Constraints", constraints);

    return emission.print(
               R"(
$banner$
#include <$tables$>

$headers$

namespace $ns$::tables {

$propertyTable$

namespace {

$locals$

constinit ZEL::internal::ClassRuntime $X$Runtime;

} // namespace

constinit ZEL::internal::ClassDescriptor const $X$Class{
    .name = "$X$",
    .orcaName = "$P$.$X$",
    .immutableOrcaName = "$P$.Immutable$X$",
    .classInfo = &$I$::classInfo,
    .isAbstract = $abstract$,
    .builtAs = ZEL::internal::BuiltAs::$builtAs$,
    .superClasses = $superSpan$,
    .ownProperties = $propertySpan$,
    .clones = $cloneSpan$,
    .fields = $fieldSpan$,
    .values = $valueSpan$,
    $concrete$
    .runtime = &$X$Runtime,
    $constraints$
};

} // namespace $ns$::tables
)",
               {{"banner", emission.banner(of.mark, "write/Tables.cpp")},
                {"tables", emission.path("Tables.h")},
                {"headers", Emission::includes(headersOf(emission, of), {emission.path("Tables.h")})},
                {"P", of.home->prefix},
                {"I", interfaceOf(of)},
                {"propertyTable", propertyTable.text},
                {"locals", Printer::blocks({superTable.text, cloneTable.text, fieldTable.text, valueTable.text,
                                            constraintTable.text})},
                {"abstract", flag(of.isAbstract)},
                {"builtAs", builtAs(of)},
                {"superSpan", superTable.span},
                {"propertySpan", propertyTable.span},
                {"cloneSpan", cloneTable.span},
                {"fieldSpan", fieldTable.span},
                {"valueSpan", valueTable.span},
                {"concrete", concretePart(emission, of)},
                {"constraints", constraints.empty() ? "" : ".constraints = " + constraintTable.span + ","}}) +
           accessors(emission, of);
}

} // namespace zelgen
