#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>

#include <gtest/gtest.h>

namespace ZEL::tests {
namespace {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::QualifiedName;

/// The four pairs of a Context: type, role, parent type, parent role, each "uri|name"; "" leaves a pair out.
struct Names {
    char const * type = "";
    char const * role = "";
    char const * parentType = "";
    char const * parentRole = "";
};

QualifiedName pairOf(std::string const & text) {
    std::size_t const bar = text.find('|');
    return bar == std::string::npos ? QualifiedName() : QualifiedName(text.substr(0, bar), text.substr(bar + 1));
}

Context contextOf(Names const & names) {
    Context context;
    context.setType(pairOf(names.type));
    context.setRole(pairOf(names.role));
    context.setParentType(pairOf(names.parentType));
    context.setParentRole(pairOf(names.parentRole));
    return context;
}

TEST(QualifiedName, EqualPairsAreOneEntryAndOrderIsByUriThenName) {
    QualifiedName const name("http://a", "x");
    EXPECT_EQ(name, QualifiedName(std::string("http:") + "//a", "x"));
    EXPECT_EQ(&name.getUri(), &QualifiedName("http://a", "x").getUri());
    EXPECT_NE(name, QualifiedName("http://ax", ""));
    EXPECT_EQ(QualifiedName("", ""), QualifiedName());
    EXPECT_LT(QualifiedName("a", "z"), QualifiedName("b", "a"));
    EXPECT_LT(QualifiedName("a", "y"), QualifiedName("a", "z"));
    EXPECT_FALSE(name < name);
    // More names than the front of the table holds.
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 2000; ++i) {
            QualifiedName const many("u", "n" + std::to_string(i));
            ASSERT_EQ(many.getName(), "n" + std::to_string(i));
            ASSERT_EQ(many, QualifiedName("u", "n" + std::to_string(i)));
        }
    }
}

TEST(Context, WeightedMatchCountsPairsThatAgree) {
    std::tuple<Names, Names, int> const rows[] = {
        // An empty side beats everything.
        {{}, {"t|T", "u|r"}, 8},
        {{"", "u|r"}, {}, 8},
        {{}, {}, 8},
        // One to four pairs.
        {{"", "u|r"}, {"t|T", "u|r"}, 1},
        {{"t|T", "u|r"}, {"t|T", "u|r"}, 2},
        {{"t|T", "u|r", "pt|PT"}, {"t|T", "u|r", "pt|PT", "p|P"}, 3},
        {{"t|T", "u|r", "pt|PT", "p|P"}, {"t|T", "u|r", "pt|PT", "p|P"}, 4},
        // A pair that only one side has neither counts nor conflicts.
        {{"t|T"}, {"", "u|r"}, 0},
        {{"", "|r", "pt|PT"}, {"t|T", "|r"}, 1},
        // The result of any conflict is 0, whatever else agrees.
        {{"t|T", "u|r"}, {"t|T", "u|s"}, 0},
        {{"t|T", "u|r"}, {"t|T", "v|r"}, 0},
        {{"t|T", "", "", "p|P"}, {"t|T", "", "", "p|Q"}, 0},
        {{"t|T", "", "pt|PT"}, {"t|T", "", "pt|PU"}, 0},
        // A name without a URI does not match the same name with one.
        {{"", "|r"}, {"", "u|r"}, 0},
        {{"u|"}, {"u|T", "x|y"}, 0},
        // A parent role that agrees in the URI alone counts nothing.
        {{"", "u|r", "", "p|"}, {"", "u|r", "", "p|"}, 1},
        {{"", "u|", "", ""}, {"", "u|", "", "p|P"}, 1},
        {{"", "", "", "p|"}, {"", "", "", "p|"}, 4},
    };
    for (auto const & row : rows) {
        auto const & [pattern, context, expected] = row;
        EXPECT_EQ(contextOf(pattern).weightedMatch(contextOf(context)), expected) << "row " << &row - rows;
    }
}

