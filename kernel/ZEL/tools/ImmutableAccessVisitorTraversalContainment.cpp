#include <ZEL/Boolean.h>
#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/DeepCalls.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FieldObject.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/IndexChecks.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>
#include <ZEL/values/ValueObject.h>

#include <array>
#include <memory>
#include <optional>
#include <typeinfo>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL {

/// A property, and where its values are found.
struct ImmutableAccessVisitorTraversalContainment::VisitedProperty {
    enum class Place : std::uint8_t {
        List,      ///< in the state: links
        Link,      ///< in the state
        Container, ///< it is the object's container, narrowed
        Model,     ///< it is the object's model
        Value,     ///< in the state, of a type that is boxed from there
        Single,    ///< reached by operations of the class
        Storage,   ///< only the property's storage knows
    };

    explicit VisitedProperty(internal::PropertyView const & view)
        : property(view.property),
          descriptor(view.descriptor),
          links(view.links),
          value(view.value),
          box(view.box),
          place(placeOf(view)),
          isDataType(view.isDataType),
          isEntered(view.isPart()) {}

    [[nodiscard]] static Place placeOf(internal::PropertyView const & view) {
        if (view.links != nullptr) {
            return view.links->sequence != nullptr ? Place::List : Place::Link;
        }
        if (view.box != nullptr) {
            return Place::Value;
        }
        if (view.descriptor == nullptr || view.descriptor->single == nullptr) {
            return Place::Storage;
        }
        if (view.descriptor->storage == internal::Storage::Container && view.descriptor->typeClass != nullptr) {
            return Place::Container;
        }
        return view.descriptor == &NSInterface::ClassObjectOperations::modelZELProperty() ? Place::Model
                                                                                          : Place::Single;
    }

    /// Whether it shows in the state of an object of the class that there are no values.
    [[nodiscard]] bool isEmpty(internal::StateCore const & state) const {
        if (value != nullptr) {
            return !value->get(state).isSet();
        }
        return links != nullptr &&
               (links->sequence != nullptr ? links->sequence(state).empty() : links->get(state) == nullptr);
    }

    ImmutableProperty property;
    internal::PropertyDescriptor const * descriptor; ///< null if only the property's storage knows
    internal::FieldDescriptor const * links;         ///< null for all but links in the state
    internal::ValueDescriptor const * value;         ///< null for all but values in the state
    internal::Boxer box;                             ///< null where only the type knows how to box these
    Place place;
    bool isDataType;
    bool isEntered; ///< what is contained by it is walked through
};

namespace {

using internal::BodyCore;

/// The properties of a class in the order in which they are visited.
template <class VisitedProperty> struct PropertiesInOrder {
    ImmutableProperty name; ///< null if there is none; else the first of `all`
    std::vector<VisitedProperty> all;
};

/// Which operation of a visitor the objects of a class are for.
enum class Kind : std::uint8_t { Model, StereotypeInstance, Other };

BodyCore const & bodyOf(ImmutableClassObject const & object) { return *object.getImplementation()->internal_body(); }

Kind kindOf(BodyCore const & object) {
    if (object.cast(NSInterface::ModelIntf::classInfo()) != nullptr) {
        return Kind::Model;
    }
    return object.cast(NSInterface::StereotypeObjectIntf::classInfo()) != nullptr ? Kind::StereotypeInstance
                                                                                  : Kind::Other;
}

enum Group : std::size_t { SingleValues, ManyValues, Contained, References, Extensions, GroupCount };

/// None for a property that is not visited.
std::optional<Group> groupOf(internal::PropertyView const & property) {
    if (property.persistence == PersistenceKind::Extension) {
        return Extensions;
    }
    if (property.isDataType) {
        return property.isMany ? ManyValues : SingleValues;
    }
    if (property.isDerived) {
        return std::nullopt;
    }
    return property.isComposite ? Contained : References;
}

template <class VisitedProperty>
PropertiesInOrder<VisitedProperty> visitedPropertiesOf(ImmutableClassObject const & object) {
    PropertiesInOrder<VisitedProperty> result;
    std::array<std::vector<VisitedProperty>, GroupCount> groups;
    for (internal::PropertyView const & property : internal::MetaClassView::of(object.getMetaClass())->properties()) {
        VisitedProperty const visited(property);
        if (property.role == internal::PropertyView::Role::Name) {
            if (!result.name.isValid()) {
                result.name = property.property;
                result.all.push_back(visited);
            }
        } else if (std::optional<Group> const group = groupOf(property)) {
            groups[*group].push_back(visited);
        }
    }
    for (std::vector<VisitedProperty> const & group : groups) {
        result.all.insert(result.all.end(), group.begin(), group.end());
    }
    return result;
}

} // namespace

