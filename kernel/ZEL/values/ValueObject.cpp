#include <ZEL/values/String.h>
#include <ZEL/values/ValueObject.h>

namespace ZEL {

String ImmutableValueObject::toString() const { return getImplementation()->toString(getDeviant()); }

namespace internal {

bool haveEqualValues(ImmutableValueObject const & left, ImmutableValueObject const & right) {
    NSInterface::ValueObjectIntf const * const leftBody = left.getImplementationWithoutAssert();
    NSInterface::ValueObjectIntf const * const rightBody = right.getImplementationWithoutAssert();
    if (leftBody == rightBody) {
        return true;
    }
    return leftBody != nullptr && rightBody != nullptr && leftBody->getAny() == rightBody->getAny();
}

} // namespace internal
} // namespace ZEL
