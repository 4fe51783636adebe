#include <hasp_util/any.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace HASP::tests {
namespace {

TEST(Any, CastGivesTheValueOfItsExactTypeOnly) {
    any const value = std::string("x");
    EXPECT_EQ(any_cast<std::string>(value), "x");
    EXPECT_EQ(&any_cast<std::string const &>(value), value.get<std::string>());
    EXPECT_EQ(value.get<std::string const>(), value.get<std::string>());
    EXPECT_THROW((void)any_cast<char const *>(value), bad_any_cast);
    EXPECT_THROW((void)any_cast<int>(any()), std::bad_cast);
}

TEST(Any, EqualityIsThatOfTypeAndValue) {
    struct Incomparable {};

    EXPECT_EQ(any(3), any(3));
    EXPECT_NE(any(3), any(4));
    EXPECT_NE(any(3), any(3u));
    EXPECT_EQ(any(), any());
    EXPECT_NE(any(), any(0));
    any const incomparable = Incomparable();
    EXPECT_NE(incomparable, incomparable);
}

/// A value of `Size` bytes with an owner's duties, which knows how many of its kind there are.
template <std::size_t Size, bool MovesNothrow = true> class Counted {
public:
    static inline int alive = 0;
    static inline bool refusesCopies = false;

    explicit Counted(char letter) {
        fText.fill(letter);
        ++alive;
    }
    Counted(Counted const & other) : fText(other.fText) {
        if (refusesCopies) {
            throw std::runtime_error("no copy");
        }
        ++alive;
    }
    Counted(Counted && other) noexcept(MovesNothrow) : fText(other.fText) {
        other.fText.fill('-');
        ++alive;
    }
    Counted & operator=(Counted const &) = delete;
    ~Counted() { --alive; }

    friend bool operator==(Counted const & left, Counted const & right) { return left.fText == right.fText; }

private:
    std::array<char, Size> fText;
};

template <class Value> class AnyOf : public testing::Test {
public:
    static bool holds(any const & holder, char letter) {
        Value const * const value = holder.get<Value>();
        return value != nullptr && *value == Value(letter);
    }
};

// Inside, as large as fits inside, one larger, and one that may throw when it is moved.
using Values = testing::Types<Counted<1>, Counted<32>, Counted<33>, Counted<8, false>>;
TYPED_TEST_SUITE(AnyOf, Values);

TYPED_TEST(AnyOf, CopiesStandAloneAndWhatIsMovedFromIsEmpty) {
    {
        any first = TypeParam('a');
        any second = first;
        EXPECT_EQ(first, second);
        EXPECT_EQ(2, TypeParam::alive);

        any const third = std::move(first);
        EXPECT_TRUE(first.empty()); // NOLINT(bugprone-use-after-move): it is what is looked at
        EXPECT_EQ(typeid(void), first.type());
        EXPECT_TRUE(this->holds(third, 'a'));

        second = any(TypeParam('b'));
        EXPECT_TRUE(this->holds(second, 'b'));
        EXPECT_TRUE(this->holds(third, 'a'));
        EXPECT_EQ(2, TypeParam::alive);

        any & same = second;
        second = same;
        EXPECT_TRUE(this->holds(second, 'b'));
        second = std::move(same);
        EXPECT_TRUE(this->holds(second, 'b'));

        std::swap(first, second);
        EXPECT_TRUE(second.empty());
        first = 1;
        EXPECT_EQ(1, any_cast<int>(first));
        EXPECT_EQ(1, TypeParam::alive) << "the value was replaced by one of another type";
    }
    EXPECT_EQ(0, TypeParam::alive);
}

TYPED_TEST(AnyOf, AnAssignmentThatThrowsLeavesTheOldValue) {
    any const source = TypeParam('a');
    any target = std::string("text");
    TypeParam::refusesCopies = true;
    EXPECT_THROW(target = source, std::runtime_error);
    EXPECT_THROW((void)any(source), std::runtime_error);
    TypeParam::refusesCopies = false;
    EXPECT_EQ("text", any_cast<std::string>(target));
    EXPECT_EQ(1, TypeParam::alive);
}

} // namespace
} // namespace HASP::tests
