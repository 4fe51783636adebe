#include "KernelModel.h"

#include <ZEL/metamodel/Constants.h>

namespace ZEL::tests::oracle {

// --- the operations of handles -----------------------------------------------------------------------------------------

namespace {

std::string toText(String const & value) { return value.str(); }
std::string toText(Boolean const & value) { return bool(value) ? "1" : "0"; }
template <class T> std::string toText(T const & value) { return std::to_string(value.getValue()); }

template <class T> T fromText(std::string const & text) {
    if constexpr (std::is_same_v<T, String>) {
        return String(text);
    } else if constexpr (std::is_same_v<T, Boolean>) {
        return Boolean(text == "1");
    } else {
        return T(static_cast<decltype(T().getValue())>(std::stoi(text)));
    }
}

/// The operations of a value, by the handle of its class.
struct ValueAccess {
    bool (*has)(ClassObject const & object);
    std::string (*get)(ClassObject const & object);
    void (*set)(ClassObject const & object, std::string const & value);
    void (*remove)(ClassObject const & object);
};

template <class Handle, class Tag> constexpr ValueAccess value() {
    return {[](ClassObject const & object) { return Tag::has(Handle(object)); },
            [](ClassObject const & object) { return toText(Tag::get(Handle(object))); },
            [](ClassObject const & object, std::string const & text) {
                Tag::setOrAdd(Handle(object), fromText<decltype(Tag::get(Handle()))>(text));
            },
            [](ClassObject const & object) { Tag::remove(Handle(object)); }};
}

/// Required, so handles do not offer to remove it.
struct RequiredUri : Package::UriT {
    static void remove(Package const & package) { package.getImplementation()->removeUri(package.getDeviant()); }
};

ValueAccess const & valueAccess(std::string const & property) {
    static std::map<std::string, ValueAccess> const all{
        {"name", value<NamedElement, NamedElement::NameT>()},
        {"visibility", value<NamedElement, NamedElement::VisibilityT>()},
        {"uri", value<Package, RequiredUri>()},
        {"isAbstract", value<Class, Class::IsAbstractT>()},
        {"default", value<Property, Property::DefaultT>()},
        {"isReadOnly", value<Property, Property::IsReadOnlyT>()},
        {"isUnique", value<Property, MultiplicityElement::IsUniqueT>()},
        {"lower", value<Property, MultiplicityElement::LowerT>()},
        {"upper", value<Property, MultiplicityElement::UpperT>()},
        {"isDerived", value<Association, Association::IsDerivedT>()},
        {"isQuery", value<Operation, Operation::IsQueryT>()},
        {"body", value<Comment, Comment::BodyT>()},
    };
    return all.at(property);
}

/// The operations of an end, by the handle of its class.
struct EndAccess {
    std::vector<ClassObject> (*get)(ClassObject const & object);
    void (*add)(ClassObject const & object, ClassObject const & element, bool atFront); ///< or replace
    void (*erase)(ClassObject const & object, int index);
};

template <class Handle, class Tag> constexpr EndAccess single() {
    return {[](ClassObject const & object) {
                bool const isSet = Tag::has(Handle(object));
                return isSet ? std::vector<ClassObject>{ClassObject(Tag::get(Handle(object)))}
                             : std::vector<ClassObject>();
            },
            [](ClassObject const & object, ClassObject const & element, bool) {
                Tag::setOrAdd(Handle(object), decltype(Tag::get(Handle()))(element));
            },
            [](ClassObject const & object, int) { Tag::remove(Handle(object)); }};
}

template <class Handle, class Tag> constexpr EndAccess many() {
    return {[](ClassObject const & object) {
                std::vector<ClassObject> elements;
                for (auto const & element : Tag::get(Handle(object))) {
                    elements.push_back(ClassObject(element));
                }
                return elements;
            },
            [](ClassObject const & object, ClassObject const & element, bool atFront) {
                auto const sequence = Tag::get(Handle(object));
                typename std::decay_t<decltype(sequence.toVector())>::value_type const typed(element);
                atFront ? sequence.push_front(typed) : sequence.push_back(typed);
            },
            [](ClassObject const & object, int index) { Tag::get(Handle(object)).erase(index); }};
}

EndAccess const & endAccess(ClassObject const & object, std::string const & property) {
    static std::map<std::string, EndAccess> const all{
        {"unparented", many<Model, Model::UnparentedT>()},
        {"packagedElement", many<Package, Package::PackagedElementT>()},
        {"ownedRule", many<Namespace, Namespace::OwnedRuleT>()},
        {"ownedComment", many<Element, Element::OwnedCommentT>()},
        {"ownedAttribute", many<Class, Class::OwnedAttributeT>()},
        {"ownedOperation", many<Class, Class::OwnedOperationT>()},
        {"superClass", many<Class, Class::SuperClassT>()},
        {"subClass", many<Class, Class::SubClassT>()},
        {"redefinedProperty", many<Property, Property::RedefinedPropertyT>()},
        {"ownedEnd", many<Association, Association::OwnedEndT>()},
        {"memberEnd", many<Association, Association::MemberEndT>()},
        {"constrainedElement", many<Constraint, Constraint::ConstrainedElementT>()},
        {"precondition", many<Operation, Operation::PreconditionT>()},
        {"postcondition", many<Operation, Operation::PostconditionT>()},
        {"annotatedElement", many<Comment, Comment::AnnotatedElementT>()},
        {"type", single<TypedElement, TypedElement::TypeT>()},
        {"association", single<Property, Property::AssociationT>()},
        {"specification", single<Constraint, Constraint::SpecificationT>()},
        {"bodyCondition", single<Operation, Operation::BodyConditionT>()},
        {"package", single<Type, Type::PackageT>()},
        {"nestingPackage", single<Package, Package::NestingPackageT>()},
        {"context", single<Constraint, Constraint::ContextT>()},
        {"owningAssociation", single<Property, Property::OwningAssociationT>()},
        {"class", single<Property, Property::ClassT>()},
        {"class of an operation", single<Operation, Operation::ClassT>()},
    };
    return all.at(property == "class" && Operation(object).isValid() ? "class of an operation" : property);
}

std::map<Kind, ClassObject (*)(Factory const &)> const kCreations{
    {Kind::Package, [](Factory const & factory) { return ClassObject(factory.createPackage()); }},
    {Kind::Class, [](Factory const & factory) { return ClassObject(factory.createClass()); }},
    {Kind::Property, [](Factory const & factory) { return ClassObject(factory.createProperty()); }},
    {Kind::Association, [](Factory const & factory) { return ClassObject(factory.createAssociation()); }},
    {Kind::Constraint, [](Factory const & factory) { return ClassObject(factory.createConstraint()); }},
    {Kind::Expression, [](Factory const & factory) { return ClassObject(factory.createOpaqueExpression()); }},
    {Kind::Operation, [](Factory const & factory) { return ClassObject(factory.createOperation()); }},
    {Kind::Comment, [](Factory const & factory) { return ClassObject(factory.createComment()); }}};

} // namespace

// --- listeners -----------------------------------------------------------------------------------------------------------

/// A listener of one deviant; modifier, validator and observer as it is registered.
class KernelModel::Listener : public ListenerBase {
public:
    Listener(KernelModel & model, Step const & s, int number)
        : fModel(model), fDeviant(model.deviant(s.deviant)), fNumber(number) {}

