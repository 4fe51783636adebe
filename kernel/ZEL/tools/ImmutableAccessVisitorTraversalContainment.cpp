#include <ZEL/Boolean.h>
#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/DeepCalls.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>
#include <ZEL/values/ValueObject.h>

#include <array>
#include <optional>
#include <unordered_map>
#include <vector>

namespace ZEL {
namespace {

struct VisitedProperty {
    ImmutableProperty property;
    internal::FieldDescriptor const * links;
    internal::ValueDescriptor const * value;
    Generic::PropertyToSequenceMethods const * single; ///< of one value at most; null if only the storage knows

    /// Whether it shows in the state of an object of the class that there are no values. False if only the property's
    /// storage knows.
    [[nodiscard]] bool isEmpty(internal::StateCore const & state) const {
        if (value != nullptr) {
            return !value->get(state).isSet();
        }
        return links != nullptr && (links->sequence != nullptr ? internal::readSequence(*links, state).empty()
                                                               : links->get(state) == nullptr);
    }
};

/// The properties of a class in the order in which they are visited.
struct VisitedProperties {
    internal::ClassDescriptor const * owner;
    ImmutableProperty name; ///< null if there is none; else the first of `all`
    std::vector<VisitedProperty> all;
};

internal::BodyCore const & bodyOf(ImmutableClassObject const & object) {
    return *object.getImplementation()->internal_body();
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

VisitedProperties visitedPropertiesOf(ImmutableClassObject const & object) {
    VisitedProperties result;
    result.owner = &bodyOf(object).internal_descriptor();
    std::array<std::vector<VisitedProperty>, GroupCount> groups;
    for (internal::PropertyView const & property : internal::MetaClassView::of(object.getMetaClass())->properties()) {
        VisitedProperty const visited{property.property, property.links, property.value,
                                      property.descriptor == nullptr ? nullptr : property.descriptor->single};
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
    /// The result is valid until the end of the walk. Throws "An Internal Error has occurred" for an object without a
    /// metaclass.
    [[nodiscard]] VisitedProperties const & propertiesOf(ImmutableClassObject const & object) {
        internal::ClassDescriptor const * const key = &bodyOf(object).internal_descriptor();
        if (fLast == nullptr || fLast->owner != key) {
            auto found = fByClass.find(key);
            if (found == fByClass.end()) {
                found = fByClass.emplace(key, visitedPropertiesOf(object)).first;
            }
            fLast = &found->second;
        }
        return *fLast;
    }
    [[nodiscard]] internal::DeepCalls & calls() noexcept { return fCalls; }

    /// What is visited next: a property of objects of `owner`.
    void expect(VisitedProperties const & owner, VisitedProperty const & property) noexcept {
        fOwner = owner.owner;
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

    int nesting = 0;

private:
    std::unordered_map<internal::ClassDescriptor const *, VisitedProperties> fByClass;
    VisitedProperties const * fLast = nullptr;
    internal::ClassDescriptor const * fOwner = nullptr;
    VisitedProperty const * fExpected = nullptr;
    internal::DeepCalls fCalls;
};

auto ImmutableAccessVisitorTraversalContainment::beginWalk() {
    if (fWalk == nullptr) {
        fWalk = std::make_unique<Walk>();
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
    bool const isGenerated = known != nullptr && (known->single != nullptr || known->links != nullptr);
    ImmutableSequence<ImmutableObject> values;
    if (!isGenerated) {
        values = object.get(property);
    }
    if (!fPreVisitor->visitProperty(object, property)) {
        return false;
    }
    auto const walk = beginWalk();
    NSInterface::ObjectIntf * const body = object.getImplementation();
    if (isGenerated && known->isEmpty(*bodyOf(object).readState(object.getDeviant()))) {
        // Most properties of most objects have no values.
    } else if (isGenerated && known->single != nullptr) {
        if (known->single->has(body, object.getDeviant()) &&
            !visitValue(known->single->getOne(body, object.getDeviant()), property, object)) {
            return false;
        }
    } else {
        for (ImmutableObject const & value : isGenerated ? object.get(property) : values) {
            if (!visitValue(value, property, object)) {
                return false;
            }
        }
    }
    return fPostVisitor->visitProperty(object, property);
}

bool ImmutableAccessVisitorTraversalContainment::visitValue(ImmutableObject const & value,
                                                            ImmutableProperty const & property,
                                                            ImmutableClassObject const & object) {
    ImmutableProperty const outerProperty = fCurrentMetaProperty;
    ImmutableClassObject const outerObject = fCurrentClassObject;
    setCurrent(property, object);
    bool const goesOn = fWalk->calls().call([&] { return visitObject(value); });
    setCurrent(outerProperty, outerObject);
    return goesOn;
}

bool ImmutableAccessVisitorTraversalContainment::traverseClassObject(ImmutableClassObject const & object) {
    if (fCurrentMetaProperty.isValid() && (!fCurrentMetaProperty.isComposite() || fCurrentMetaProperty.isDerived())) {
        return true;
    }
    auto const walk = beginWalk();
    VisitedProperties const & properties = fWalk->propertiesOf(object);
    for (VisitedProperty const & visited : properties.all) {
        fWalk->expect(properties, visited);
        if (!visitProperty(object, visited.property)) {
            return false;
        }
    }
    return traverseStereotypeInstances(object);
}

bool ImmutableAccessVisitorTraversalContainment::traverseStereotypeInstances(ImmutableClassObject const & object) {
    for (ImmutableStereotypeObject const & instance : object.getAppliedStereotypeInstances()) {
        if (!visitStereotypeObject(instance)) {
            return false;
        }
    }
    return true;
}

ImmutableProperty ImmutableAccessVisitorTraversalContainment::getCurrentMetaProperty() const {
    return fCurrentMetaProperty;
}

ImmutableClassObject ImmutableAccessVisitorTraversalContainment::getCurrentClassObject() const {
    return fCurrentClassObject;
}

ImmutableProperty
ImmutableAccessVisitorTraversalContainment::getNameProperty(ImmutableClassObject const & object) const {
    return fWalk == nullptr ? visitedPropertiesOf(object).name : fWalk->propertiesOf(object).name;
}

void ImmutableAccessVisitorTraversalContainment::setCurrent(ImmutableProperty const & property,
                                                            ImmutableClassObject const & object) {
    fCurrentMetaProperty = property;
    fCurrentClassObject = object;
    // Assigning a handle on the same body keeps the old deviant.
    fCurrentMetaProperty.setDeviant(property.getDeviant());
    fCurrentClassObject.setDeviant(object.getDeviant());
}

} // namespace ZEL
