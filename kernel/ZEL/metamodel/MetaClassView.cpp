#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/ElementIntf.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/FieldObject.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/MultiValuedPropertyManager.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/sequences/Sequence.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <typeinfo>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ZEL::internal {
namespace {

using Views = std::unordered_map<ObjectIntf const *, std::shared_ptr<MetaClassView const>>;

// Never freed: metamodels end after the statics of this library.

Views & keptViews() {
    static auto & views = *new Views;
    return views;
}

/// The last one of each class that was being changed when it was asked for.
Views & passingViews() {
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
    // Of just this class, since one derived from it may read in another way.
    return storage != nullptr && typeid(*storage) == typeid(SingleValuedPropertyManager) &&
           static_cast<SingleValuedPropertyManager const &>(*storage).methods() == descriptor.single;
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

/// All states can have it, and keep it where only they find it.
ValueDescriptor const & persistenceValue() {
    static ValueDescriptor const value{&NSInterface::ElementIntf::persistenceProperty(), [](StateCore const & state) {
                                           return FieldValue::ofLiteral(state.persistence() != 0, state.persistence());
                                       }};
    return value;
}

void findPlaces(ClassDescriptor const & owner, PropertyView & property) {
    property.instances = &owner;
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
    if (property.value != nullptr) {
        property.box = boxerOf(property.descriptor->typeName);
    }
}

template <class Number> std::uint64_t read(char const * text) noexcept {
    Number number = 0;
    std::memcpy(&number, text, sizeof(number));
    return number;
}

/// Names of one class differ in their length, or near one of their ends.
std::uint64_t homeOfName(std::string_view name) noexcept {
    char const * const begin = name.data();
    char const * const end = begin + name.size();
    std::uint64_t key = name.size();
    if (name.size() >= sizeof(std::uint64_t)) {
        key += read<std::uint64_t>(begin) ^ mixed(read<std::uint64_t>(end - sizeof(std::uint64_t)));
    } else if (name.size() >= sizeof(std::uint32_t)) {
        key += read<std::uint32_t>(begin) << 32 ^ read<std::uint32_t>(end - sizeof(std::uint32_t)) << 8;
    } else if (!name.empty()) {
        key += read<std::uint8_t>(begin) << 16 ^ read<std::uint8_t>(end - 1) << 8;
    }
    return mixed(key) >> 32;
}

/// Whether nobody is changing the class as it is seen in the root.
bool isSettled(ImmutableClass const & metaClass) {
    Deviant const deviant = metaClass.getDeviant();
    return deviant.isRootDeviant() && !deviant.isWithinTransaction();
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
        enter(property);
    }
}

void MetaClassView::enter(PropertyView const & property) {
    std::string_view const name = property.name;
    fByName.makeRoom(fProperties.size(), [](PropertyView const * other) { return homeOfName(other->name); });
    PropertyView const *& slot =
        fByName.find(homeOfName(name), [name](PropertyView const * other) { return other->name == name; });
    if (slot == nullptr) { // of several with one name, the first one
        slot = &property;
    }
    enter(bodyOf(property.property), property);
    if (property.descriptor != nullptr && !property.isMany) {
        enter(property.descriptor->single, property);
    }
}

void MetaClassView::enter(void const * address, PropertyView const & property) {
    fByAddress.makeRoom(2 * fProperties.size(), [](Addressed const & other) { return homeOf(other.address); });
    Addressed & slot =
        fByAddress.find(homeOf(address), [address](auto const & other) { return other.address == address; });
    slot = {address, &property};
}

PropertyView const * MetaClassView::find(std::string_view name) const noexcept {
    if (fByName.size() == 0) {
        return nullptr;
    }
    return fByName.find(homeOfName(name), [name](PropertyView const * other) {
        return other->name.size() == name.size() && std::memcmp(other->name.data(), name.data(), name.size()) == 0;
    });
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
        found->second->tellClass();
        return found->second;
    }
    auto view = std::make_shared<MetaClassView const>(metaClass);
    // What a named deviant or an open transaction shows is only for who asks now.
    if (isSettled(metaClass) && modelOf(bodyOf(metaClass)) != nullptr) {
        view->noteSources();
        keptViews().insert_or_assign(bodyOf(metaClass), view);
        view->tellClass();
    }
    return view;
}

std::shared_ptr<MetaClassView const> MetaClassView::of(ClassDescriptor const & descriptor) {
    return of(ImmutableClass(descriptor.runtime->metaClass(), descriptor.runtime->deviant()));
}

MetaClassView const * MetaClassView::kept(ClassDescriptor const & descriptor) {
    if (MetaClassView const * const view = descriptor.runtime->view()) {
        return view;
    }
    ImmutableClass const metaClass(descriptor.runtime->metaClass(), descriptor.runtime->deviant());
    if (!metaClass.isValid() || !isSettled(metaClass)) {
        return nullptr;
    }
    try {
        static_cast<void>(of(metaClass));
    } catch (std::exception const &) {
        return nullptr;
    }
    return descriptor.runtime->view();
}

MetaClassView const & MetaClassView::ofInstance(ClassObjectIntf const & object) {
    BodyCore const * const body = object.internal_body();
    if (body == nullptr) {
        raiseAnInternalError();
    }
    if (MetaClassView const * const view = body->internal_descriptor().runtime->view()) [[likely]] {
        return *view;
    }
    std::shared_ptr<MetaClassView const> const view = of(body->internal_descriptor());
    if (body->internal_descriptor().runtime->view() != view.get()) {
        view->noteSources(); // so that it keeps none of their objects alive
        passingViews().insert_or_assign(bodyOf(view->metaClass()), view);
    }
    return *view;
}

void MetaClassView::tellClass() const noexcept {
    if (fDescriptor != nullptr && fDescriptor->runtime->metaClass() == fMetaClass.getImplementationWithoutAssert()) {
        fDescriptor->runtime->setView(this);
    }
}

void MetaClassView::noteSources() const {
    for (ObjectIntf const * const body : fSuperClasses) {
        noteViewed(body);
    }
    for (PropertyView const & property : fProperties) {
        noteViewed(property.typeBody);
    }
}

void MetaClassView::forget() noexcept {
    for (auto const & [metaClass, view] : keptViews()) {
        if (view->fDescriptor != nullptr) {
            view->fDescriptor->runtime->setView(nullptr);
        }
    }
    // The handles in them may be the last on a body.
    Views const forgotten = std::exchange(keptViews(), Views());
    Views const passed = std::exchange(passingViews(), Views());
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
