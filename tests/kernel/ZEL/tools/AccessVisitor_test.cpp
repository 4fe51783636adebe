#include "kernel/ZEL/tools/TestModel.h"
#include "support/ExpectRaises.h"

#include <ZEL/String.h>
#include <ZEL/ValueObject.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/ImmutableVisitorEmpty.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/metamodel/VisitorEmpty.h>
#include <ZEL/tools/AccessVisitor.h>
#include <ZEL/tools/ImmutableAccessVisitor.h>

#include <gtest/gtest.h>

#include <string>

namespace ZEL {
namespace {

using testsupport::TestModel;

struct KindOf : AccessVisitor {
    bool visitClassObject(ClassObject) override { return is("class object"); }
    bool visitValueObject(ValueObject) override { return is("value"); }
    bool visitStereotypeObject(StereotypeObject) override { return is("stereotype instance"); }
    bool visitModel(Model) override { return is("model"); }
    bool visitProperty(ClassObject, Property) override { return is("property"); }
    bool is(char const * name) {
        kind = name;
        return answer;
    }
    std::string kind;
    bool answer = true;
};

struct ImmutableKindOf : ImmutableAccessVisitor {
    bool visitClassObject(ImmutableClassObject const &) override { return is("class object"); }
    bool visitValueObject(ImmutableValueObject const &) override { return is("value"); }
    bool visitStereotypeObject(ImmutableStereotypeObject const &) override { return is("stereotype instance"); }
    bool visitModel(ImmutableModel const &) override { return is("model"); }
    bool visitProperty(ImmutableClassObject const &, ImmutableProperty const &) override { return is("property"); }
    bool is(char const * name) {
        kind = name;
        return answer;
    }
    std::string kind;
    bool answer = true;
};

TEST(AccessVisitor, AnObjectIsPassedOnByItsKindAndTheAnswerComesBack) {
    TestModel const sample;
    std::pair<Object, std::string> const cases[] = {
        {sample.model, "model"}, // a class object, too, and a class
        {sample.top, "class object"},
        {sample.factory, "class object"},
        {Object(String("a")), "value"},
    };
    for (auto const & [object, kind] : cases) {
        for (bool const answer : {true, false}) {
            KindOf visitor;
            visitor.answer = answer;
            EXPECT_EQ(visitor.visitObject(object), answer);
            EXPECT_EQ(visitor.kind, kind);
            ImmutableKindOf immutable;
            immutable.answer = answer;
            EXPECT_EQ(immutable.visitObject(object), answer);
            EXPECT_EQ(immutable.kind, kind);
        }
    }
}

TEST(AccessVisitor, AnInvalidObjectEndsAWalkThatWritesAndIsAnErrorOfOneThatReads) {
    TestModel const sample;
    Comment const gone = sample.factory.createComment();
    gone.destroy();
    for (Object const & object : {Object(), Object(gone)}) {
        KindOf visitor;
        EXPECT_FALSE(visitor.visitObject(object));
        EXPECT_EQ(visitor.kind, "");
        ImmutableKindOf immutable;
        EXPECT_RAISES("Attempt to traverse invalid object!", immutable.visitObject(object));
        EXPECT_EQ(immutable.kind, "");
    }
}

TEST(AccessVisitor, TheEmptyOnesGoOnWhateverTheyAreGiven) {
    TestModel const sample;
    AccessVisitorEmpty visitor;
    EXPECT_TRUE(visitor.visitObject(Object()) && visitor.visitClassObject(sample.top) &&
                visitor.visitValueObject(ValueObject()) && visitor.visitStereotypeObject(StereotypeObject()) &&
                visitor.visitModel(sample.model) && visitor.visitProperty(sample.top, Property()));
    ImmutableAccessVisitorEmpty immutable;
    EXPECT_TRUE(immutable.visitObject(ImmutableObject()) && immutable.visitClassObject(sample.top) &&
                immutable.visitValueObject(ImmutableValueObject()) &&
                immutable.visitStereotypeObject(ImmutableStereotypeObject()) && immutable.visitModel(sample.model) &&
                immutable.visitProperty(sample.top, ImmutableProperty()));
}

/// Visits comments in both ways, and of the other classes nothing.
struct CommentVisitor : VisitorEmpty {
    bool visitComment(Comment comment) override {
        comment.setBody("seen");
        return false;
    }
    bool visitComment(ImmutableComment comment) override { return comment.getBody() != "seen"; }
};

TEST(GeneratedVisitors, AnOverrideServesItsClassAndTheOthersKeepNothing) {
    TestModel const sample;
    Comment const comment = sample.factory.createComment();
    int const count = comment.getImplementation()->numRef();
    VisitorEmpty empty;
    ImmutableVisitorEmpty immutableEmpty;
    EXPECT_TRUE(empty.visitComment(comment) && empty.visitComment(ImmutableComment(comment)) &&
                immutableEmpty.visitComment(comment));
    EXPECT_EQ(comment.getImplementation()->numRef(), count);

    CommentVisitor visitor;
    Visitor & any = visitor;
    EXPECT_TRUE(any.visitComment(ImmutableComment(comment)));
    EXPECT_FALSE(any.visitComment(comment));
    EXPECT_FALSE(any.visitComment(ImmutableComment(comment)));
    EXPECT_TRUE(any.visitPackage(sample.top));
    EXPECT_EQ(comment.getBody(), "seen");
}

} // namespace
} // namespace ZEL