TEST(Context, OrderPassesOverPairsThatOneSideLeavesOpen) {
    // The order is -1 for less, 0 for equal and 1 for greater.
    std::tuple<Names, Names, int> const rows[] = {
        {{}, {}, 0},
        {{"t|T", "u|r"}, {"", "u|r"}, 0},
        {{"t|T", "u|r", "pt|PT", "p|P"}, {"", "u|r"}, 0},
        {{"", "u|r", "a|A"}, {"", "u|a", "b|A"}, -1},
        {{"", "u|r", "a|A"}, {"", "u|a", "a|B"}, -1},
        {{"", "u|r", "", "b|A"}, {"", "u|r", "", "a|B"}, 1},
        {{"b|A", "u|a"}, {"a|A", "u|b"}, 1},
        {{"a|A", "u|a"}, {"a|A", "u|b"}, -1},
        // Parent type goes before parent role, that before type.
        {{"z|z", "u|r", "a|A", "z|z"}, {"a|a", "u|r", "b|A", "a|a"}, -1},
        {{"z|z", "u|r", "a|A", "a|a"}, {"a|a", "u|r", "a|A", "b|b"}, -1},
        // The role has no open half: the empty one is less.
        {{"t|T"}, {"t|T", "u|r"}, -1},
        // One name in common is enough to compare the pairs.
        {{"|T", "u|r"}, {"t|S", "u|r"}, -1},
        {{"|T", "u|r"}, {"t|", "u|r"}, 0},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(&row - rows);
        auto const & [leftNames, rightNames, order] = row;
        Context const left = contextOf(leftNames);
        Context const right = contextOf(rightNames);
        EXPECT_EQ(left < right, order < 0);
        EXPECT_EQ(right<left, order> 0);
        EXPECT_EQ(left == right, order == 0);
        EXPECT_EQ(right != left, order != 0);
    }
}

TEST(Context, IsParentOfNeedsRoleAndTypeToAgree) {
    Context const parent = contextOf({"t|T", "u|r"});
    Context child;
    child.setParent(parent);
    EXPECT_TRUE(parent.isParentOf(child));
    EXPECT_FALSE(contextOf({"", "u|r"}).isParentOf(child));
    EXPECT_FALSE(contextOf({"t|T", ""}).isParentOf(child));
    EXPECT_FALSE(Context().isParentOf(Context()));
    EXPECT_EQ(child.getParentTypeUri() + child.getParentTypeName(), "tT");
    EXPECT_EQ(child.getParentUri() + child.getParentRoleName(), "ur");
}

TEST(Context, SettersOfOneKindEndTheOthersAndKeepExtensionAndSkip) {
    Context context;
    auto const told = [&context] {
        std::string text = context.isElement() ? "element" : "";
        text += context.isAttribute() ? "attribute" : "";
        text += context.isReference() ? "reference" : "";
        text += context.isMultiValued() ? "+" : "";
        text += context.isExtension() ? " extension" : "";
        text += context.skipContext() ? " skipped" : "";
        for (std::size_t i = 0; i < context.getValueCount(); ++i) {
            text += " '" + context.getValue(i) + "'";
        }
        return text;
    };
    EXPECT_TRUE(context.isEmpty());
    EXPECT_EQ(told(), " ''");
    context.setExtension(true);
    context.addAttribute("a");
    context.setSkipState(true);
    EXPECT_EQ(told(), "attribute+ extension skipped 'a'");
    context.addAttribute("b");
    EXPECT_EQ(told(), "attribute+ extension skipped 'a' 'b'");
    context.setAttribute("c");
    EXPECT_EQ(told(), "attribute extension skipped 'c' 'b'");
    context.addReference("d");
    EXPECT_EQ(told(), "reference+ extension skipped 'd' 'b'");
    context.setElement("e");
    EXPECT_EQ(told(), "element extension skipped 'e' 'b'");
}

struct ContextSequenceTest : testing::Test {
    static Context elementOf(char const * role) {
        Context context = contextOf({"", role});
        context.setElement("1");
        return context;
    }

    Context const element = elementOf("u|e");
    Context const attribute = contextOf({"", "u|a"});
};

TEST_F(ContextSequenceTest, RemoveTakesAllEqualOnesAndLowersTheElementCount) {
    ContextSequence sequence(attribute);
    for (Context const & context : {element, attribute, elementOf("u|b")}) {
        sequence.addContext(context);
    }
    sequence.removeContext(elementOf("u|none"));
    EXPECT_EQ(sequence.elementCount(), 2U);
    sequence.removeContext(sequence.front());
    EXPECT_EQ(sequence.elementCount(), 0U) << "contexts of any kind lower it";
    ASSERT_EQ(sequence.size(), 2U);
    EXPECT_EQ(sequence.front(), element);
    EXPECT_EQ(sequence.back(), elementOf("u|b"));
}

TEST_F(ContextSequenceTest, AppendAddsTheOthersContextsAndCount) {
    ContextSequence const one(element);
    ContextSequence sequence(attribute);
    sequence.append(one);
    sequence.append(sequence);
    EXPECT_EQ(sequence.size(), 4U);
    EXPECT_EQ(sequence.elementCount(), 2U);
    EXPECT_EQ(one.size(), 1U);
}

} // namespace
} // namespace ZEL::tests
