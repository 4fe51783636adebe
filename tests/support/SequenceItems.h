#pragma once

#include "support/Castable.h"
#include "support/ExpectRaises.h"

#include <ZEL/sequences/GenericDeviantSequence.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/PersistentTextSequence.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/sequences/SequenceField.h>
#include <ZEL/values/ObjectHandle.h>

#include <map>
#include <memory>
#include <vector>

namespace ZEL::tests {

/// What stands in the sequences of the tests. It lives as long as its owner, whatever its count.
class ItemIntf : public virtual NSInterface::ClassObjectOperations {
public:
    static ClassInfo const & classInfo() { return classInfoOf<ItemIntf>(); }
};

class SpecialItemIntf : public virtual ItemIntf {
public:
    static ClassInfo const & classInfo() { return classInfoOf<SpecialItemIntf>(); }
};

template <class Concrete, class Base, class... Interfaces>
class CountedBody : public Castable<Concrete, Base, Interfaces...> {
public:
    CountedBody() = default;
    CountedBody(CountedBody const &) = delete;
    CountedBody & operator=(CountedBody const &) = delete;
    void incRef() override { ++fCount; }
    void decRef() override { --fCount; }
    int numRef() override { return fCount; }
    [[nodiscard]] bool deviant_isValid(Deviant) const override { return true; }

private:
    int fCount = 0;
};

class ItemBody final : public CountedBody<ItemBody, ItemIntf, ItemIntf> {};
class SpecialItemBody final : public CountedBody<SpecialItemBody, SpecialItemIntf, SpecialItemIntf, ItemIntf> {};

class ImmutableItem : public ObjectHandle<ItemIntf> {
public:
    using ObjectHandle::ObjectHandle;
    static char const * getOrcaName() { return "TEST.ImmutableItem"; }
};
class Item : public MutableHandle<ImmutableItem> {
public:
    using MutableHandle::MutableHandle;
    static char const * getOrcaName() { return "TEST.Item"; }
};
class ImmutableSpecialItem : public ObjectHandle<SpecialItemIntf> {
public:
    using ObjectHandle::ObjectHandle;
    static char const * getOrcaName() { return "TEST.ImmutableSpecialItem"; }
};
class SpecialItem : public MutableHandle<ImmutableSpecialItem> {
public:
    using MutableHandle::MutableHandle;
    static char const * getOrcaName() { return "TEST.SpecialItem"; }
};

/// A deviant that is known to nobody but the test.
class FakeDeviant {
public:
    explicit FakeDeviant(int id) {
        fIdentity.id = id;
        fIdentity.kind =
            id == 0 ? internal::DeviantIdentity::Kind::LiveRoot : internal::DeviantIdentity::Kind::LiveNamed;
    }
    operator Deviant() { return Deviant(&fIdentity); }
    void destroyModel() {
        fIdentity.modelDestroyed = true;
        fIdentity.kind = internal::DeviantIdentity::Kind::Removed;
    }

private:
    internal::DeviantIdentity fIdentity;
};

/// An object with two stored properties, `items` and `texts`, whose states are kept by deviant as in a model: a deviant
/// without a state reads that of the null deviant, and the first write copies it.
class Owner final : public CountedBody<Owner, NSInterface::ClassObjectOperations> {
public:
    struct State {
        internal::PersistentSequence items;
        internal::PersistentTextSequence texts;
    };

    static Generic::SequenceField const items;
    static Generic::SequenceField const uniqueTexts;
    static Generic::SequenceField const texts;

    [[nodiscard]] State const & readState(Deviant deviant) const {
        auto const found = fStates.find(deviant);
        return found == fStates.end() ? fStates.at(Deviant()) : found->second;
    }
    [[nodiscard]] State & writeState(Deviant deviant) {
        ++numberOfWrites;
        return fStates.try_emplace(deviant, fStates.at(Deviant())).first->second;
    }

    int numberOfWrites = 0; ///< how often the state to write was asked for

private:
    std::map<Deviant, State> fStates{{Deviant(), State()}};
};

namespace owner_fields {
inline Owner & owner(NSInterface::ClassObjectIntf const * object) {
    return const_cast<Owner &>(dynamic_cast<Owner const &>(*object));
}
using Object = NSInterface::ClassObjectIntf const *;
inline internal::PersistentSequence const & readItems(Object o, Deviant d) { return owner(o).readState(d).items; }
inline internal::PersistentSequence & writeItems(Object o, Deviant d) { return owner(o).writeState(d).items; }
inline internal::PersistentTextSequence const & readTexts(Object o, Deviant d) { return owner(o).readState(d).texts; }
inline internal::PersistentTextSequence & writeTexts(Object o, Deviant d) { return owner(o).writeState(d).texts; }
} // namespace owner_fields

inline constexpr Generic::SequenceField Owner::items = Generic::SequenceField::ofBodies(
    "TEST.Item", &ItemIntf::classInfo, &owner_fields::readItems, &owner_fields::writeItems);
inline constexpr Generic::SequenceField Owner::uniqueTexts =
    Generic::SequenceField::ofTexts(&owner_fields::readTexts, &owner_fields::writeTexts, true);
inline constexpr Generic::SequenceField Owner::texts =
    Generic::SequenceField::ofTexts(&owner_fields::readTexts, &owner_fields::writeTexts, false);

/// Items, plain and special ones, and a stored sequence for them.
class SequenceFixture : public testing::Test {
protected:
    Item item(std::size_t i) { return Item(&bodies[i], Deviant()); }
    Item special(std::size_t i) { return Item(&specials[i], Deviant()); }
    template <class T = Item>
    static Sequence<T> stored(Owner & of, Deviant deviant = Deviant(),
                              Generic::SequenceField const & field = Owner::items) {
        return Sequence<T>(new Generic::GenericDeviantSequence(&of, deviant, field), deviant);
    }

    Deviant d;
    std::vector<ItemBody> bodies{8};
    std::vector<SpecialItemBody> specials{5};
    Owner owner;
    Sequence<Item> items{stored(owner)};
};

} // namespace ZEL::tests
