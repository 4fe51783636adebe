#include "support/ValueTypes.h"

#include <hasp_util/ErrorHolder.h>

#include <gtest/gtest.h>

#include <string>

namespace ZEL {
namespace {

using Test::raisedText;

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
}

TEST(ArgumentTest, IsNotMadeWithANullValue) {
    EXPECT_EQ("Cannot access NULL ref. Use isValid() before calling methods",
              raisedText([] { (void)Argument("a", Object()); }));
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

struct Reading {
    char const * text;
    char const * name; ///< null where reading raises
    char const * raised;
};

TEST(ArgumentTest, ReadsItsGrammar) {
    constexpr char expecting[] = "Expecting: '(' at start of string!";
    constexpr char premature[] = "Premature ')' in createFromString!";
    constexpr char more[] = "There are more parameters in the string than the object!";
    Reading const rows[] = {
        {"", "", nullptr},
        {"(a,b)", "a", nullptr},
        {"(a,(b,c))", "a", nullptr},
        {"((x,y),b)", "(x,y)", nullptr},
        {"()", "", nullptr},
        {"(a)", "a", nullptr},
        {"(", "", nullptr},
        {"(a", "", nullptr},
        {"(a,b", "a", nullptr},
        {"(a,(b)", "a", nullptr},
        {"( a ,b)", " a ", nullptr},
        {"x", nullptr, expecting},
        {" (a)", nullptr, expecting},
        {"(a)b", nullptr, premature},
        {"(a))", nullptr, premature},
        {"(a,b,c)", nullptr, more},
        {"(a,b,c", "a", nullptr},
        {"(a,b,c,d", nullptr, more},
    };
    for (Reading const & row : rows) {
        std::string const raised = raisedText([&] {
            Argument const read = Argument::fromString(row.text);
            EXPECT_EQ(row.name != nullptr ? row.name : "(raises)", read.getName()) << row.text;
            EXPECT_FALSE(read.hasValue()) << row.text;
        });
        EXPECT_EQ(row.raised != nullptr ? row.raised : "(nothing)", raised) << row.text;
    }
}

TEST(ArgumentTest, GivesItsPartsAsObjects) {
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
    EXPECT_TRUE(argument.getName() == "a" && argument.hasObjectValue()) << "neither is this one";
    argument.removeObjectName(Object(String("a")));
    argument.removeObjectValue(argument.getValue());
    EXPECT_TRUE(argument == Argument());
}

} // namespace
} // namespace ZEL
