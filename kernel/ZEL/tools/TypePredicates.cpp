#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/TypePredicates.h>
#include <ZEL/values/ValueObject.h>

#include <unordered_set>
#include <utility>
#include <vector>

namespace ZEL {

namespace {

/// Whether the predicate holds for the class or for one of those above it; each is asked once, however many roads lead
/// to it.
template <class Predicate> bool holdsAbove(ImmutableClass const & metaClass, Predicate predicate) {
    if (!metaClass.isValid()) {
        return false;
    }
    std::unordered_set<NSInterface::ClassIntf const *> seen{metaClass.getImplementation()};
    std::vector<ImmutableClass> open{metaClass};
    while (!open.empty()) {
        ImmutableClass const next = std::move(open.back());
        open.pop_back();
        if (predicate(next)) {
            return true;
        }
        next.getSuperClasses().forEach([&](ImmutableClass const & superClass) {
            if (seen.insert(superClass.getImplementation()).second) {
                open.push_back(superClass);
            }
        });
    }
    return false;
}

} // namespace

bool inherits(ImmutableClass const & metaClass, ImmutableClass const & superClass) {
    return holdsAbove(metaClass, [&superClass](ImmutableClass const & one) { return one == superClass; });
}

bool inherits(ImmutableClass const & metaClass, std::string const & name) {
    return holdsAbove(metaClass, [&name](ImmutableClass const & one) { return one.getName() == name; });
}

bool isDataType(ImmutableType const & type) {
    return ImmutableDataType(type).getImplementationWithoutAssert() != nullptr;
}

bool isValueObject(ImmutableObject const & object) {
    return ImmutableValueObject(object).getImplementationWithoutAssert() != nullptr;
}

} // namespace ZEL
