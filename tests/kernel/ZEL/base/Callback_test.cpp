#include <ZEL/base/Callback.h>

#include <boost/function.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <type_traits>

namespace ZEL::tests {
namespace {

using Joining = Callback<std::string(std::string const &, int)>;

std::string join(std::string const & text, int number) { return text + std::to_string(number); }

struct Joiner {
    std::string before;

    std::string with(std::string const & text, int number) const { return before + join(text, number); }
};

union Either {
    int number;
    char letter;
};

/// Is empty as a container is.
struct Table : std::map<int, int> {
    using result_type = int;
    int operator()(int key) const { return contains(key) ? at(key) : key; }
};

static_assert(!std::is_constructible_v<Callback<int()>, decltype([owned = std::unique_ptr<int>()] { return *owned; })>,
              "a callback can be copied");

TEST(Callback, CallsWhateverCanBeCalled) {
    Joiner const joiner{"<"};
    std::string const large(100, 'x');
    Either either{3};
    std::function<std::string(std::string const &, int)> const other = join;
    EXPECT_EQ(Joining(join)("a", 1), "a1");
    EXPECT_EQ(Joining(&join)("a", 1), "a1");
    EXPECT_EQ(Joining(other)("a", 1), "a1");
    EXPECT_EQ(Joining(std::bind(&Joiner::with, &joiner, std::placeholders::_1, 2))("a", 1), "<a2");
    EXPECT_EQ(Joining([&](auto const & text, int) { return text + joiner.before; })("a", 1), "a<");
    EXPECT_EQ(Joining([large](auto const & text, int) { return text + large; })("a", 1), "a" + large);
    EXPECT_EQ((Callback<std::string(Joiner const &, std::string const &, int)>(&Joiner::with)(joiner, "a", 1)), "<a1");
    EXPECT_EQ((Callback<std::string(Joiner const *)>(&Joiner::before)(&joiner)), "<");
    EXPECT_EQ((Callback<std::string(std::reference_wrapper<Joiner const>)>(&Joiner::before)(joiner)), "<");
    EXPECT_EQ((Callback<int(Either &)>(&Either::number)(either)), 3);
    EXPECT_EQ(Callback<int(int)>(Table{})(2), 2) << "without entries, but a function all the same";
    EXPECT_EQ((std::function<std::string(std::string const &, int)>(Joining(join))("a", 1)), "a1");
}

TEST(Callback, IsEmptyIfWhatItIsMadeOfIs) {
    Joining const empty[] = {Joining(),
                             nullptr,
                             static_cast<decltype(&join)>(nullptr),
                             std::function<std::string(std::string const &, int)>(),
                             boost::function<std::string(std::string const &, int)>(),
                             Callback<std::string(std::string, int)>()};
    for (Joining const & callback : empty) {
        EXPECT_TRUE(callback.empty());
        EXPECT_FALSE(callback);
        EXPECT_THROW(callback("a", 1), boost::bad_function_call);
    }
}

TEST(Callback, CopiesHaveStatesOfTheirOwnAndEndThem) {
    auto const counted = std::make_shared<int>(0);
    Callback<int()> first = [counted, number = 0]() mutable { return ++number; };
    EXPECT_EQ(first(), 1);
    Callback<int()> second = first;
    EXPECT_EQ(first(), 2);
    EXPECT_EQ(second(), 2);
    EXPECT_EQ(counted.use_count(), 3);
    Callback<int()> const taken = std::move(first);
    EXPECT_TRUE(first.empty()); // NOLINT(bugprone-use-after-move): what is left is asked for
    EXPECT_EQ(taken(), 3);
    second = [] { return 7; };
    EXPECT_EQ(second(), 7);
    EXPECT_EQ(counted.use_count(), 2);
    second.swap(first);
    EXPECT_TRUE(second.empty());
    second.swap(first);
    second.clear();
    EXPECT_TRUE(second.empty());
}

} // namespace
} // namespace ZEL::tests