class ImmutableAccessVisitorTraversalContainment::Walk {
public:
    using Properties = PropertiesInOrder<VisitedProperty>;

    /// An operation of `traversal` may be that of a derived class unless it is of the class itself.
    explicit Walk(ImmutableAccessVisitorTraversalContainment const & traversal)
        : isPlain(typeid(traversal) == typeid(ImmutableAccessVisitorTraversalContainment)) {}

    /// The result is valid until the end of the walk. Throws "An Internal Error has occurred" for an object without a
    /// metaclass.
    [[nodiscard]] Properties const & propertiesOf(ImmutableClassObject const & object) {
        KnownClass & known = classOf(bodyOf(object));
        if (!known.properties) {
            known.properties = visitedPropertiesOf<VisitedProperty>(object);
        }
        return *known.properties;
    }
    [[nodiscard]] Kind kindOf(BodyCore const & object) { return classOf(object).kind; }
    [[nodiscard]] internal::DeepCalls & calls() noexcept { return fCalls; }

    /// What is visited next: a property of the object.
    void expect(ImmutableClassObject const & object, VisitedProperty const & property) noexcept {
        fOwner = &bodyOf(object).internal_descriptor();
        fExpected = &property;
    }
    /// What is known of the property if it is the expected one of the object; null otherwise.
    [[nodiscard]] VisitedProperty const * expected(ImmutableClassObject const & object,
                                                   ImmutableProperty const & property) const {
        return fExpected != nullptr && fExpected->property == property &&
                       &bodyOf(object).internal_descriptor() == fOwner
                   ? fExpected
                   : nullptr;
    }

    bool const isPlain; ///< nobody overrides an operation of the traversal
    int nesting = 0;

private:
    struct KnownClass {
        internal::ClassDescriptor const * descriptor;
        Kind kind;
        std::optional<Properties> properties; ///< once an object of the class has been entered
    };

    [[nodiscard]] KnownClass & classOf(BodyCore const & object) {
        internal::ClassDescriptor const & descriptor = object.internal_descriptor();
        KnownClass *& lately = fLately[(reinterpret_cast<std::uintptr_t>(&descriptor) >> 4) % fLately.size()];
        if (lately == nullptr || lately->descriptor != &descriptor) {
            auto found = fByClass.find(&descriptor);
            if (found == fByClass.end()) {
                found = fByClass.emplace(&descriptor, KnownClass{&descriptor, ZEL::kindOf(object), std::nullopt}).first;
            }
            lately = &found->second;
        }
        return *lately;
    }

    std::unordered_map<internal::ClassDescriptor const *, KnownClass> fByClass;
    std::array<KnownClass *, 64> fLately{};
    internal::ClassDescriptor const * fOwner = nullptr;
    VisitedProperty const * fExpected = nullptr;
    internal::DeepCalls fCalls;
};

auto ImmutableAccessVisitorTraversalContainment::beginWalk() {
    if (fWalk == nullptr) {
        fWalk = std::make_unique<Walk>(*this);
    }
    ++fWalk->nesting;
    return internal::AtScopeEnd([this] {
        if (--fWalk->nesting == 0) {
            fWalk.reset();
        }
    });
}

ImmutableAccessVisitorTraversalContainment::ImmutableAccessVisitorTraversalContainment(ImmutableAccessVisitor * pre,
                                                                                       ImmutableAccessVisitor * post)
    : fPreVisitor(pre), fPostVisitor(post) {
    if (pre == nullptr || post == nullptr) {
        raiseAnInternalError();
    }
}

ImmutableAccessVisitorTraversalContainment::~ImmutableAccessVisitorTraversalContainment() = default;

bool ImmutableAccessVisitorTraversalContainment::visitObject(ImmutableObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("Attempt to traverse invalid object!");
    }
    return fPreVisitor->visitObject(object) && ImmutableAccessVisitor::visitObject(object) &&
           fPostVisitor->visitObject(object);
}

bool ImmutableAccessVisitorTraversalContainment::visitClassObject(ImmutableClassObject const & object) {
    return fPreVisitor->visitClassObject(object) && traverseClassObject(object) &&
           fPostVisitor->visitClassObject(object);
}

bool ImmutableAccessVisitorTraversalContainment::visitValueObject(ImmutableValueObject const & value) {
    return fPreVisitor->visitValueObject(value) && fPostVisitor->visitValueObject(value);
}

