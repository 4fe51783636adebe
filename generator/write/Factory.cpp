#include "write/Emit.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

bool isFactoryOf(Emission const & emission, Class const & of) { return &of == emission.metamodel.factoryClass; }

/// The classes of which the factory makes objects: all concrete ones but models and factories.
std::vector<Class const *> creatable(Emission const & emission) {
    std::vector<Class const *> result;
    for (auto const & c : emission.metamodel.classes) {
        if (!c->isAbstract && !c->isModel && !c->isFactory()) {
            result.push_back(c.get());
        }
    }
    return result;
}

/// One text for each of them, which knows its name as `$Y$`.
std::string forEachCreatable(Emission const & emission, std::string_view text) {
    std::string result;
    for (Class const * const c : creatable(emission)) {
        result += emission.print.knowing({{"Y", c->name}})(text);
    }
    return result;
}

/// A text that knows the class of models as `$M$`; empty if there is none.
std::string ofModels(Emission const & emission, std::string_view text) {
    Class const * const model = emission.metamodel.modelClass;
    return model == nullptr ? "" : emission.print.knowing({{"M", model->name}})(text);
}

constexpr char kNewModel[] = R"(
/// A new model with a factory of this class.
[[nodiscard]] static $M$ createNewModel();
)";

} // namespace

std::string factoryDeclarations(Emission const & emission, Class const & of) {
    if (!isFactoryOf(emission, of)) {
        return "";
    }
    std::string const creators = forEachCreatable(emission, R"(
[[nodiscard]] virtual $Y$ create$Y$(ZEL::Deviant deviant);
[[nodiscard]] virtual $Y$ create$Y$(ZEL::Deviant deviant, ZEL::Integer const & id);
)");
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
                          {{"model", ofModels(emission, kNewModel)},
                           {"P", emission.metamodel.prefix},
                           {"Y", creatable(emission).empty() ? "Class" : creatable(emission).front()->name},
                           {"creators", creators}});
}

std::string factoryDefinitions(Emission const & emission, Class const & of) {
    if (!isFactoryOf(emission, of)) {
        return "";
    }
    std::vector<std::string> descriptors;
    for (Class const * const c : creatable(emission)) {
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
    return ofModels(emission, R"(
$M$ $X$Intf::createNewModel() {
    return $M$(ZEL::internal::createModel($M$Intf::descriptor(), [](ZEL::Model model) -> ZEL::FactoryObject {
        return createNewFactory(model);
    }));
}

)") +
           emission.print(
               R"(
$X$ $X$Intf::createNewFactory(ZEL::Model const & model) {
    return $X$(ZEL::internal::createFactory(model, $X$Intf::descriptor()));
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
               {{"classes", classes}}) +
           forEachCreatable(emission, R"(

$Y$ $X$Intf::create$Y$(ZEL::Deviant deviant) { return ZEL::internal::createObject<$Y$>(*this, deviant); }

$Y$ $X$Intf::create$Y$(ZEL::Deviant deviant, ZEL::Integer const & id) {
    return ZEL::internal::createObject<$Y$>(*this, deviant, id);
}
)");
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
    return emission.print(R"(
$model$
/// A new factory that makes objects in `model`; it belongs to no model by itself.
[[nodiscard]] static $X$ createNewFactory(ZEL::Model const & model);
/// An object of handle class `T`: the same as its `createT()`.
template <class T> [[nodiscard]] T create() const;
$creators$
)",
                          {{"model", ofModels(emission, kNewModel)},
                           {"creators", forEachCreatable(emission, "[[nodiscard]] $Y$ create$Y$() const;\n")}});
}

std::string factoryHandleDefinitions(Emission const & emission, Class const & of) {
    if (!isFactoryOf(emission, of)) {
        return "";
    }
    return ofModels(emission, R"(
$M$ $X$::createNewModel() { return NSInterface::$X$Intf::createNewModel(); }

)") + emission.print(R"(
$X$ $X$::createNewFactory(ZEL::Model const & model) { return NSInterface::$X$Intf::createNewFactory(model); }
)") + forEachCreatable(emission, R"(

$Y$ $X$::create$Y$() const { return getImplementation()->create$Y$(getDeviant()); }

template <> $API$ $Y$ $X$::create<$Y$>() const { return create$Y$(); }
)");
}

} // namespace zelgen