    void enlist(Role role) {
        if (role == Role::Modifier) {
            registerModifierOnCommit(fDeviant, *this);
        } else if (role == Role::Validator) {
            registerValidatorOnCommit(fDeviant, *this);
        } else {
            registerObservingListener(fDeviant, *this);
        }
    }
    void dismiss(Role role) {
        if (role == Role::Modifier) {
            fDeviant.unregisterModifierOnCommit(this);
        } else if (role == Role::Validator) {
            fDeviant.unregisterValidatorOnCommit(this);
        } else {
            fDeviant.unregisterObservingListener(this);
        }
    }

    void modifyOnCommit(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) { hear(Role::Modifier, report); }
    bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        return hear(Role::Validator, report);
    }
    void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        hear(Role::Observer, report);
    }
    void onDeviantDestroyed() override { fModel.fCall({Role::Leaver, fDeviant.getName(), fNumber}, fDeviant); }

private:
    template <class Report> bool hear(Role role, Report const & report) {
        Changes const changes{fModel.numbersOf(report.created), fModel.numbersOf(report.deleted),
                              fModel.numbersOf(report.modified)};
        return fModel.fCall({role, fDeviant.getName(), fNumber, changes}, report.sourceDeviant);
    }

    KernelModel & fModel;
    Deviant fDeviant;
    int fNumber;
};