bool ImmutableAccessVisitorTraversalContainment::visitStereotypeObject(ImmutableStereotypeObject const & instance) {
    return fPreVisitor->visitStereotypeObject(instance) && fPostVisitor->visitStereotypeObject(instance);
}

bool ImmutableAccessVisitorTraversalContainment::visitModel(ImmutableModel const & model) {
    return fPreVisitor->visitModel(model) && traverseClassObject(model) && fPostVisitor->visitModel(model);
}

bool ImmutableAccessVisitorTraversalContainment::visitProperty(ImmutableClassObject const & object,
                                                               ImmutableProperty const & property) {
    VisitedProperty const * const known = fWalk == nullptr ? nullptr : fWalk->expected(object, property);
    if (known != nullptr && known->place != VisitedProperty::Place::Storage) {
        return visitKnown(object, bodyOf(object), property, *known);
    }
    ImmutableSequence<ImmutableObject> const values = object.get(property);
    if (!fPreVisitor->visitProperty(object, property)) {
        return false;
    }
    auto const walk = beginWalk();
    bool const goesOn = onWay({&property, &object, property.isComposite() && !property.isDerived()}, [&] {
        for (ImmutableObject const & value : values) {
            if (!visitValue(value, false)) {
                return false;
            }
        }
        return true;
    });
    return goesOn && fPostVisitor->visitProperty(object, property);
}

bool ImmutableAccessVisitorTraversalContainment::visitKnown(ImmutableClassObject const & object, BodyCore const & body,
                                                            ImmutableProperty const & property,
                                                            VisitedProperty const & known) {
    if (!fPreVisitor->visitProperty(object, property)) {
        return false;
    }
    // Most properties of most objects have no values.
    bool const goesOn =
        known.isEmpty(*body.readState(object.getDeviant())) ||
        onWay({&property, &object, known.isEntered}, [&] { return visitValuesOf(object, body, known); });
    return goesOn && fPostVisitor->visitProperty(object, property);
}

bool ImmutableAccessVisitorTraversalContainment::visitValuesOf(ImmutableClassObject const & object,
                                                               BodyCore const & body, VisitedProperty const & visited) {
    Deviant const deviant = object.getDeviant();
    switch (visited.place) {
    case VisitedProperty::Place::List: {
        int const size = static_cast<int>(visited.links->sequence(*body.readState(deviant)).size());
        for (int i = 0; i < size; ++i) {
            // Read anew each time: a visitor may have written.
            auto const & links = visited.links->sequence(*body.readState(deviant));
            auto * const target =
                static_cast<NSInterface::ObjectIntf *>(links.at(internal::checkedIndex(i, links.size())));
            if (!visitValue(ImmutableObject(target, deviant), false)) {
                return false;
            }
        }
        return true;
    }
    case VisitedProperty::Place::Link:
        return visitValue(ImmutableObject(visited.links->get(*body.readState(deviant)), deviant), false);
    case VisitedProperty::Place::Value:
        return visitBox(ImmutableValueObject(visited.box(visited.value->get(*body.readState(deviant))), deviant));
    case VisitedProperty::Place::Container: {
        NSInterface::ClassObjectIntf const * const container = body.internal_container(deviant);
        bool const isThere = container != nullptr &&
                             container->cast(visited.descriptor->typeClass->classInfo()) != nullptr &&
                             container->deviant_isValid(deviant);
        return !isThere || visitValue(ImmutableObject(container, deviant), false);
    }
    case VisitedProperty::Place::Model: {
        Model const model = body.getModelZEL(deviant);
        return model.getImplementationWithoutAssert() == nullptr || visitValue(model, false);
    }
    default: {
        Generic::PropertyToSequenceMethods const & methods = *visited.descriptor->single;
        NSInterface::ObjectIntf * const self = object.getImplementation();
        ImmutableObject const value = methods.getOne(self, deviant);
        bool const isThere = value.getImplementationWithoutAssert() != nullptr || methods.has(self, deviant);
        return !isThere || visitValue(value, visited.isDataType);
    }
    }
}

template <class Visit> bool ImmutableAccessVisitorTraversalContainment::onWay(Way const & way, Visit visit) {
    Way const outer = std::exchange(fWay, way);
    bool goesOn = false;
    try {
        goesOn = visit();
    } catch (...) {
        // The way stays as it was where the exception came from, and what it points to ends now.
        if (fWay.property == way.property && fWay.object == way.object) {
            fLastProperty.rebind(*way.property);
            fLastObject.rebind(*way.object);
            fWay = {&fLastProperty, &fLastObject, way.isEntered};
        }
        throw;
    }
    fWay = outer;
    return goesOn;
}

