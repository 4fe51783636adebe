#include "SequenceTest.h"

namespace ZEL::tests {
namespace {

/// A value that knows how many of its kind are alive.
struct Tracked {
    Tracked() { ++alive; }
    Tracked(Tracked const &) { ++alive; }
    Tracked & operator=(Tracked const &) = default;
    ~Tracked() { --alive; }
    operator ValueObject() const { return ValueObject(); }
    explicit Tracked(ImmutableValueObject const &) { ++alive; }
    friend bool operator==(Tracked const &, Tracked const &) { return true; }

    static inline int alive = 0;
};

TEST(Ref, CountsABodyOfAHandleAndNotAStoredOne) {
    ItemBody body;
    FakeDeviant one(1);
    FakeDeviant two(2);
    {
        Ref const ref = Ref::ofBody(&body, one);
        EXPECT_EQ(1, body.numRef());
        Ref copy = ref;
        EXPECT_EQ(2, body.numRef());
        Ref const moved = std::move(copy);
        EXPECT_EQ(2, body.numRef());
        copy = moved;
        EXPECT_EQ(3, body.numRef());
        copy = Ref();
        EXPECT_EQ(2, body.numRef());
        Ref const stored = Ref::ofStoredBody(&body, Deviant());
        EXPECT_EQ(stored.body(), ref.body());
        EXPECT_EQ(2, body.numRef());
        EXPECT_EQ(Deviant(two), ref.withDeviant(two).getDeviant());
        EXPECT_EQ(Deviant(one), ref.getDeviant());
        EXPECT_EQ(2, body.numRef());
    }
    EXPECT_EQ(0, body.numRef());
}

TEST(Ref, SharesAValueUntilTheLastCopyGoes) {
    {
        Ref ref = Ref::ofValue(Tracked(), Deviant());
        Ref const copy = ref;
        EXPECT_EQ(1, Tracked::alive);
        EXPECT_EQ(ref.valueAs<Tracked>(), copy.valueAs<Tracked>());
        EXPECT_EQ(nullptr, ref.valueAs<String>());
        EXPECT_EQ(nullptr, ref.body());
        ref = Ref();
        EXPECT_EQ(1, Tracked::alive);
    }
    EXPECT_EQ(0, Tracked::alive);
}

TEST(Ref, NarrowsToTheHandleThatIsAskedFor) {
    FakeDeviant deviant(1);
    SpecialItemBody body;
    Ref const ref = RefTraits<SpecialItem>::toRef(SpecialItem(&body, deviant));
    Item const item = RefTraits<Item>::fromRef(ref);
    EXPECT_TRUE(item == SpecialItem(&body, Deviant()));
    EXPECT_EQ(Deviant(deviant), item.getDeviant());
    EXPECT_TRUE(RefTraits<SpecialItem>::fromRef(RefTraits<Item>::toRef(item)).isValid());

    ItemBody plain;
    Ref const plainRef = Ref::ofBody(&plain, deviant);
    EXPECT_FALSE(RefTraits<SpecialItem>::fits(plainRef));
    EXPECT_RAISES(kInternalError, RefTraits<SpecialItem>::fromRef(plainRef));
    EXPECT_RAISES(kInternalError, RefTraits<String>::fromRef(plainRef));
    EXPECT_RAISES(kInternalError, RefTraits<Item>::fromRef(RefTraits<String>::toRef(String("abc"))));
    EXPECT_TRUE(RefTraits<Item>::toRef(Item()).isNull());
    EXPECT_FALSE(RefTraits<Item>::fromRef(Ref()).isValid());
    EXPECT_EQ("", RefTraits<String>::fromRef(Ref()).str());
}

TEST(Ref, ComparesBodiesByIdentityAndValuesByValue) {
    ItemBody a;
    ItemBody b;
    auto const body = [](ItemBody & item) { return Ref::ofStoredBody(&item, Deviant()); };
    auto const text = [](char const * value) { return Ref::ofValue(String(value), Deviant()); };
    EXPECT_TRUE(body(a).isSameElement(body(a)));
    EXPECT_FALSE(body(a).isSameElement(body(b)));
    EXPECT_FALSE(body(a).isSameElement(Ref()));
    EXPECT_TRUE(Ref().isSameElement(Ref()));
    EXPECT_TRUE(text("x").isSameElement(text("x")));
    EXPECT_FALSE(text("x").isSameElement(text("y")));
    EXPECT_TRUE(text("x").isSameElement(text("x").boxed()));
    EXPECT_TRUE(text("x").boxed().isSameElement(text("x").boxed()));
    EXPECT_EQ("x", RefTraits<Object>::fromRef(text("x")).toString().str());
    EXPECT_FALSE(text("x").isSameElement(body(a)));
}

} // namespace
} // namespace ZEL::tests
