#include "ReaderTest.h"

#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/reader/Links.h>
#include <ZEL/serializer/reader/MetaClassCache.h>
#include <ZEL/serializer/reader/ValueSetter.h>

namespace ZEL::tests {
namespace {

using Serializer::FileLinks;
using Serializer::Links;
using Serializer::MetaProperty;

/// An association "a" and properties "p" and "q" of one file, and a class "c" of another.
struct LinksTest : ModelFixture {
    LinksTest() {
        values.begin(merger, nullptr);
        open();
        a = enter<Association>(here, "a");
        p = enter<Property>(here, "p");
        q = enter<Property>(here, "q");
        c = enter<Class>(there, "c");
    }
    template <class T> T enter(FileLinks & file, char const * name) {
        T const object = make<T>();
        object.setName(name);
        EXPECT_TRUE(file.enter(ObjectId(name), object));
        return object;
    }
    void add(FileLinks & file, ClassObject const & object, std::string_view property, std::string const & target,
             bool isFurther = false) {
        MetaProperty const * const found = values.metaClasses().of(object).find(property);
        ASSERT_NE(nullptr, found) << property;
        file.add(object, *found, target, {}, isFurther);
    }
    [[nodiscard]] std::vector<std::string> ends() const { return namesOf(a.getMemberEnds()); }

    LogCapture log;
    Serializer::ReadReport report;
    Serializer::Merger merger;
    Serializer::ValueSetter values{report};
    Serializer::TransformerRegistry rules;
    Links links{rules, values};
    FileLinks & here = links.of("file:///here.xmi");
    FileLinks & there = links.of("file:///there.xmi");
    Association a;
    Property p;
    Property q;
    Class c;
};

TEST_F(LinksTest, LeadToObjectsOfThisFileOfAnotherOneAndOfAMetamodelInMemory) {
    add(here, p, "type", "file:///there.xmi#c");
    add(here, q, "type", "http://schema.omg.org/spec/MOF/2.0#" + ObjectId::of(Class::MetaClass()));
    add(here, p, "association", "a");
    links.resolve();
    EXPECT_EQ(c, p.getType());
    EXPECT_EQ(Class::MetaClass(), q.getType());
    EXPECT_EQ(a, p.getAssociation());
    EXPECT_THAT(linesOf(report), IsEmpty());
}

TEST_F(LinksTest, LeaveEachEndInTheOrderInWhichItsFileListsIt) {
    add(here, p, "association", "a");
    add(here, a, "memberEnd", "q");
    add(here, a, "memberEnd", "p");
    links.resolve();
    EXPECT_THAT(ends(), ElementsAre("q", "p"));
}

TEST_F(LinksTest, ThatCannotBeSetAreReportedAndTheOthersSet) {
    add(here, a, "memberEnd", "nothing");
    add(here, a, "memberEnd", "file:///nowhere.xmi#p");
    add(here, a, "memberEnd", "file:///there.xmi#c");
    add(here, a, "memberEnd", "p");
    add(here, p, "type", "file:///there.xmi#c");
    add(here, p, "type", "a", true);
    links.resolve();
    EXPECT_THAT(ends(), ElementsAre("p"));
    EXPECT_EQ(a, p.getType());
    EXPECT_THAT(linesOf(report), ElementsAre("rejected Association.memberEnd 1", "replaced Property.type 1",
                                             "unresolved Association.memberEnd 2"));
    EXPECT_EQ(4u, log.texts().size());
}

TEST_F(LinksTest, OfAFileThatIsGivenUpAreForgottenAndNoneLeadsIntoIt) {
    add(there, c, "superClass", "c");
    add(here, p, "type", "file:///there.xmi#c");
    there.forget();
    links.resolve();
    EXPECT_FALSE(p.hasType());
    EXPECT_THAT(linesOf(report), ElementsAre("unresolved Property.type 1"));
}

} // namespace
} // namespace ZEL::tests
