#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/Descriptors.h>

#include <algorithm>

namespace ZEL::internal {

char const * orcaNameOf(ClassDescriptor const & of, bool immutable) noexcept {
    return immutable ? of.immutableOrcaName : of.orcaName;
}

bool ClassDescriptor::isKindOf(ClassDescriptor const & other) const noexcept {
    return this == &other || std::any_of(superClasses.begin(), superClasses.end(),
                                         [&other](ClassDescriptor const * base) { return base->isKindOf(other); });
}

} // namespace ZEL::internal
