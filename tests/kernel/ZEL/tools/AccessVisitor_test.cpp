#include "kernel/ZEL/tools/TestModel.h"

namespace ZEL::tests {
namespace {

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

// Visitors that only read are tested by the walk over a tree.
TEST(AccessVisitor, AnObjectIsPassedOnByItsKindAndTheAnswerComesBack) {
    TestModel const sample;
    Comment const gone = sample.factory.createComment();
    gone.destroy();
    std::pair<Object, std::string> const cases[] = {
        {sample.model, "model"}, // a class object, too, and a class
        {sample.top, "class object"},
        {sample.factory, "class object"},
        {Object(String("a")), "value"},
        {Object(), ""},
        {gone, ""},
    };
    for (auto const & [object, kind] : cases) {
        for (bool const answer : {true, false}) {
            KindOf visitor;
            visitor.answer = answer;
            EXPECT_EQ(visitor.visitObject(object), answer && !kind.empty());
            EXPECT_EQ(visitor.kind, kind);
        }
    }
}

} // namespace
} // namespace ZEL::tests