KernelModel::Listener & KernelModel::listener(Step const & s) {
    std::vector<std::shared_ptr<Listener>> & listeners = fListeners[s.deviant];
    for (int number = static_cast<int>(listeners.size()); number < kListeners; ++number) {
        listeners.push_back(std::make_shared<Listener>(*this, s, number));
    }
    return *listeners[static_cast<std::size_t>(s.value)];
}

// --- the model -----------------------------------------------------------------------------------------------------------

KernelModel::KernelModel(KernelListeners listeners) : fCall(std::move(listeners)) {
    MetaModel const model(FactoryRegistry::instance()->createModel(METAMODEL_URI));
    fDeviants.emplace(kRoot, model);
    fObjects.push_back(ClassObject(model));
    fNumbers.emplace(ClassObject(model).getImplementation(), kModel);
}

KernelModel::~KernelModel() {
    for (auto const & [deviant, listeners] : fListeners) {
        for (std::shared_ptr<Listener> const & each : listeners) {
            for (Role const role : kRoles) {
                try {
                    each->dismiss(role);
                } catch (Exception const &) {
                    // It has not been registered.
                }
            }
        }
    }
}

ClassObject KernelModel::object(Deviant deviant, int number) const {
    return number >= kFirstForeign
               ? fForeignObjects.at(number)
               : ClassObject(fObjects.at(static_cast<std::size_t>(number)).getImplementation(), deviant);
}

int KernelModel::numberOf(ImmutableClassObject const & object) const {
    auto const * const body = object.getImplementationWithoutAssert();
    auto const found = fNumbers.find(body);
    return body == nullptr ? kNothing : found == fNumbers.end() ? -2 : found->second;
}

std::optional<State> KernelModel::observed(Deviant deviant, int number, Kind kind) const {
    ClassObject const o = object(deviant, number);
    if (!o.isValid()) {
        return std::nullopt;
    }
    State state;
    state.kind = kind;
    for (ValueRule const & rule : valuesOf(kind)) {
        ValueAccess const & access = valueAccess(rule.property);
        std::string const value = access.get(o);
        if (access.has(o)) {
            state.values[rule.property] = value;
        } else if (value != rule.unset) {
            state.values["has not, but returns: " + rule.property] = value;
        }
    }
    for (EndRule const & rule : endsOf(kind)) {
        std::vector<int> & end = state.ends[rule.property];
        for (ClassObject const & element : endAccess(o, rule.property).get(o)) {
            end.push_back(numberOf(element));
        }
    }
    if (kind == Kind::Expression) {
        for (String const & line : OpaqueExpression(o).getBodies()) {
            state.body.push_back(line.str());
        }
    }
    state.container = numberOf(o.getContainerZEL());
    return state;
}

std::set<int> KernelModel::deviating(std::string const & name) const {
    return numbersOf(fDeviants.at(name).getObjectsDeviatingFromRoot());
}

