#include <ZEL/sequences/GenericFilter.h>

namespace ZEL::Generic::filtered_sequence_internal {

namespace {

using CooperativeVisitor::internal::ClassInfo;

// The user data is the class's tags, which the class keeps.

void keep(void *) {}

Ref ifOfClass(void * info, Ref const & element) {
    NSInterface::ObjectIntf * const body = element.body();
    return body != nullptr && body->cast(*static_cast<ClassInfo const *>(info)) != nullptr ? element : Ref();
}

constexpr GenericFilter::VTable takesOnlyTable{&keep, &GenericFilter::identity, &ifOfClass, true};
constexpr GenericFilter::VTable showsOnlyTable{&keep, &ifOfClass, &ifOfClass, false};

} // namespace

Ref GenericFilter::identity(void *, Ref const & stored) { return stored; }

GenericFilter takesOnly(ClassInfo const & info) {
    return GenericFilter(&takesOnlyTable, const_cast<ClassInfo *>(&info));
}

GenericFilter showsOnly(ClassInfo const & info) {
    return GenericFilter(&showsOnlyTable, const_cast<ClassInfo *>(&info));
}

} // namespace ZEL::Generic::filtered_sequence_internal
