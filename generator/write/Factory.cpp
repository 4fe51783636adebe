#include "write/Emit.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

bool isFactoryOf(Emission const & emission, Class const & of) { return &of == emission.metamodel.factoryClass; }

/// Classes of which the factory makes objects: models and factories come into being by themselves.
std::vector<Class const *> creatable(Emission const & emission) {
    std::vector<Class const *> result;
    for (auto const & c : emission.metamodel.classes) {
        if (!c->isAbstract && !c->isModel && !c->isFactory()) {
            result.push_back(c.get());
        }
    }
    return result;
}

} // namespace

std::string factoryDeclarations(Emission const & emission, Class const & of) {
    if (!isFactoryOf(emission, of)) {
        return "";
    }
    std::string creators;
    for (Class const * const c : creatable(emission)) {
        creators += emission.print(R"(
[[nodiscard]] virtual $T$ create$X$(ZEL::Deviant deviant);
[[nodiscard]] virtual $T$ create$X$(ZEL::Deviant deviant, ZEL::Integer const & id);
)",
                                   {{"T", c->type->cppName()}, {"X", c->name}});
    }
    std::string const model = emission.metamodel.modelClass == nullptr
                                  ? ""
                                  : emission.print(R"(
/// A new model with a factory of this class.
[[nodiscard]] static $M$ createNewModel();
)",
                                                   {{"M", emission.metamodel.modelClass->type->cppName()}});
    return emission.print(R"(
$model$
/// A new factory that makes objects in `model`; it belongs to no model by itself.
[[nodiscard]] static $X$ createNewFactory(ZEL::Model const & model);

/// An object of the class of this name, "$Y$" or "$P$.$Y$"; an invalid handle for other names and abstract classes.
[[nodiscard]] ZEL::ClassObject createFromString(ZEL::Deviant deviant, ZEL::String const & name) override;
/// The same; of a data type, the value that `text` says.
[[nodiscard]] ZEL::Object createFromString(ZEL::Deviant deviant, ZEL::String const & name,
                                           ZEL::String const & text) override;
/// The same, with this number in its model.
[[nodiscard]] ZEL::ClassObject createFromString(ZEL::Deviant deviant, ZEL::String const & name,
                                                ZEL::Integer const & id) override;

$creators$
)",
                          {{"model", model},
                           {"X", of.type->cppName()},
                           {"P", emission.metamodel.prefix},
                           {"Y", creatable(emission).empty() ? "Class" : creatable(emission).front()->name},
                           {"creators", creators}});
}

std::string factoryDefinitions(Emission const & emission, Class const & of) {
    if (!isFactoryOf(emission, of)) {
        return "";
    }
    std::string creators;
    std::vector<std::string> descriptors;
    for (Class const * const c : creatable(emission)) {
        creators += emission.print(R"(

$T$ $X$Intf::create$Y$(ZEL::Deviant deviant) { return ZEL::internal::createObject<$T$>(*this, deviant); }

$T$ $X$Intf::create$Y$(ZEL::Deviant deviant, ZEL::Integer const & id) {
    return ZEL::internal::createObject<$T$>(*this, deviant, id);
}
)",
                                   {{"T", c->type->cppName()}, {"X", of.name}, {"Y", c->name}});
        descriptors.push_back("&" + operationsOf(*c) + "::descriptor()");
    }
    std::string const classes = descriptors.empty()
                                    ? "return {};"
                                    : emission.print(R"(
static ZEL::internal::ClassDescriptor const * const classes[] = {
    $descriptors$};
return classes;
)",
                                                     {{"descriptors", Printer::join(descriptors, ",\n")}});
    std::string const model = emission.metamodel.modelClass == nullptr
                                  ? ""
                                  : emission.print(R"(
$M$ $X$Intf::createNewModel() {
    return $M$(ZEL::internal::createModel($I$::descriptor(), [](ZEL::Model model) -> ZEL::FactoryObject {
        return createNewFactory(model);
    }));
}

)",
                                                   {{"M", emission.metamodel.modelClass->type->cppName()},
                                                    {"I", interfaceOf(*emission.metamodel.modelClass)},
                                                    {"X", of.name}});
    return model +
           emission.print(
               R"(
$T$ $X$Intf::createNewFactory(ZEL::Model const & model) {
    return $T$(ZEL::internal::createFactory(model, $X$Intf::descriptor()));
}

namespace {

/// The classes that `createFromString` knows.
std::span<ZEL::internal::ClassDescriptor const * const> creatableClasses() {
    $classes$
}

} // namespace

ZEL::ClassObject $X$Intf::createFromString(ZEL::Deviant deviant, ZEL::String const & name) {
    return ZEL::internal::createByName(*this, deviant, creatableClasses(), name);
}

ZEL::Object $X$Intf::createFromString(ZEL::Deviant deviant, ZEL::String const & name, ZEL::String const & text) {
    return ZEL::internal::createByName(*this, deviant, creatableClasses(), name, text);
}

ZEL::ClassObject $X$Intf::createFromString(ZEL::Deviant deviant, ZEL::String const & name, ZEL::Integer const & id) {
    return ZEL::internal::createByName(*this, deviant, creatableClasses(), name, id);
}
)",
               {{"T", of.type->cppName()}, {"X", of.name}, {"classes", classes}}) +
           creators;
}

