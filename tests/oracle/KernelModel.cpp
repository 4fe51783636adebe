#include "KernelModel.h"

#include <ZEL/Constants.h>
#include <ZEL/FactoryRegistry.h>
#include <ZEL/Transaction.h>
#include <ZEL/metamodel/Association.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/Constraint.h>
#include <ZEL/metamodel/OpaqueExpression.h>
#include <ZEL/metamodel/Operation.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>

namespace ZEL::oracle {

namespace {

/// Calls `action` with the handle and the typed sequence of a many-valued property.
template <class Action> void withList(ClassObject const & object, std::string const & property, Action action) {
    if (property == "packagedElement") {
        action(Package(object).getPackagedElements());
    } else if (property == "ownedRule") {
        action(Namespace(object).getOwnedRules());
    } else if (property == "ownedComment") {
        action(Element(object).getOwnedComments());
    } else if (property == "ownedAttribute") {
        action(Class(object).getOwnedAttributes());
    } else if (property == "ownedOperation") {
        action(Class(object).getOwnedOperations());
    } else if (property == "superClass") {
        action(Class(object).getSuperClasses());
    } else if (property == "subClass") {
        action(Class(object).getSubClasses());
    } else if (property == "redefinedProperty") {
        action(Property(object).getRedefinedProperties());
    } else if (property == "ownedEnd") {
        action(Association(object).getOwnedEnds());
    } else if (property == "memberEnd") {
        action(Association(object).getMemberEnds());
    } else if (property == "constrainedElement") {
        action(Constraint(object).getConstrainedElements());
    } else if (property == "precondition") {
        action(Operation(object).getPreconditions());
    } else if (property == "postcondition") {
        action(Operation(object).getPostconditions());
    } else if (property == "annotatedElement") {
        action(Comment(object).getAnnotatedElements());
    } else {
        throw std::logic_error("no list " + property);
    }
}

/// The four operations of a single-valued property, as one type for all of them.
struct Single {
    std::function<bool()> has;
    std::function<ClassObject()> get;
    std::function<void(ClassObject const &)> set;
    std::function<void()> remove;
};

Single single(ClassObject const & o, std::string const & property, Kind kind) {
    if (property == "type") {
        TypedElement const e(o);
        return {[=] { return bool(e.hasType()); }, [=] { return ClassObject(e.getType()); },
                [=](ClassObject const & v) { e.setType(Type(v)); }, [=] { e.removeType(); }};
    }
    if (property == "association") {
        Property const e(o);
        return {[=] { return bool(e.hasAssociation()); }, [=] { return ClassObject(e.getAssociation()); },
                [=](ClassObject const & v) { e.setAssociation(Association(v)); }, [=] { e.removeAssociation(); }};
    }
    if (property == "specification") {
        Constraint const e(o);
        return {[=] { return bool(e.hasSpecification()); }, [=] { return ClassObject(e.getSpecification()); },
                [=](ClassObject const & v) { e.setSpecification(ValueSpecification(v)); },
                [=] { e.removeSpecification(); }};
    }
    if (property == "bodyCondition") {
        Operation const e(o);
        return {[=] { return bool(e.hasBodyCondition()); }, [=] { return ClassObject(e.getBodyCondition()); },
                [=](ClassObject const & v) { e.setBodyCondition(Constraint(v)); }, [=] { e.removeBodyCondition(); }};
    }
    if (property == "package") {
        Type const e(o);
        return {[=] { return bool(e.hasPackage()); }, [=] { return ClassObject(e.getPackage()); },
                [=](ClassObject const & v) { e.setPackage(Package(v)); }, [=] { e.removePackage(); }};
    }
    if (property == "nestingPackage") {
        Package const e(o);
        return {[=] { return bool(e.hasNestingPackage()); }, [=] { return ClassObject(e.getNestingPackage()); },
                [=](ClassObject const & v) { e.setNestingPackage(Package(v)); }, [=] { e.removeNestingPackage(); }};
    }
    if (property == "context") {
        Constraint const e(o);
        return {[=] { return bool(e.hasContext()); }, [=] { return ClassObject(e.getContext()); },
                [=](ClassObject const & v) { e.setContext(Namespace(v)); }, [=] { e.removeContext(); }};
    }
    if (property == "owningAssociation") {
        Property const e(o);
        return {[=] { return bool(e.hasOwningAssociation()); }, [=] { return ClassObject(e.getOwningAssociation()); },
                [=](ClassObject const & v) { e.setOwningAssociation(Association(v)); },
                [=] { e.removeOwningAssociation(); }};
    }
    if (property == "class" && kind == Kind::Property) {
        Property const e(o);
        return {[=] { return bool(e.hasClass()); }, [=] { return ClassObject(e.getClass()); },
                [=](ClassObject const & v) { e.setClass(Class(v)); }, [=] { e.removeClass(); }};
    }
    if (property == "class") {
        Operation const e(o);
        return {[=] { return bool(e.hasClass()); }, [=] { return ClassObject(e.getClass()); },
                [=](ClassObject const & v) { e.setClass(Class(v)); }, [=] { e.removeClass(); }};
    }
    throw std::logic_error("no reference " + property);
}

bool flag(ClassObject const & o, std::string const & property, Kind kind) {
    if (property == "isAbstract") {
        return Class(o).isAbstract();
    }
    if (property == "isQuery") {
        return Operation(o).isQuery();
    }
    if (property == "isDerived" && kind == Kind::Association) {
        return Association(o).isDerived();
    }
    return property == "isUnique" ? Property(o).isUnique() : Property(o).isReadOnly();
}

/// The text, and whether the object says that it has one.
std::pair<bool, std::string> text(ClassObject const & o, std::string const & property) {
    if (property == "name") {
        return {NamedElement(o).hasName(), NamedElement(o).getName().str()};
    }
    if (property == "uri") {
        return {Package(o).hasUri(), Package(o).getUri().str()};
    }
    return property == "default"
               ? std::pair<bool, std::string>(Property(o).hasDefault(), Property(o).getDefault().str())
               : std::pair<bool, std::string>(Comment(o).hasBody(), Comment(o).getBody().str());
}

std::pair<bool, long long> number(ClassObject const & o, std::string const & property) {
    if (property == "visibility") {
        return {NamedElement(o).hasVisibility(), NamedElement(o).getVisibility().getValue()};
    }
    return property == "lower"
               ? std::pair<bool, long long>(Property(o).hasLower(), std::int32_t(Property(o).getLower()))
               : std::pair<bool, long long>(Property(o).hasUpper(), std::uint32_t(Property(o).getUpper()));
}

} // namespace

KernelModel::KernelModel() {
    MetaModel const model(FactoryRegistry::instance()->createModel(METAMODEL_URI));
    fDeviants.emplace(kRoot, model);
    fObjects.push_back(ClassObject(model));
    fNumbers.emplace(ClassObject(model).getImplementation(), kModel);
}

ClassObject KernelModel::object(Deviant deviant, int number) const {
    if (number == kNothing) {
        return ClassObject();
    }
    return number >= kFirstForeign
               ? fForeignObjects.at(number)
               : ClassObject(fObjects.at(static_cast<std::size_t>(number)).getImplementation(), deviant);
}

int KernelModel::numberOf(NSInterface::ClassObjectIntf const * body) const {
    if (body == nullptr) {
        return kNothing;
    }
    auto const found = fNumbers.find(body);
    return found == fNumbers.end() ? -2 : found->second;
}

std::optional<State> KernelModel::observed(Deviant deviant, int number_, Kind kind) const {
    ClassObject const o = object(deviant, number_);
    if (!o.isValid()) {
        return std::nullopt;
    }
    State state;
    state.kind = kind;
    auto const numberOfHandle = [this](ClassObject const & handle) {
        return numberOf(handle.getImplementationWithoutAssert());
    };
    for (std::string const & property : flagsOf(kind)) {
        state.flags[property] = flag(o, property, kind);
    }
    for (std::string const & property : textsOf(kind)) {
        auto const [has, value] = text(o, property);
        if (has) {
            state.texts[property] = value;
        } else if (!value.empty()) {
            state.texts["has not, but gives: " + property] = value;
        }
    }
    for (std::string const & property : numbersOf(kind)) {
        auto const [has, value] = number(o, property);
        if (has) {
            state.numbers[property] = value;
        } else if (value != (property == "visibility" ? 0 : 1)) {
            state.numbers["has not, but gives: " + property] = value;
        }
    }
    for (EndRule const & rule : endsOf(kind)) {
        if (rule.isMany) {
            std::vector<int> & list = state.lists[rule.property];
            withList(o, rule.property, [&](auto const & sequence) {
                for (auto const & element : sequence) {
                    list.push_back(numberOfHandle(ClassObject(element)));
                }
            });
        } else {
            Single const end = single(o, rule.property, kind);
            if (end.has()) {
                state.references[rule.property] = numberOfHandle(end.get());
            }
        }
    }
    if (kind == Kind::Expression) {
        for (String const & line : OpaqueExpression(o).getBodies()) {
            state.body.push_back(line.str());
        }
    }
    if (kind == Kind::Model) {
        for (ClassObject const & each : MetaModel(o).getUnparented()) {
            state.lists["unparented"].push_back(numberOfHandle(each));
        }
        state.lists["unparented"];
    }
    state.container = numberOfHandle(o.getContainerZEL());
    return state;
}

std::set<int> KernelModel::deviating(std::string const & name) const {
    std::set<int> result;
    for (ImmutableClassObject const & each : fDeviants.at(name).getObjectsDeviatingFromRoot()) {
        result.insert(numberOf(each.getImplementationWithoutAssert()));
    }
    return result;
}

void KernelModel::create(std::string const & name, Kind kind) {
    Factory const factory = fDeviants.at(kRoot).getFactoryFactory().asDeviant(fDeviants.at(name));
    ClassObject made;
    switch (kind) {
    case Kind::Package:
        made = ClassObject(factory.createPackage());
        break;
    case Kind::Class:
        made = ClassObject(factory.createClass());
        break;
    case Kind::Property:
        made = ClassObject(factory.createProperty());
        break;
    case Kind::Association:
        made = ClassObject(factory.createAssociation());
        break;
    case Kind::Constraint:
        made = ClassObject(factory.createConstraint());
        break;
    case Kind::Expression:
        made = ClassObject(factory.createOpaqueExpression());
        break;
    case Kind::Operation:
        made = ClassObject(factory.createOperation());
        break;
    case Kind::Comment:
        made = ClassObject(factory.createComment());
        break;
    case Kind::Model:
        throw std::logic_error("models are not made by a factory");
    }
    fNumbers.insert_or_assign(made.getImplementation(), static_cast<int>(fObjects.size()));
    fObjects.push_back(made);
}

void KernelModel::replaceForeign(int first) {
    fForeignObjects.clear();
    fForeign = MetaModel();
    fForeign = MetaModel(FactoryRegistry::instance()->createModel(METAMODEL_URI));
    Factory const factory = fForeign.getFactoryFactory();
    Transaction transaction(fForeign.getRootDeviant());
    for (ClassObject const & made : {ClassObject(factory.createClass()), ClassObject(factory.createProperty()),
                                     ClassObject(factory.createComment())}) {
        // Memory of an object that nobody refers to any more may be that of a new one.
        fNumbers.insert_or_assign(made.getImplementation(), first);
        fForeignObjects[first++] = made;
    }
    transaction.commit();
}

void KernelModel::setFlag(std::string const & name, int number_, std::string const & property, bool value) const {
    ClassObject const o = object(name, number_);
    if (property == "isAbstract") {
        Class(o).setIsAbstract(Boolean(value));
    } else if (property == "isQuery") {
        Operation(o).setIsQuery(Boolean(value));
    } else if (property == "isDerived") {
        Association(o).setIsDerived(Boolean(value));
    } else if (property == "isUnique") {
        Property(o).setIsUnique(Boolean(value));
    } else {
        Property(o).setIsReadOnly(Boolean(value));
    }
}

void KernelModel::setText(std::string const & name, int number_, std::string const & property,
                          std::string const & value) const {
    ClassObject const o = object(name, number_);
    if (property == "name") {
        NamedElement(o).setName(String(value));
    } else if (property == "uri") {
        Package(o).setUri(String(value));
    } else if (property == "default") {
        Property(o).setDefault(String(value));
    } else {
        Comment(o).setBody(String(value));
    }
}

void KernelModel::removeText(std::string const & name, int number_, std::string const & property) const {
    ClassObject const o = object(name, number_);
    if (property == "name") {
        NamedElement(o).removeName();
    } else if (property == "uri") {
        Package(o).getImplementation()->removeUri(o.getDeviant()); // required, so handles do not offer it
    } else if (property == "default") {
        Property(o).removeDefault();
    } else {
        Comment(o).removeBody();
    }
}

void KernelModel::setNumber(std::string const & name, int number_, std::string const & property,
                            long long value) const {
    ClassObject const o = object(name, number_);
    if (property == "visibility") {
        NamedElement(o).setVisibility(VisibilityKind(static_cast<VisibilityKind::Value>(value)));
    } else if (property == "lower") {
        Property(o).setLower(Integer(static_cast<int>(value)));
    } else {
        Property(o).setUpper(UnlimitedNatural(static_cast<unsigned int>(value)));
    }
}

void KernelModel::removeNumber(std::string const & name, int number_, std::string const & property) const {
    ClassObject const o = object(name, number_);
    if (property == "visibility") {
        NamedElement(o).removeVisibility();
    } else if (property == "lower") {
        Property(o).removeLower();
    } else {
        Property(o).removeUpper();
    }
}

namespace {

Kind kindOf(ClassObject const & o) { return Property(o).isValid() ? Kind::Property : Kind::Operation; }

} // namespace

void KernelModel::setReference(std::string const & name, int number_, std::string const & property, int value) const {
    ClassObject const o = object(name, number_);
    single(o, property, kindOf(o)).set(object(name, value));
}

void KernelModel::removeReference(std::string const & name, int number_, std::string const & property) const {
    ClassObject const o = object(name, number_);
    single(o, property, kindOf(o)).remove();
}

void KernelModel::link(std::string const & name, int number_, std::string const & property, int value,
                       bool atFront) const {
    ClassObject const element = object(name, value);
    withList(object(name, number_), property, [&](auto const & sequence) {
        using T = typename std::decay_t<decltype(sequence.toVector())>::value_type;
        if (atFront) {
            sequence.push_front(T(element));
        } else {
            sequence.push_back(T(element));
        }
    });
}

void KernelModel::unlink(std::string const & name, int number_, std::string const & property, int index) const {
    withList(object(name, number_), property, [index](auto const & sequence) { sequence.erase(index); });
}

void KernelModel::addBody(std::string const & name, int number_, int index, std::string const & line) const {
    OpaqueExpression(object(name, number_)).getBodies().insert(index, String(line));
}

void KernelModel::eraseBody(std::string const & name, int number_, int index) const {
    OpaqueExpression(object(name, number_)).getBodies().erase(index);
}

void KernelModel::setContainer(std::string const & name, int number_, int container) const {
    object(name, number_).setContainerZEL(object(name, container));
}

void KernelModel::removeContainer(std::string const & name, int number_) const {
    object(name, number_).removeContainerZEL();
}

void KernelModel::destroy(std::string const & name, int number_) const { object(name, number_).destroy(); }

void KernelModel::createDeviant(std::string const & name) {
    if (fDeviants.count(name) == 0) {
        fDeviants.emplace(name, fDeviants.at(kRoot).createDeviantWithName(String(name)));
    }
}

void KernelModel::removeDeviant(std::string const & name) {
    fDeviants.at(kRoot).removeDeviantWithName(String(name));
    fDeviants.erase(name);
}

} // namespace ZEL::oracle
