#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/XmiFormat.h>
#include <ZEL/serializer/XmiReaderSettings.h>
#include <ZEL/serializer/XmiWriterSettings.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ZEL::Serializer {
namespace {

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

std::vector<std::string> valuesOf(Context const & context) {
    std::vector<std::string> values;
    for (std::size_t i = 0; i < context.getValueCount(); ++i) {
        values.push_back(context.getValue(i));
    }
    return values;
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
    struct Row {
        Names pattern;
        Names context;
        int expected;
    };
    std::vector<Row> const rows = {
        // An empty side beats everything.
        {{}, {"t|T", "u|r"}, 8},
        {{"", "u|r"}, {}, 8},
        {{}, {}, 8},
        // One to four pairs.
        {{"", "u|r"}, {"t|T", "u|r"}, 1},
        {{"t|T", "u|r"}, {"t|T", "u|r"}, 2},
        {{"t|T", "u|r", "pt|PT"}, {"t|T", "u|r", "pt|PT", "p|P"}, 3},
        {{"t|T", "u|r", "pt|PT", "p|P"}, {"t|T", "u|r", "pt|PT", "p|P"}, 4},
        // Pairs that only one side gives neither count nor conflict.
        {{"t|T"}, {"", "u|r"}, 0},
        {{"", "|r", "pt|PT"}, {"t|T", "|r"}, 1},
        // Any conflict gives 0, whatever else agrees.
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
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(contextOf(rows[i].pattern).weightedMatch(contextOf(rows[i].context)), rows[i].expected)
            << "row " << i;
    }
}

TEST(Context, OrderPassesOverPairsThatOneSideLeavesOpen) {
    struct Row {
        Names left;
        Names right;
        int order; ///< -1 less, 0 equal, 1 greater
    };
    std::vector<Row> const rows = {
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
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Context const left = contextOf(rows[i].left);
        Context const right = contextOf(rows[i].right);
        EXPECT_EQ(left < right, rows[i].order < 0) << "row " << i;
        EXPECT_EQ(right<left, rows[i].order> 0) << "row " << i;
        EXPECT_EQ(left == right, rows[i].order == 0) << "row " << i;
        EXPECT_EQ(right != left, rows[i].order != 0) << "row " << i;
    }
}

TEST(Context, IsParentOfNeedsRoleAndTypeToAgree) {
    Context const parent = contextOf({"t|T", "u|r"});
    Context child;
    child.setParent(parent);
    EXPECT_TRUE(parent.isParentOf(child));
    EXPECT_EQ(child.getParentTypeUri(), "t");
    EXPECT_EQ(child.getParentTypeName(), "T");
    EXPECT_EQ(child.getParentUri(), "u");
    EXPECT_EQ(child.getParentRoleName(), "r");
    EXPECT_FALSE(contextOf({"", "u|r"}).isParentOf(child));
    EXPECT_FALSE(Context().isParentOf(Context()));
    EXPECT_FALSE(contextOf({"", "", "a|b", "c|d"}).isParentOf(Context()));
}

TEST(Context, NewOneHasOneEmptyValueAndNoFlag) {
    Context const context;
    EXPECT_EQ(valuesOf(context), std::vector<std::string>{""});
    EXPECT_TRUE(context.isEmpty());
    EXPECT_FALSE(context.isElement() || context.isAttribute() || context.isReference() || context.isExtension() ||
                 context.isMultiValued() || context.skipContext());
}

TEST(Context, SettersOfOneKindEndTheOthersAndKeepExtensionAndSkip) {
    Context context;
    context.setExtension(true);
    context.setSkipState(true);
    context.addAttribute("a");
    EXPECT_EQ(valuesOf(context), std::vector<std::string>{"a"});
    EXPECT_TRUE(context.isAttribute() && context.isMultiValued());
    context.addAttribute("b");
    EXPECT_EQ(valuesOf(context), (std::vector<std::string>{"a", "b"}));

    context.setAttribute("c");
    EXPECT_EQ(valuesOf(context), (std::vector<std::string>{"c", "b"}));
    EXPECT_FALSE(context.isMultiValued());

    context.addReference("d");
    EXPECT_TRUE(context.isReference() && context.isMultiValued() && !context.isAttribute());
    EXPECT_EQ(valuesOf(context), (std::vector<std::string>{"d", "b"}));

    context.setElement("e");
    EXPECT_TRUE(context.isElement() && !context.isReference() && !context.isMultiValued());
    EXPECT_TRUE(context.isExtension() && context.skipContext());
}

TEST(ContextSequence, RemovingContextsOfAnyKindLowersTheElementCount) {
    Context element = contextOf({"", "u|e"});
    element.setElement("1");
    Context attribute = contextOf({"", "u|a"});
    attribute.setAttribute("2");

    ContextSequence sequence(element);
    sequence.addContext(attribute);
    EXPECT_EQ(sequence.elementCount(), 1U);
    sequence.removeContext(attribute);
    EXPECT_EQ(sequence.elementCount(), 0U);
    ASSERT_EQ(sequence.size(), 1U);
    EXPECT_TRUE(sequence.front().isElement());
}

TEST(ContextSequence, RemoveTakesAllEqualOnesAndKeepsTheOrderOfTheRest) {
    ContextSequence sequence;
    for (char const * role : {"|a", "|b", "|a", "|c"}) {
        sequence.addContext(contextOf({"", role}));
    }
    sequence.removeContext(sequence.front());
    ASSERT_EQ(sequence.size(), 2U);
    EXPECT_EQ(sequence.front().getRoleName(), "b");
    EXPECT_EQ(sequence.back().getRoleName(), "c");
}

TEST(ContextSequence, AppendAddsTheOthersContextsAndCount) {
    Context element = contextOf({"", "u|e"});
    element.setElement("1");
    ContextSequence const one(element);
    ContextSequence sequence;
    sequence.addContext(Context());
    sequence.append(one);
    sequence.append(sequence);
    EXPECT_EQ(sequence.size(), 4U);
    EXPECT_EQ(sequence.elementCount(), 2U);
    EXPECT_EQ(one.size(), 1U);
}

TEST(XmiFormat, NamesItsFormats) {
    EXPECT_EQ(XmiFormat(XmiFormat::Standard).toString(), "Standard");
    EXPECT_EQ(XmiFormat(XmiFormat::MagicDraw).toString(), "MagicDraw");
    EXPECT_EQ(XmiFormat(XmiFormat::Rhapsody).toString(), "Rhapsody");
}

TEST(XmiSettings, HaveTheirDefaults) {
    XmiReaderSettings const reader;
    EXPECT_FALSE(reader.getCacheParsedModels());
    EXPECT_EQ(reader.getInputFormat().getFormat(), XmiFormat::Standard);
    EXPECT_FALSE(reader.getSkipUnreadableExternalFiles());
    XmiWriterSettings const writer;
    EXPECT_EQ(writer.getXmiVersion(), "2.1");
    EXPECT_TRUE(writer.getPreferAttributes());
    EXPECT_EQ(writer.getOutputFormat().getFormat(), XmiFormat::Standard);
    EXPECT_FALSE(writer.getAutoFlush());
}

TEST(XmiConstants, AreThoseOfTheFileFormat) {
    EXPECT_STREQ(XmiConstants::XMI_NS_URI, "http://schema.omg.org/spec/XMI/2.1");
    EXPECT_STREQ(XmiConstants::UML_2_0_NS_URI, "http://schema.omg.org/spec/UML/2.0");
    EXPECT_STREQ(XmiConstants::ZEL_EXTENDER, "The Quillon Inc.");
    EXPECT_STREQ(XmiConstants::ZEL_ID_PREFIX, "_zel_");
}

} // namespace
} // namespace ZEL::Serializer
