#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/ElementIntf.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/MultiValuedPropertyManager.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/sequences/Sequence.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace ZEL::internal {
namespace {

using Views = std::unordered_map<ObjectIntf const *, std::shared_ptr<MetaClassView const>>;

/// Never freed: metamodels end after the statics of this library.
Views & keptViews() {
    static auto & views = *new Views;
    return views;
}

ObjectIntf const * bodyOf(ImmutableObject const & object) { return object.getImplementationWithoutAssert(); }

ModelCore * modelOf(ObjectIntf const * object) {
    BodyCore const * const body = object == nullptr ? nullptr : object->internal_body();
    return body == nullptr ? nullptr : body->internal_model();
}

void noteViewed(ObjectIntf const * object) {
    if (ModelCore * const model = modelOf(object)) {
        model->noteViewed();
    }
}

std::vector<ObjectIntf const *> sortedBodies(std::vector<ImmutableClass> const & classes) {
    std::vector<ObjectIntf const *> bodies;
    bodies.reserve(classes.size());
    for (ImmutableClass const & metaClass : classes) {
        bodies.push_back(bodyOf(metaClass));
    }
    std::sort(bodies.begin(), bodies.end());
    return bodies;
}

/// Whether the storage is the one that was made from the descriptor. An application may have set another one, which then
/// knows where the values are.
bool isStorageOf(PropertyStorageIntf const * storage, PropertyDescriptor const & descriptor) {
    if (descriptor.isMany()) {
        auto const * const many = dynamic_cast<MultiValuedPropertyManager const *>(storage);
        return many != nullptr && many->getter() == descriptor.many;
    }
    auto const * const single = dynamic_cast<SingleValuedPropertyManager const *>(storage);
    return single != nullptr && single->methods() == descriptor.single;
}

PropertyDescriptor const * findDescriptor(ClassDescriptor const & owner, PropertyView const & property) {
    PropertyStorageIntf const * const storage = property.storage.getImplementationWithoutAssert();
    for (PropertyDescriptor const & own : owner.ownProperties) {
        if (property.name == own.name) {
            return isStorageOf(storage, own) ? &own : nullptr;
        }
    }
    for (PropertyDescriptor const * const inherited : owner.clones) {
        if (property.name == inherited->name) {
            return isStorageOf(storage, *inherited) ? inherited : nullptr;
        }
    }
    return nullptr;
}

/// All states have it, in a few bits of their common part.
ValueDescriptor const & persistenceValue() {
    static ValueDescriptor const value{&NSInterface::ElementIntf::persistenceProperty(), [](StateCore const & state) {
                                           return FieldValue::ofLiteral(state.persistence() != 0, state.persistence());
                                       }};
    return value;
}

void findPlaces(ClassDescriptor const & owner, PropertyView & property) {
    property.descriptor = findDescriptor(owner, property);
    if (property.descriptor == nullptr) {
        return;
    }
    property.links = fieldOf(owner, *property.descriptor);
    auto const value = std::find_if(owner.values.begin(), owner.values.end(),
                                    [&](ValueDescriptor const & each) { return each.property == property.descriptor; });
    if (value != owner.values.end()) {
        property.value = &*value;
    } else if (property.descriptor == persistenceValue().property) {
        property.value = &persistenceValue();
    }
}

} // namespace

// --- one property ----------------------------------------------------------------------------------------------------

PropertyView::Role PropertyView::roleOf(std::string_view name) noexcept {
    static constexpr std::pair<std::string_view, Role> roles[] = {
        {"appliedStereotypeInstance", Role::StereotypeInstances},
        {"id", Role::Id},
        {"modelZEL", Role::Model},
        {"name", Role::Name},
        {"unparented", Role::Unparented},
        {"uri", Role::Uri},
    };
    auto const * const found =
        std::find_if(std::begin(roles), std::end(roles), [&](auto const & role) { return role.first == name; });
    return found == std::end(roles) ? Role::None : found->second;
}

PropertyView::PropertyView(ImmutableProperty const & handle)
    : property(handle),
      storage(handle.getStorage()),
      type(handle.getType()),
      typeBody(bodyOf(type)),
      name(handle.getName().str()),
      defaultText(handle.getDefault().str()),
      role(roleOf(name)),
      persistence(handle.getPersistence()),
      hasDefault(handle.hasDefault()),
      isMany(handle.isMultivalued()),
      isReadOnly(handle.isReadOnly()),
      isComposite(handle.isComposite()),
      isDerived(handle.isDerived()),
      isDataType(ImmutableDataType(type).isValid()),
      isOfModel(isModelOrFactory(ImmutableClass(type))) {
    ImmutableProperty const opposite = handle.getOpposite();
    hasOpposite = opposite.isValid();
    isContainer = hasOpposite && opposite.isComposite();
    isOfContainer = isContainer || (hasOpposite && opposite.isDerived() && !isComposite);
}

