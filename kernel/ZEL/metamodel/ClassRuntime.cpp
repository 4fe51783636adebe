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

} // namespace

void ClassRuntime::bind(ClassDescriptor const & descriptor, NSInterface::ClassIntf * metaClass, Deviant deviant) {
    descriptors()[metaClass] = &descriptor;
    if (fMetaClass != metaClass) {
        unbind();
    }
    fMetaClass = metaClass;
    fDeviant = deviant;
    fView = nullptr;
}

void ClassRuntime::unbind() noexcept {
    if (fMetaClass != nullptr) {
        descriptors().erase(fMetaClass);
    }
    *this = ClassRuntime();
}

ClassDescriptor const * ClassRuntime::described(NSInterface::ObjectIntf const * metaClass) noexcept {
    auto const found = descriptors().find(metaClass);
    return found == descriptors().end() ? nullptr : found->second;
}

} // namespace ZEL::internal
