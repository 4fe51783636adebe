#include <ZEL/base/GiveBackCount.h>
#include <ZEL/sequences/Ref.h>
#include <ZEL/values/ValueObject.h>

namespace ZEL::Generic {

namespace {

void manageBody(void * payload, bool retain) {
    auto * const body = static_cast<NSInterface::ObjectIntf *>(payload);
    if (retain) {
        body->incRef();
    } else {
        internal::giveBackCount(*body);
    }
}

constexpr RefOps countedBody{&manageBody, nullptr, nullptr, nullptr};

NSInterface::ValueObjectIntf * valueObject(Ref const & ref) {
    NSInterface::ObjectIntf * const body = ref.body();
    return body == nullptr
               ? nullptr
               : static_cast<NSInterface::ValueObjectIntf *>(body->cast(NSInterface::ValueObjectIntf::classInfo()));
}

} // namespace

Ref Ref::ofBody(NSInterface::ObjectIntf * body, Deviant deviant) {
    if (body == nullptr) {
        return Ref(nullptr, deviant, nullptr);
    }
    body->incRef();
    return Ref(body, deviant, &countedBody);
}

bool Ref::isSameElement(Ref const & other) const {
    if (fPayload == other.fPayload) {
        return true;
    }
    if (isNull() || other.isNull()) {
        return false;
    }
    if (isValue() && other.isValue()) {
        return *fOps->valueType == *other.fOps->valueType && fOps->equal(fPayload, other.fPayload);
    }
    if ((!isValue() && valueObject(*this) == nullptr) || (!other.isValue() && valueObject(other) == nullptr)) {
        return false;
    }
    Ref const left = boxed();
    Ref const right = other.boxed();
    return ImmutableValueObject(valueObject(left), fDeviant) ==
           ImmutableValueObject(valueObject(right), other.fDeviant);
}

} // namespace ZEL::Generic