bool ImmutableAccessVisitorTraversalContainment::visitValue(ImmutableObject const & value, bool isDataType) {
    if (!fWalk->isPlain) {
        return fWalk->calls().call([&] { return visitObject(value); });
    }
    if (!value.isValid()) {
        raiseInternalError("Attempt to traverse invalid object!");
    }
    if (!fPreVisitor->visitObject(value)) {
        return false;
    }
    bool const goesOn = fWay.isEntered ? fWalk->calls().call([&] { return visitKind(value, isDataType); })
                                       : visitKind(value, isDataType);
    return goesOn && fPostVisitor->visitObject(value);
}

bool ImmutableAccessVisitorTraversalContainment::visitBox(ImmutableValueObject const & value) {
    ImmutableObject const object(value);
    if (!fWalk->isPlain) {
        return visitValue(object, true);
    }
    return fPreVisitor->visitObject(object) && fPreVisitor->visitValueObject(value) &&
           fPostVisitor->visitValueObject(value) && fPostVisitor->visitObject(object);
}

bool ImmutableAccessVisitorTraversalContainment::visitKind(ImmutableObject const & object, bool isDataType) {
    using Traversal = ImmutableAccessVisitorTraversalContainment;
    NSInterface::ObjectIntf * const body = object.getImplementation();
    if (isDataType) {
        if (void * const value = body->cast(NSInterface::ValueObjectIntf::classInfo())) {
            return Traversal::visitValueObject(
                ImmutableValueObject(static_cast<NSInterface::ValueObjectIntf *>(value), object.getDeviant()));
        }
    } else if (void * const part = body->cast(NSInterface::ClassObjectIntf::classInfo())) {
        auto * const classObject = static_cast<NSInterface::ClassObjectIntf *>(part);
        BodyCore const * const core = classObject->internal_body();
        // The visitor before may have destroyed it.
        if (core != nullptr && core->deviant_isValid(object.getDeviant())) {
            switch (fWalk->kindOf(*core)) {
            case Kind::Model:
                return Traversal::visitModel(ImmutableModel(object));
            case Kind::StereotypeInstance:
                return Traversal::visitStereotypeObject(ImmutableStereotypeObject(object));
            case Kind::Other:
                return Traversal::visitClassObject(ImmutableClassObject(classObject, object.getDeviant()));
            }
        }
    }
    return ImmutableAccessVisitor::visitObject(object);
}

bool ImmutableAccessVisitorTraversalContainment::traverseClassObject(ImmutableClassObject const & object) {
    using Traversal = ImmutableAccessVisitorTraversalContainment;
    if (!fWay.isEntered) {
        return true;
    }
    auto const walk = beginWalk();
    BodyCore const & body = bodyOf(object);
    for (VisitedProperty const & visited : fWalk->propertiesOf(object).all) {
        bool goesOn = false;
        if (fWalk->isPlain) {
            goesOn = visited.place != VisitedProperty::Place::Storage
                         ? visitKnown(object, body, visited.property, visited)
                         : Traversal::visitProperty(object, visited.property);
        } else {
            fWalk->expect(object, visited);
            goesOn = visitProperty(object, visited.property);
        }
        if (!goesOn) {
            return false;
        }
    }
    return traverseStereotypeInstances(object);
}

bool ImmutableAccessVisitorTraversalContainment::traverseStereotypeInstances(ImmutableClassObject const & object) {
    if (bodyOf(object).readState(object.getDeviant())->stereotypeInstances().empty()) {
        return true; // as almost always
    }
    for (ImmutableStereotypeObject const & instance : object.getAppliedStereotypeInstances()) {
        if (!visitStereotypeObject(instance)) {
            return false;
        }
    }
    return true;
}

ImmutableProperty ImmutableAccessVisitorTraversalContainment::getCurrentMetaProperty() const {
    return fWay.property == nullptr ? ImmutableProperty() : *fWay.property;
}

ImmutableClassObject ImmutableAccessVisitorTraversalContainment::getCurrentClassObject() const {
    return fWay.object == nullptr ? ImmutableClassObject() : *fWay.object;
}

ImmutableProperty
ImmutableAccessVisitorTraversalContainment::getNameProperty(ImmutableClassObject const & object) const {
    return fWalk == nullptr ? visitedPropertiesOf<VisitedProperty>(object).name : fWalk->propertiesOf(object).name;
}

} // namespace ZEL
