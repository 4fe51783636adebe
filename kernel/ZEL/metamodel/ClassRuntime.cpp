#include <ZEL/metamodel/ClassIntf.h>
#include <ZEL/metamodel/ClassRuntime.h>

#include <unordered_map>

namespace ZEL::internal {

namespace {

/// Never freed: metamodels end after the statics of this library.
auto & descriptors() {
    static auto & all = *new std::unordered_map<NSInterface::ObjectIntf const *, ClassDescriptor const *>;
    return all;
}

/// Under what a class stands among these: its object may have gone before it is unbound, and then has no address as one
/// of another class.
auto & describedObjects() {
    static auto & all = *new std::unordered_map<ClassRuntime const *, NSInterface::ObjectIntf const *>;
    return all;
}

} // namespace

void ClassRuntime::bind(ClassDescriptor const & descriptor, NSInterface::ClassIntf * metaClass, Deviant deviant) {
    if (fMetaClass != metaClass) {
        unbind();
    }
    descriptors()[metaClass] = &descriptor;
    describedObjects()[this] = metaClass;
    fMetaClass = metaClass;
    fDeviant = deviant;
    fView = nullptr;
}

void ClassRuntime::unbind() noexcept {
    if (auto const object = describedObjects().find(this); object != describedObjects().end()) {
        descriptors().erase(object->second);
        describedObjects().erase(object);
    }
    *this = ClassRuntime();
}

ClassDescriptor const * ClassRuntime::described(NSInterface::ObjectIntf const * metaClass) noexcept {
    auto const found = descriptors().find(metaClass);
    return found == descriptors().end() ? nullptr : found->second;
}

} // namespace ZEL::internal
