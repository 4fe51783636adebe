#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/StateCore.h>

#include <utility>

namespace ZEL {

Remainder const & remainderOf(ImmutableClassObject const & object) {
    static Remainder const none;
    auto const * const kept = object.getImplementation()->internal_body()->readState(object.getDeviant())->remainder();
    return kept != nullptr ? *kept : none;
}

void setRemainder(ClassObject const & object, Remainder remainder) {
    internal::BodyCore const & body = *object.getImplementation()->internal_body();
    if (!remainder.empty() || body.readState(object.getDeviant())->remainder() != nullptr) {
        body.writeState(object.getDeviant())->setRemainder(std::move(remainder));
    }
}

} // namespace ZEL