std::set<std::string> factoryHeaders(Emission const & emission, Class const & of) {
    std::set<std::string> headers;
    if (isFactoryOf(emission, of)) {
        headers = {"ZEL/metamodel/FactorySupport.h", "ZEL/metamodel/CreateByName.h", "ZEL/metamodel/ClassObject.h",
                   "ZEL/metamodel/FactoryObject.h",  "ZEL/metamodel/Model.h",        Emission::header(of)};
        for (auto const & c : emission.metamodel.classes) {
            if (!c->isAbstract) {
                headers.insert(Emission::header(*c));
            }
        }
    }
    return headers;
}

std::string factoryHandleDeclarations(Emission const & emission, Class const & of) {
    if (!isFactoryOf(emission, of)) {
        return "";
    }
    std::string creators;
    for (Class const * const c : creatable(emission)) {
        creators +=
            emission.print("[[nodiscard]] $T$ create$X$() const;\n", {{"T", c->type->cppName()}, {"X", c->name}});
    }
    std::string const model = emission.metamodel.modelClass == nullptr
                                  ? ""
                                  : emission.print(R"(
/// A new model with a factory of this class.
[[nodiscard]] static $M$ createNewModel();
)",
                                                   {{"M", emission.metamodel.modelClass->type->cppName()}});
    return emission.print(R"(
$model$
/// A new factory that makes objects in `model`; it belongs to no model by itself.
[[nodiscard]] static $X$ createNewFactory(ZEL::Model const & model);
/// An object of handle class `T`: the same as its `createT()`.
template <class T> [[nodiscard]] T create() const;
$creators$
)",
                          {{"model", model}, {"X", of.type->cppName()}, {"creators", creators}});
}

std::string factoryHandleDefinitions(Emission const & emission, Class const & of) {
    if (!isFactoryOf(emission, of)) {
        return "";
    }
    std::string creators;
    for (Class const * const c : creatable(emission)) {
        creators +=
            emission.print(R"(

$T$ $X$::create$Y$() const { return getImplementation()->create$Y$(getDeviant()); }

template <> $API$ $T$ $X$::create<$T$>() const { return create$Y$(); }
)",
                           {{"T", c->type->cppName()}, {"X", of.name}, {"Y", c->name}, {"API", emission.exportMacro}});
    }
    std::string const model =
        emission.metamodel.modelClass == nullptr
            ? ""
            : emission.print(R"(
$M$ $X$::createNewModel() { return NSInterface::$X$Intf::createNewModel(); }

)",
                             {{"M", emission.metamodel.modelClass->type->cppName()}, {"X", of.name}});
    return model +
           emission.print(R"(
$T$ $X$::createNewFactory(ZEL::Model const & model) { return NSInterface::$X$Intf::createNewFactory(model); }
)",
                          {{"T", of.type->cppName()}, {"X", of.name}}) +
           creators;
}

} // namespace zelgen
