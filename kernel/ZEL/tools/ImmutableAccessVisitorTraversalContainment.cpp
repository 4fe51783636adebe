#include <ZEL/Boolean.h>
#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/DeepCalls.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>
#include <ZEL/values/ValueObject.h>

#include <array>
#include <optional>
#include <unordered_map>
#include <vector>

namespace ZEL {
namespace {

/// The properties of a metaclass in the order in which they are visited.
struct VisitedProperties {
    ImmutableProperty name; ///< null if there is none; else the first of `all`
    std::vector<ImmutableProperty> all;
};

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

VisitedProperties visitedPropertiesOf(ImmutableClass const & metaClass) {
    VisitedProperties result;
    std::array<std::vector<ImmutableProperty>, GroupCount> groups;
    for (internal::PropertyView const & property : internal::MetaClassView::of(metaClass)->properties()) {
        if (property.role == internal::PropertyView::Role::Name) {
            if (!result.name.isValid()) {
                result.name = property.property;
                result.all.push_back(property.property);
            }
        } else if (std::optional<Group> const group = groupOf(property)) {
            groups[*group].push_back(property.property);
        }
    }
    for (std::vector<ImmutableProperty> const & group : groups) {
        result.all.insert(result.all.end(), group.begin(), group.end());
    }
    return result;
}

} // namespace

class ImmutableAccessVisitorTraversalContainment::Walk {
public:
    /// The result is valid until the end of the walk.
    [[nodiscard]] VisitedProperties const & propertiesOf(ImmutableClass const & metaClass) {
        NSInterface::ObjectIntf const * const key = metaClass.getImplementation();
        if (fLastClass != key) {
            auto found = fByClass.find(key);
            if (found == fByClass.end()) {
                found = fByClass.emplace(key, visitedPropertiesOf(metaClass)).first;
            }
            fLastClass = key;
            fLast = &found->second;
        }
        return *fLast;
    }
    [[nodiscard]] internal::DeepCalls & calls() noexcept { return fCalls; }

    int nesting = 0;

private:
    std::unordered_map<NSInterface::ObjectIntf const *, VisitedProperties> fByClass;
    NSInterface::ObjectIntf const * fLastClass = nullptr;
    VisitedProperties const * fLast = nullptr;
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
    ImmutableSequence<ImmutableObject> const values = object.get(property);
    if (!fPreVisitor->visitProperty(object, property)) {
        return false;
    }
    auto const walk = beginWalk();
    for (ImmutableObject const & value : values) {
        ImmutableProperty const outerProperty = fCurrentMetaProperty;
        ImmutableClassObject const outerObject = fCurrentClassObject;
        setCurrent(property, object);
        bool const goesOn = fWalk->calls().call([&] { return visitObject(value); });
        setCurrent(outerProperty, outerObject);
        if (!goesOn) {
            return false;
        }
    }
    return fPostVisitor->visitProperty(object, property);
}

bool ImmutableAccessVisitorTraversalContainment::traverseClassObject(ImmutableClassObject const & object) {
    if (fCurrentMetaProperty.isValid() && (!fCurrentMetaProperty.isComposite() || fCurrentMetaProperty.isDerived())) {
        return true;
    }
    ImmutableClass const metaClass = object.getMetaClass();
    if (!metaClass.isValid()) {
        raiseAnInternalError();
    }
    auto const walk = beginWalk();
    for (ImmutableProperty const & property : fWalk->propertiesOf(metaClass).all) {
        if (!visitProperty(object, property)) {
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
    ImmutableClass const metaClass = object.getMetaClass();
    return fWalk == nullptr ? visitedPropertiesOf(metaClass).name : fWalk->propertiesOf(metaClass).name;
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
