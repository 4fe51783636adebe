#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/ObjectIntf.h>
#include <ZEL/sequences/ShortLived.h>

#include <cstdint>
#include <typeinfo>
#include <utility>

namespace ZEL::Generic {

class Ref;

/// What a `Ref` does with its payload: one table for counted bodies, one for each value class. No table, that is a null
/// pointer, is the manager that does nothing.
struct RefOps {
    /// Takes a count on the payload, or gives one back.
    void (*manage)(void * payload, bool retain);
    // The rest is null in the table of bodies.
    std::type_info const * valueType;
    Ref (*box)(void const * payload, Deviant deviant);
    bool (*equal)(void const * left, void const * right);
};

/// An element of a sequence without its type: a body of a model object, or a value, and the deviant through which the
/// element is seen.
///
/// Passed by value and managed by itself: nobody counts by hand. A body's payload is the address of its `ObjectIntf`
/// part; it is counted when it comes from a handle, and not counted when it comes out of a storage, which outlives the
/// call. A value is a record on the heap, shared by the copies of the `Ref`. A null `Ref` says that there is no
/// element.
class ZEL_API Ref {
public:
    Ref() noexcept = default;
    Ref(Ref const & other) : fPayload(other.fPayload), fDeviant(other.fDeviant), fOps(other.fOps) {
        if (fOps != nullptr) {
            fOps->manage(fPayload, true);
        }
    }
    Ref(Ref && other) noexcept : fPayload(other.fPayload), fDeviant(other.fDeviant), fOps(other.fOps) {
        other.fPayload = nullptr;
        other.fOps = nullptr;
    }
    ~Ref() {
        if (fOps != nullptr) {
            fOps->manage(fPayload, false);
        }
    }
    Ref & operator=(Ref other) noexcept {
        // By hand: `std::swap` would be made of each type in every program.
        void * const payload = fPayload;
        RefOps const * const ops = fOps;
        fPayload = other.fPayload;
        fDeviant = other.fDeviant;
        fOps = other.fOps;
        other.fPayload = payload;
        other.fOps = ops;
        return *this;
    }

    /// Holds a count on `body`. For a null body it returns a null `Ref`.
    [[nodiscard]] static Ref ofBody(NSInterface::ObjectIntf * body, Deviant deviant);
    /// Holds no count: the body must be kept alive by something else.
    [[nodiscard]] static Ref ofStoredBody(NSInterface::ObjectIntf * body, Deviant deviant) noexcept {
        return Ref(body, deviant, nullptr);
    }
    template <class V> [[nodiscard]] static Ref ofValue(V value, Deviant deviant);

    [[nodiscard]] bool isNull() const noexcept { return fPayload == nullptr; }
    [[nodiscard]] bool isValue() const noexcept { return fOps != nullptr && fOps->valueType != nullptr; }
    /// Null for a null `Ref` and for a value.
    [[nodiscard]] NSInterface::ObjectIntf * body() const noexcept {
        return isValue() ? nullptr : static_cast<NSInterface::ObjectIntf *>(fPayload);
    }
    /// Null unless the payload is a value of just this class. A boxed value is a body.
    template <class V> [[nodiscard]] V const * valueAs() const noexcept;

    [[nodiscard]] Deviant getDeviant() const noexcept { return fDeviant; }
    [[nodiscard]] Ref withDeviant(Deviant deviant) const & {
        Ref copy(*this);
        copy.fDeviant = deviant;
        return copy;
    }
    [[nodiscard]] Ref withDeviant(Deviant deviant) && noexcept {
        fDeviant = deviant;
        return std::move(*this);
    }

    /// The same element as a body: a value becomes a new value object, of which the result holds the only count.
    [[nodiscard]] Ref boxed() const { return isValue() ? fOps->box(fPayload, fDeviant) : *this; }

    /// Whether both mean one element: the same body, or equal values, boxed or not.
    [[nodiscard]] bool isSameElement(Ref const & other) const;

private:
    template <class V> struct ValueRecord : internal::ShortLived {
        explicit ValueRecord(V aValue) : value(std::move(aValue)) {}

        std::int32_t count = 0;
        V value;
    };
    template <class V> struct ValueOps;

    Ref(void * payload, Deviant deviant, RefOps const * ops) noexcept
        : fPayload(payload), fDeviant(deviant), fOps(ops) {}

    void * fPayload = nullptr;
    Deviant fDeviant;
    RefOps const * fOps = nullptr;
};

} // namespace ZEL::Generic