// --- one class -------------------------------------------------------------------------------------------------------

MetaClassView::MetaClassView(ImmutableClass const & metaClass)
    : fMetaClass(metaClass),
      fName(metaClass.getName().str()),
      fDescriptor(ClassRuntime::described(bodyOf(metaClass))),
      fSuperClasses(sortedBodies(withSuperClasses(metaClass))),
      fIsModel(inheritsFrom(bodyOf(Model::MetaClass()))) {
    ImmutableSequence<ImmutableProperty> const properties = metaClass.getOwnedAttributes();
    fProperties.reserve(static_cast<std::size_t>(properties.size()));
    properties.forEach([&](ImmutableProperty const & property) { fProperties.emplace_back(property); });
    for (PropertyView & property : fProperties) {
        if (fDescriptor != nullptr) {
            findPlaces(*fDescriptor, property);
        }
        fByName.emplace(property.name, &property);
    }
}

PropertyView const * MetaClassView::find(std::string_view name) const noexcept {
    auto const found = fByName.find(name);
    return found == fByName.end() ? nullptr : found->second;
}

PropertyView const * MetaClassView::find(PropertyView::Role role) const noexcept {
    auto const found = std::find_if(fProperties.begin(), fProperties.end(),
                                    [&](PropertyView const & property) { return property.role == role; });
    return found == fProperties.end() ? nullptr : &*found;
}

ImmutableProperty MetaClassView::nameProperty() const {
    PropertyView const * const found = find(PropertyView::Role::Name);
    return found == nullptr ? ImmutableProperty() : found->property;
}

bool MetaClassView::inheritsFrom(ObjectIntf const * type) const noexcept {
    return type != nullptr && std::binary_search(fSuperClasses.begin(), fSuperClasses.end(), type);
}

std::shared_ptr<MetaClassView const> MetaClassView::of(ImmutableClass const & metaClass) {
    if (!metaClass.isValid()) {
        raiseAnInternalError();
    }
    auto const found = keptViews().find(bodyOf(metaClass));
    if (found != keptViews().end() && metaClass.getDeviant().isRootDeviant()) {
        return found->second;
    }
    auto view = std::make_shared<MetaClassView const>(metaClass);
    // What a named deviant or an open transaction shows is only for who asks now.
    if (metaClass.getDeviant().isRootDeviant() && !metaClass.getDeviant().isWithinTransaction() &&
        modelOf(bodyOf(metaClass)) != nullptr) {
        for (ObjectIntf const * const body : view->fSuperClasses) {
            noteViewed(body);
        }
        for (PropertyView const & property : view->properties()) {
            noteViewed(property.typeBody);
        }
        keptViews().insert_or_assign(bodyOf(metaClass), view);
    }
    return view;
}

std::shared_ptr<MetaClassView const> MetaClassView::of(ClassDescriptor const & descriptor) {
    return of(ImmutableClass(descriptor.runtime->metaClass(), descriptor.runtime->deviant()));
}

void MetaClassView::forget() noexcept {
    // The handles in them may be the last on a body.
    Views const forgotten = std::exchange(keptViews(), Views());
}

// --- upwards ---------------------------------------------------------------------------------------------------------

std::vector<ImmutableClass> withSuperClasses(ImmutableClass const & metaClass) {
    std::vector<ImmutableClass> found;
    std::unordered_set<ObjectIntf const *> seen;
    auto const enter = [&](ImmutableClass const & one) {
        if (seen.insert(bodyOf(one)).second) {
            found.push_back(one);
        }
    };
    if (metaClass.isValid()) {
        enter(metaClass);
    }
    std::size_t next = 0;
    while (next < found.size()) { // it grows meanwhile
        ImmutableClass const one = found[next++];
        one.getSuperClasses().forEach(enter);
    }
    return found;
}

bool isModelOrFactory(ImmutableClass const & metaClass) {
    auto const classes = withSuperClasses(metaClass);
    return std::any_of(classes.begin(), classes.end(), [](ImmutableClass const & one) {
        return one == Model::MetaClass() || one == FactoryObject::MetaClass();
    });
}

} // namespace ZEL::internal
