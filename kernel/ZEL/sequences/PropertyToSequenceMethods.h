#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/sequences/RefTraits.h>

#include <type_traits>

namespace ZEL::Generic {

/// Access to one single-valued property through the operations of the class that declares it: a constant per property.
///
/// A member may be null. Calling one that is null, a null object, and an object that is not of the declaring class
/// throw "An Internal Error has occurred". Values are converted between `Ref` and the property's type.
struct ZEL_API PropertyToSequenceMethods {
    // Each is called with the address of the object's part of the declaring class.
    using Setter = void (*)(void * object, Deviant deviant, Ref const & value);
    using Asker = bool (*)(void * object, Deviant deviant);
    using Remover = void (*)(void * object, Deviant deviant);
    using Getter = Ref (*)(void * object, Deviant deviant);
    using ObjectGetter = Object (*)(void * object, Deviant deviant);

    Setter setMember;
    Setter setEndOnlyMember;
    Asker hasMember;
    Remover removeMember;
    Remover removeEndOnlyMember;
    Getter getMember;
    ObjectGetter getObjectMember;
    CooperativeVisitor::internal::ClassInfo const & (*declaringClass)();

    void set(NSInterface::ObjectIntf * object, Deviant deviant, Ref const & value) const {
        call(setMember, object, deviant, value);
    }
    /// Leaves the other end of the property's association alone, as does `removeEndOnly`.
    void setEndOnly(NSInterface::ObjectIntf * object, Deviant deviant, Ref const & value) const {
        call(setEndOnlyMember, object, deviant, value);
    }
    [[nodiscard]] bool has(NSInterface::ObjectIntf * object, Deviant deviant) const {
        return call(hasMember, object, deviant);
    }
    void remove(NSInterface::ObjectIntf * object, Deviant deviant) const { call(removeMember, object, deviant); }
    void removeEndOnly(NSInterface::ObjectIntf * object, Deviant deviant) const {
        call(removeEndOnlyMember, object, deviant);
    }
    [[nodiscard]] Ref get(NSInterface::ObjectIntf * object, Deviant deviant) const {
        return call(getMember, object, deviant);
    }
    /// The value as an object, a null handle if there is none: `has`, and a `get` without a `Ref`.
    [[nodiscard]] Object getOne(NSInterface::ObjectIntf * object, Deviant deviant) const;

    /// The table of a property of type `V` that interface `I` declares; `nullptr` for an operation that does not exist.
    template <class I, class V, auto Has, auto Get, auto Set, auto SetOnly, auto Remove, auto RemoveOnly>
    [[nodiscard]] static constexpr PropertyToSequenceMethods of() noexcept {
        return {setter<I, V, Set>(),      setter<I, V, SetOnly>(), asker<I, Has>(),           remover<I, Remove>(),
                remover<I, RemoveOnly>(), getter<I, V, Get>(),     objectGetter<I, V, Get>(), &I::classInfo};
    }

private:
    template <auto Member> static constexpr bool isThere = !std::is_null_pointer_v<decltype(Member)>;

    template <class I, class V, auto Member> static constexpr Setter setter() noexcept {
        if constexpr (isThere<Member>) {
            return [](void * object, Deviant deviant, Ref const & value) {
                (static_cast<I *>(object)->*Member)(deviant, RefTraits<V>::fromRef(value));
            };
        } else {
            return nullptr;
        }
    }
    template <class I, auto Member> static constexpr Asker asker() noexcept {
        if constexpr (isThere<Member>) {
            return [](void * object, Deviant deviant) -> bool { return (static_cast<I *>(object)->*Member)(deviant); };
        } else {
            return nullptr;
        }
    }
    template <class I, auto Member> static constexpr Remover remover() noexcept {
        if constexpr (isThere<Member>) {
            return [](void * object, Deviant deviant) { (static_cast<I *>(object)->*Member)(deviant); };
        } else {
            return nullptr;
        }
    }
    template <class I, class V, auto Member> static constexpr Getter getter() noexcept {
        if constexpr (isThere<Member>) {
            return [](void * object, Deviant deviant) -> Ref {
                return RefTraits<V>::toRef((static_cast<I *>(object)->*Member)(deviant)).withDeviant(deviant);
            };
        } else {
            return nullptr;
        }
    }
    template <class I, class V, auto Member> static constexpr ObjectGetter objectGetter() noexcept {
        if constexpr (isThere<Member>) {
            return [](void * object, Deviant deviant) -> Object {
                return RefTraits<V>::toObject((static_cast<I *>(object)->*Member)(deviant), deviant);
            };
        } else {
            return nullptr;
        }
    }
    template <class Member, class... Arguments>
    std::invoke_result_t<Member, void *, Arguments const &...> call(Member member, NSInterface::ObjectIntf * object,
                                                                    Arguments const &... arguments) const {
        void * const declaring = part(object, member != nullptr);
        return member(declaring, arguments...);
    }
    /// The object's part of the declaring class, after all checks.
    [[nodiscard]] void * part(NSInterface::ObjectIntf * object, bool hasMethod) const;
};

} // namespace ZEL::Generic
