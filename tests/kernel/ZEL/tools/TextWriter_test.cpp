#include "kernel/ZEL/tools/TestModel.h"

#include <algorithm>
#include <sstream>

namespace ZEL::tests {
namespace {

std::string textOf(ImmutableObject const & object) {
    std::ostringstream stream;
    EXPECT_TRUE(ImmutableAccessVisitorTextWriter(stream).visitObject(object));
    return stream.str();
}

/// `text` with "#" replaced by the attribute that the writer makes of each object's id, in order.
std::string withIds(std::string text, std::vector<ImmutableClassObject> const & objects) {
    for (ImmutableClassObject const & object : objects) {
        text.replace(text.find('#'), 1, "id=\"" + object.getId().toString().str() + " {readonly}\"");
    }
    return text;
}

TEST(TextWriter, AnObjectIsWrittenWithAllThatItContains) {
    TestModel const sample("p");
    Class const a = sample.classIn(sample.top, "A");
    Property const x = sample.attribute(a, "x");
    x.setDefault("1");
    x.setType(a);
    Comment const note = sample.factory.createComment();
    note.setBody("say \"<hi>\"");
    note.getAnnotatedElements().push_back(x);
    note.getAnnotatedElements().push_back(note);
    sample.top.getOwnedComments().push_back(note);
    OpaqueExpression const expression = sample.factory.createOpaqueExpression();
    expression.getBodies().push_back("a > 0");
    expression.getBodies().push_back("b");
    expression.getLanguages().push_back("OCL");
    sample.top.getPackagedElements().push_back(expression);

    EXPECT_EQ(textOf(sample.top), withIds(R"(
  [ Package name="p" #
    [ packagedElement name="A" isAbstract="false" #
      [ ownedAttribute name="x" isReadOnly="false" default="1" isComposite="false" isDerived="false" isDerivedUnion="false" isID="false" # isOrdered="false" isUnique="true" lower="1" upper="1" class="A:Class" modelZEL=":MetaModel" type="A:Class"
      ] package="p:Package" modelZEL=":MetaModel"
    ]
    [ packagedElement # body="a > 0 {composite}" body="b {composite}" language="OCL {composite}" modelZEL=":MetaModel"
    ]
    [ ownedComment body="say "<hi>"" # annotatedElement="x:Property" annotatedElement=":Comment" modelZEL=":MetaModel"
    ] modelZEL=":MetaModel"
  ])",
                                          {sample.top, a, x, expression, note}));
}

TEST(TextWriter, OfAModelTheObjectsWithoutContainerAreLeftOut) {
    TestModel const sample("p");
    sample.model.setName("m");
    static_cast<void>(sample.factory.createComment());
    std::string const text = textOf(sample.model);
    EXPECT_THAT(text, testing::StartsWith("\n  [ MetaModel name=\"m\""));
    EXPECT_THAT(text, testing::HasSubstr("\n    [ topPackage name=\"p\""));
    EXPECT_THAT(text, testing::HasSubstr("\n    [ factory"));
    EXPECT_THAT(text, testing::EndsWith("\n  ]"));
    EXPECT_THAT(text, testing::Not(testing::AnyOf(testing::HasSubstr("Comment"), testing::HasSubstr("unparented"))));
}

TEST(TextWriter, IndentationEndsAtAThousandLevels) {
    TestModel const sample;
    sample.nestedPackage(1010);
    std::string const text = textOf(sample.top);
    EXPECT_THAT(text, testing::HasSubstr('\n' + std::string(2000, ' ') + "[ packagedElement"));
    EXPECT_THAT(text, testing::Not(testing::HasSubstr(std::string(2001, ' '))));
    EXPECT_EQ(std::count(text.begin(), text.end(), ']'), 1011);
}

} // namespace
} // namespace ZEL::tests
