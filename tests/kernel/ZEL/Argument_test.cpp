#include "support/ValueTypes.h"

namespace ZEL::tests {
namespace {

TEST(ArgumentTest, HoldsOneCountOnItsValue) {
    Object const five = Integer(5);
    Object const six = Integer(6);
    {
        Argument argument("a", five);
        EXPECT_EQ(2, five.getImplementation()->numRef());
        Argument copy = argument;
        EXPECT_EQ(3, five.getImplementation()->numRef());
        copy.setValue(six);
        EXPECT_EQ(2, five.getImplementation()->numRef());
        EXPECT_EQ(2, six.getImplementation()->numRef());
        copy.setValue(Object());
        EXPECT_FALSE(copy.hasValue());
        EXPECT_EQ(1, six.getImplementation()->numRef());
        argument.removeValue();
        EXPECT_FALSE(argument.hasValue() || argument.getValue().isValid());
        EXPECT_TRUE(argument.hasName() && argument.isValid());
    }
    EXPECT_EQ(1, five.getImplementation()->numRef());
    EXPECT_RAISES(kNullRef, Argument("a", Object()));
}

TEST(ArgumentTest, ComparesByNameThenByBody) {
    Object const five = Integer(5);
    EXPECT_TRUE(Argument("a", five) == Argument("a", five));
    EXPECT_TRUE(Argument("a", five) != Argument("a", Integer(5))) << "another body";
    EXPECT_TRUE(Argument("a", five) != Argument("b", five));
    EXPECT_TRUE(Argument("a", five) < Argument("b", five) && Argument("b", five) >= Argument("a", five));
    EXPECT_TRUE(Argument() < Argument("", five)) << "no value comes first";
    EXPECT_TRUE(Argument("a", five) <= Argument("a", five) && !(Argument("a", five) > Argument("a", five)));
}

TEST(ArgumentTest, PrintsItsNameAndValue) {
    EXPECT_EQ("(,())", Argument().toString());
    EXPECT_EQ("(a,5)", Argument("a", Integer(5)).toString());
    EXPECT_EQ("(a,(b,true))", Argument("a", Argument("b", Boolean(true))).toString());
}

TEST(ArgumentTest, ReadsItsGrammar) {
    using Pairs = std::vector<std::pair<char const *, char const *>>;
    Pairs const names{{"", ""},      {"(a,b)", "a"},  {"(a,(b,c))", "a"}, {"((x,y),b)", "(x,y)"},
                      {"()", ""},    {"(a)", "a"},    {"(", ""},          {"(a", ""},
                      {"(a,b", "a"}, {"(a,(b)", "a"}, {"( a ,b)", " a "}, {"(a,b,c", "a"}};
    for (auto const & [text, name] : names) {
        Argument const read = Argument::fromString(text);
        EXPECT_EQ(name, read.getName()) << text;
        EXPECT_FALSE(read.hasValue()) << text;
    }
    constexpr char expecting[] = "Expecting: '(' at start of string!";
    constexpr char premature[] = "Premature ')' in createFromString!";
    constexpr char more[] = "There are more parameters in the string than the object!";
    Pairs const refusals{{"x", expecting},    {" (a)", expecting}, {"(a)b", premature},
                         {"(a))", premature}, {"(a,b,c)", more},   {"(a,b,c,d", more}};
    for (auto const & [text, refusal] : refusals) {
        EXPECT_EQ(refusal, raisedText([&call = text] { (void)Argument::fromString(call); })) << text;
    }
}

TEST(ArgumentTest, ReturnsItsPartsAsObjects) {
    EXPECT_EQ("name", Argument::fName_ID.toString());
    EXPECT_EQ("value", Argument::fValue_ID.toString());
    Argument argument;
    argument.setOrAddObjectName(String("a"));
    argument.setOrAddObjectValue(Integer(5));
    EXPECT_EQ("a", argument.getNameAsImmutableObject().toString());
    EXPECT_EQ("5", argument.getValueAsImmutableObject().toString());
    EXPECT_EQ("(a,5)", argument.toZELObject().toString());
    EXPECT_EQ("(a,5)", argument.toZELValueObject().toString());

    argument.removeObjectName(Object(String("b")));
    argument.removeObjectValue(Object(Integer(5)));
    EXPECT_EQ("(a,5)", argument.toString()) << "neither is this one";
    argument.removeObjectName(Object(String("a")));
    argument.removeObjectValue(argument.getValue());
    EXPECT_TRUE(argument == Argument());
}

} // namespace
} // namespace ZEL::tests