void KernelModel::perform(Step const & step) {
    using K = KernelModel;
    using S = Step const;
    static constexpr auto putIn = [](K & k, S & s) {
        endAccess(k.object(s), s.property).add(k.object(s), k.element(s), s.index != 0);
    };
    static constexpr auto takeOut = [](K & k, S & s) {
        endAccess(k.object(s), s.property).erase(k.object(s), s.index);
    };
    static std::map<std::string, void (*)(K &, S &)> const operations{
        {"create", [](K & k, S & s) { k.create(s); }},
        {"set value", [](K & k, S & s) { valueAccess(s.property).set(k.object(s), s.text); }},
        {"remove value", [](K & k, S & s) { valueAccess(s.property).remove(k.object(s)); }},
        {"set reference", putIn},
        {"remove reference", takeOut},
        {"link", putIn},
        {"unlink", takeOut},
        {"add body", [](K & k, S & s) { OpaqueExpression(k.object(s)).getBodies().insert(s.index, String(s.text)); }},
        {"erase body", [](K & k, S & s) { OpaqueExpression(k.object(s)).getBodies().erase(s.index); }},
        {"set container", [](K & k, S & s) { k.object(s).setContainerZEL(k.element(s)); }},
        {"remove container", [](K & k, S & s) { k.object(s).removeContainerZEL(); }},
        {"destroy", [](K & k, S & s) { k.object(s).destroy(); }},
        {"begin", [](K & k, S & s) { k.deviant(s).beginTransaction(s.text); }},
        {"commit", [](K & k, S & s) { k.deviant(s).commitTransaction(); }},
        {"cancel", [](K & k, S & s) { k.deviant(s).cancelTransaction(); }},
        {"undo", [](K & k, S & s) { k.deviant(s).undo(); }},
        {"redo", [](K & k, S & s) { k.deviant(s).redo(); }},
        {"undo to level", [](K & k, S & s) { k.deviant(s).undoToChangeLevel(s.value); }},
        {"redo to level", [](K & k, S & s) { k.deviant(s).redoToChangeLevel(s.value); }},
        {"set maximum", [](K & k, S & s) { k.deviant(s).setMaximumUndoStackLength(s.value); }},
        {"disable undo", [](K & k, S & s) { k.deviant(s).disableUndo(); }},
        {"clear undo", [](K & k, S & s) { k.deviant(s).clearUndoStack(); }},
        {"clear redo", [](K & k, S & s) { k.deviant(s).clearRedoStack(); }},
        {"sync", [](K & k, S & s) { k.deviant(s).syncFromRoot(); }},
        {"assign", [](K & k, S & s) { k.deviant(s).assignToRoot(); }},
        {"create deviant", [](K & k, S & s) { k.createDeviant(s); }},
        {"remove deviant", [](K & k, S & s) { k.removeDeviant(s); }},
        {"listen", [](K & k, S & s) { k.listener(s).enlist(static_cast<Role>(s.index)); }},
        {"unlisten", [](K & k, S & s) { k.listener(s).dismiss(static_cast<Role>(s.index)); }},
        {"replace foreign", [](K & k, S & s) { k.replaceForeign(s); }},
    };
    operations.at(step.what)(*this, step);
}

void KernelModel::create(Step const & s) {
    Factory const factory = fDeviants.at(kRoot).getFactoryFactory().asDeviant(fDeviants.at(s.deviant));
    ClassObject const made = kCreations.at(s.kind)(factory);
    fNumbers.insert_or_assign(made.getImplementation(), static_cast<int>(fObjects.size()));
    fObjects.push_back(made);
}

void KernelModel::replaceForeign(Step const & s) {
    fForeignObjects.clear();
    fForeign = MetaModel();
    fForeign = MetaModel(FactoryRegistry::instance()->createModel(METAMODEL_URI));
    Transaction transaction(fForeign.getRootDeviant());
    int number = s.value;
    for (Kind const kind : kForeignKinds) {
        ClassObject const made = kCreations.at(kind)(fForeign.getFactoryFactory());
        // Memory of an object that nobody refers to any more may be that of a new one.
        fNumbers.insert_or_assign(made.getImplementation(), number);
        fForeignObjects[number++] = made;
    }
    transaction.commit();
}

void KernelModel::createDeviant(Step const & s) {
    if (fDeviants.count(s.deviant) == 0) {
        fDeviants.emplace(s.deviant, fDeviants.at(kRoot).createDeviantWithName(String(s.deviant)));
    }
}

// The kernel deletes the holders of listeners; a listener itself goes only if the deviant went.
void KernelModel::removeDeviant(Step const & s) {
    fDeviants.at(kRoot).removeDeviantWithName(String(s.deviant));
    fDeviants.erase(s.deviant);
    fListeners.erase(s.deviant);
}

} // namespace ZEL::tests::oracle
