#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/Ref.h>
#include <ZEL/values/Object.h>
#include <ZEL/values/ValueObject.h>

#include <concepts>

namespace ZEL::Generic {

// --- values in a Ref -------------------------------------------------------------------------------------------------

template <class V> struct Ref::ValueOps {
    using Record = ValueRecord<V>;

    static void manage(void * payload, bool retain) {
        auto * const record = static_cast<Record *>(payload);
        if (record == nullptr) {
            return;
        }
        if (retain) {
            ++record->count;
        } else if (--record->count == 0) {
            delete record;
        }
    }
    static Ref box(void const * payload, Deviant deviant) {
        ValueObject const object = static_cast<Record const *>(payload)->value;
        return ofBody(object.getImplementation(), deviant);
    }
    static bool equal(void const * left, void const * right) {
        return static_cast<Record const *>(left)->value == static_cast<Record const *>(right)->value;
    }
    static constexpr RefOps ops{&manage, &typeid(V), &box, &equal};
};

template <class V> Ref Ref::ofValue(V value, Deviant deviant) {
    auto * const record = new ValueRecord<V>(std::move(value));
    record->count = 1;
    return Ref(record, deviant, &ValueOps<V>::ops);
}

template <class V> V const * Ref::valueAs() const noexcept {
    // The table's address first; it may differ between libraries, the type does not.
    if (fOps == &ValueOps<V>::ops || (isValue() && *fOps->valueType == typeid(V))) {
        return &static_cast<ValueRecord<V> const *>(fPayload)->value;
    }
    return nullptr;
}

// --- between typed elements and a Ref --------------------------------------------------------------------------------

/// A handle on bodies of some interface.
template <class T>
concept BodyElement = requires {
    typename T::BodyInterface;
}
&&ZEL::internal::KindOf<typename T::BodyInterface, NSInterface::ObjectIntf>;

/// How elements of class `T` go into and out of a `Ref`. Any class of elements can read a body that was filled through
/// another one, as long as the elements themselves fit: handles narrow, values are boxed and unboxed.
template <class T> struct RefTraits;

template <BodyElement T> struct RefTraits<T> {
    using BodyInterface = typename T::BodyInterface;

    [[nodiscard]] static Ref toRef(T const & handle) {
        return Ref::ofBody(handle.getImplementationWithoutAssert(), handle.getDeviant());
    }
    /// The object itself, seen in the deviant.
    [[nodiscard]] static Object toObject(T const & handle, Deviant deviant) {
        NSInterface::ObjectIntf * const body = handle.getImplementationWithoutAssert();
        return Object(body, body == nullptr ? Deviant() : deviant);
    }
    /// A null handle for a null `Ref`. Throws "An Internal Error has occurred" for an element of another class.
    [[nodiscard]] static T fromRef(Ref const & ref) {
        if (ref.isValue()) [[unlikely]] {
            return fromValue(ref);
        }
        if (ref.isNull()) {
            return T();
        }
        BodyInterface * const part = partOf(ref.body());
        if (part == nullptr) [[unlikely]] {
            raiseAnInternalError();
        }
        return T(part, ref.getDeviant());
    }
    [[nodiscard]] static bool fits(Ref const & ref) {
        if (ref.isValue()) {
            return fits(ref.boxed());
        }
        return !ref.isNull() && partOf(ref.body()) != nullptr;
    }

private:
    /// Apart, and one for all properties of the type: it is rare, and would be the larger part of each.
    [[nodiscard, gnu::noinline, gnu::cold]] static T fromValue(Ref const & ref) { return fromRef(ref.boxed()); }
    static BodyInterface * partOf(NSInterface::ObjectIntf * body) {
        if constexpr (std::same_as<BodyInterface, NSInterface::ObjectIntf>) {
            return body;
        } else {
            return static_cast<BodyInterface *>(body->cast(BodyInterface::classInfo()));
        }
    }
};

template <class V>
requires(!BodyElement<V>) struct RefTraits<V> {
    [[nodiscard]] static Ref toRef(V const & value) { return Ref::ofValue(value, Deviant()); }
    /// A box of the value, seen in the deviant. Throws as a null handle does if the type of `V` is not registered. One
    /// function for all properties of the type, of which there are many.
    [[nodiscard, gnu::noinline]] static Object toObject(V value, Deviant deviant) {
        Object object = std::move(value);
        static_cast<void>(object.getImplementation());
        object.setDeviant(deviant);
        return object;
    }
    /// A default value for a null `Ref`. Throws "An Internal Error has occurred" for an element that is not a value,
    /// and as `V` does when it is made of a value object of another type.
    [[nodiscard]] static V fromRef(Ref const & ref) {
        if (ref.isNull()) {
            return V();
        }
        if (V const * const value = ref.valueAs<V>()) [[likely]] {
            return *value;
        }
        Ref const boxed = ref.isValue() ? ref.boxed() : Ref::ofStoredBody(ref.body(), ref.getDeviant());
        auto * const object =
            static_cast<NSInterface::ValueObjectIntf *>(boxed.body()->cast(NSInterface::ValueObjectIntf::classInfo()));
        if (object == nullptr) {
            raiseAnInternalError();
        }
        return V(ImmutableValueObject(object, ref.getDeviant()));
    }
    /// Whether the element is a value of this class. A boxed value is only found to be of another one when it is read.
    [[nodiscard]] static bool fits(Ref const & ref) {
        return ref.valueAs<V>() != nullptr ||
               (ref.body() != nullptr && ref.body()->cast(NSInterface::ValueObjectIntf::classInfo()) != nullptr);
    }
};

} // namespace ZEL::Generic
