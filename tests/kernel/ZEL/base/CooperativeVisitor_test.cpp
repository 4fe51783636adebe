#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/deviants/Deviant.h>

#include <gtest/gtest.h>

#include <memory>

namespace ZEL::tests {
namespace {

namespace internal = CooperativeVisitor::internal;
using CooperativeVisitor::DispatchTable;
using CooperativeVisitor::VisitationDomain;
using internal::CastTable;
using internal::ClassInfo;
using internal::MethodInfo;

struct Domain : VisitationDomain {};
struct OtherDomain : VisitationDomain {};

template <class T> ClassInfo const & infoOf() {
    static ClassInfo const info = internal::makeClassInfo<T, Domain>();
    return info;
}

// A diamond: the last class has the bases Left and Right, which share Root.
struct Root {
    virtual ~Root() = default;
    static ClassInfo const & classInfo() { return infoOf<Root>(); }
};
struct Left : virtual Root {
    int left = 0;
    static ClassInfo const & classInfo() { return infoOf<Left>(); }
};
struct Right : virtual Root {
    int right = 0;
    static ClassInfo const & classInfo() { return infoOf<Right>(); }
};
struct Both : Left, Right {
    static ClassInfo const & classInfo() { return infoOf<Both>(); }
};
struct Stranger {};

CastTable const & table() { return internal::castTable<Both, Both, Left, Root, Right>(); }

TEST(CooperativeVisitor, TagsAreDenseFromOneInOrderOfFirstUse) {
    struct Fresh : VisitationDomain {};
    struct A {};
    struct B {};
    EXPECT_EQ(1u, internal::GetTag(typeid(A), typeid(Fresh)));
    EXPECT_EQ(2u, internal::GetTag(typeid(B), typeid(Fresh)));
    EXPECT_EQ(1u, internal::GetTag(typeid(A), typeid(Fresh)));
    EXPECT_EQ(1u, internal::GetTag(typeid(B), typeid(A))) << "each domain numbers for itself";
}

TEST(CooperativeVisitor, ANameIsFoundWithColonsAndWithDots) {
    ClassInfo const info{7, 8};
    internal::BindTagToName("Test::Inner::Class", info);
    for (char const * const name : {"Test::Inner::Class", "Test.Inner.Class"}) {
        auto const [stored, found] = internal::GetTagFromName(name);
        EXPECT_STREQ(name, stored);
        EXPECT_EQ(info, found);
    }
    for (char const * const name : {"Test::Inner", static_cast<char const *>(nullptr)}) {
        auto const [stored, found] = internal::GetTagFromName(name);
        EXPECT_EQ(nullptr, stored);
        EXPECT_EQ(ClassInfo(), found);
    }
}

TEST(CooperativeVisitor, CastReturnsTheAddressOfThePartOrNull) {
    Both both;
    EXPECT_EQ(&both, table().cast(Both::classInfo(), &both));
    EXPECT_EQ(static_cast<Left *>(&both), table().cast(Left::classInfo(), &both));
    EXPECT_EQ(static_cast<Right *>(&both), table().cast(Right::classInfo(), &both));
    EXPECT_EQ(static_cast<Root *>(&both), table().cast(Root::classInfo(), &both));
    ClassInfo const others[] = {infoOf<Stranger>(),
                                internal::makeClassInfo<Stranger, OtherDomain>(),
                                {Root::classInfo().domainTag, 10'000},
                                {10'000, 1},
                                {0, 0}};
    for (ClassInfo const & other : others) {
        EXPECT_EQ(nullptr, table().cast(other, &both)) << other.domainTag << ' ' << other.classTag;
    }
}

// Thunks are told apart by what they answer.
bool yes(void *, void *, Deviant) { return true; }
bool no(void *, void *, Deviant) { return false; }

TEST(CooperativeVisitor, TheNearestClassInBaseOrderIsVisited) {
    Both both;
    DispatchTable visitor;
    EXPECT_EQ(nullptr, table().visitMethod(visitor.table(), &both).method);

    visitor.add(Right::classInfo(), &yes);
    MethodInfo found = table().visitMethod(visitor.table(), &both);
    EXPECT_EQ(&yes, found.method);
    EXPECT_EQ(static_cast<Right *>(&both), found.object);

    visitor.add(Root::classInfo(), &no);
    found = table().visitMethod(visitor.table(), &both);
    EXPECT_EQ(&no, found.method) << "the bases of the first base come before the second base";
    EXPECT_EQ(static_cast<Root *>(&both), found.object);

    visitor.add(Both::classInfo(), &yes);
    EXPECT_EQ(&yes, table().visitMethod(visitor.table(), &both).method);
    visitor.add(Both::classInfo(), &no);
    EXPECT_EQ(&no, table().visitMethod(visitor.table(), &both).method) << "the later registration counts";
}

TEST(CooperativeVisitor, ACopiedDispatchTableStandsOnItsOwn) {
    Both both;
    auto original = std::make_unique<DispatchTable>();
    original->add(Root::classInfo(), &yes);
    static_cast<void>(original->table());
    DispatchTable const copy(*original);
    original.reset();
    EXPECT_EQ(&yes, table().visitMethod(copy.table(), &both).method);
}

} // namespace
} // namespace ZEL::tests
