#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/metamodel/PropertyStorageIntf.h>
#include <ZEL/values/ObjectHandle.h>
#include <ZEL/values/RefBase.h>

#include <compare>
#include <cstddef>
#include <string_view>
#include <type_traits>

namespace ZEL {

/// Handle on a property's storage: the value of `Property.storage`. Every operation throws the NULL text on a null
/// handle and forwards otherwise.
class ZEL_API PropertyStorage : public RefBase<PropertyStorageIntf *> {
public:
    PropertyStorage() = default;
    explicit PropertyStorage(PropertyStorageIntf * body) : RefBase(body, Deviant()) {}

    [[nodiscard]] bool has(ImmutableClassObject const & object) const { return getImplementation()->has(object); }
    [[nodiscard]] Sequence<Object> get(ClassObject const & object) const;
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(ImmutableClassObject const & object) const;
    [[nodiscard]] Object getOne(ClassObject const & object) const;
    [[nodiscard]] ImmutableObject getOne(ImmutableClassObject const & object) const;
    /// The same for handles on objects of any class: those that write get what writes.
    template <internal::HandleOf<NSInterface::ClassObjectIntf> H> [[nodiscard]] auto get(H const & object) const {
        return get(BaseOf<H>(object));
    }
    template <internal::HandleOf<NSInterface::ClassObjectIntf> H> [[nodiscard]] auto getOne(H const & object) const {
        return getOne(BaseOf<H>(object));
    }
    void setOrAdd(ClassObject const & object, Object const & value) const {
        getImplementation()->setOrAdd(object, value);
    }
    void setOrAddEndOnly(ClassObject const & object, Object const & value) const {
        getImplementation()->setOrAddEndOnly(object, value);
    }
    void remove(ClassObject const & object, Object const & value) const { getImplementation()->remove(object, value); }
    void removeEndOnly(ClassObject const & object, Object const & value) const {
        getImplementation()->removeEndOnly(object, value);
    }
    void removeOne(ClassObject const & object) const { getImplementation()->removeOne(object); }
    void removeOneEndOnly(ClassObject const & object) const { getImplementation()->removeOneEndOnly(object); }

    friend bool operator==(PropertyStorage const & a, PropertyStorage const & b) noexcept {
        return a.getImplementationWithoutAssert() == b.getImplementationWithoutAssert();
    }
    /// By body, so that handles can be keys.
    friend std::strong_ordering operator<=>(PropertyStorage const & a, PropertyStorage const & b) noexcept {
        return std::compare_three_way()(static_cast<void const *>(a.getImplementationWithoutAssert()),
                                        static_cast<void const *>(b.getImplementationWithoutAssert()));
    }

private:
    template <class H>
    using BaseOf = std::conditional_t<internal::MutableHandleType<H>, ClassObject, ImmutableClassObject>;
};

} // namespace ZEL

template <> struct std::hash<ZEL::PropertyStorage> {
    [[nodiscard]] std::size_t operator()(ZEL::PropertyStorage const & storage) const noexcept {
        return std::hash<ZEL::PropertyStorageIntf const *>()(storage.getImplementationWithoutAssert());
    }
};
