#include "reader/ReaderTest.h"

#include <ZEL/metamodel/Remainder.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/writer/XmiWriter.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace ZEL::tests {
namespace {

using testing::ElementsAre;

/// What a reader needs to keep what it does not understand.
struct Keeping : Serializer::Transformer {
    Keeping() { setKeepsRemainder(true); }
};

/// The remainder in lines: "colour=red", "superClass->x", "<note/>".
std::vector<std::string> linesOf(Remainder const & remainder) {
    std::vector<std::string> lines;
    auto const beside = [](Remainder::Place place) { return place == Remainder::Place::Beside ? "beside " : ""; };
    for (auto const & attribute : remainder.attributes) {
        lines.push_back(beside(attribute.place) + attribute.prefix + (attribute.prefix.empty() ? "" : ":") +
                        attribute.name + "=" + attribute.value);
    }
    for (auto const & link : remainder.links) {
        lines.push_back(link.property + "->" + link.target + (link.typeName.empty() ? "" : " " + link.typeName));
    }
    for (auto const & kept : remainder.elements) {
        lines.push_back(beside(kept.place) + kept.xml);
    }
    return lines;
}

struct RemainderOfAFile : ReaderTest {
    RemainderOfAFile() {
        settings.setSkipUnreadableExternalFiles(true);
        reader = XmiReader(settings);
    }
    MetaModel readKeeping(std::string const & text) {
        reader.addTransformer(std::make_shared<Keeping>());
        return read(text);
    }
    /// The file that is written of the model, without what depends on its name.
    std::string written(Model const & model, bool keepsIds = true) {
        Serializer::XmiWriterSettings writerSettings;
        writerSettings.setKeepFileIds(keepsIds);
        EXPECT_TRUE(Serializer::XmiWriter(writerSettings).write(folder.path("out.xmi"), model));
        std::ifstream stream(folder.path("out.xmi"));
        std::string const text{std::istreambuf_iterator<char>(stream), {}};
        return std::regex_replace(text, std::regex(" uri=\"file:[^\"]*\""), "");
    }
    /// Reads and writes the written file again, which must not change it.
    void expectStable(std::string const & text) {
        std::filesystem::copy_file(folder.path("out.xmi"), folder.path("again.xmi"),
                                   std::filesystem::copy_options::overwrite_existing);
        reader.addTransformer(std::make_shared<Keeping>());
        EXPECT_EQ(text, written(Model(reader.read(folder.path("again.xmi")))));
    }
};

TEST_F(RemainderOfAFile, IsKeptByOwnerAndPlaceAndWrittenBack) {
    MetaModel const model = readKeeping(document(
        "<tool:Settings xmlns:tool='urn:tool' depth='1'><line>a &lt; b &amp; c</line><!-- gone --> tail"
        "</tool:Settings>\n" +
        ReaderTest::model(
            element("Class", 5, "name='A' colour='red' isAbstract='maybe' superClass='nowhere'",
                    "<note>n</note><superClass xmi:type='ZEL:Class' href='gone.xmi#x'/>"
                    "<xmi:Extension extender='T'><t:x xmlns:t='urn:t' t:y='\"' xmi:type='t:z'/></xmi:Extension>") +
            element("Class", 6, "name='B' xmlns:p='urn:p' p:k='1' xmi:uuid='u'"))));
    Class const a = classNamed(model, "A");
    EXPECT_THAT(linesOf(remainderOf(a)),
                ElementsAre("colour=red", "isAbstract=maybe", "superClass->nowhere",
                            "superClass->file://" + folder.path("gone.xmi") + "#x Class", "<note>n</note>",
                            "<xmi:Extension xmlns:t=\"urn:t\" extender=\"T\"><t:x t:y=\"&quot;\" xmi:type=\"t:z\"/>"
                            "</xmi:Extension>"));
    EXPECT_THAT(linesOf(remainderOf(classNamed(model, "B"))), ElementsAre("p:k=1", "xmi:uuid=u"));
    EXPECT_THAT(linesOf(remainderOf(model)),
                ElementsAre("beside <tool:Settings xmlns:tool=\"urn:tool\" depth=\"1\"><line>a &lt; b &amp; c</line>"
                            " tail</tool:Settings>"));
    EXPECT_TRUE(remainderOf(model.getTopPackage()).empty());

    std::string const text = written(model);
    EXPECT_THAT(text,
                HasSubstr(filled(
                    R"(      <packagedElement xmi:id="@5" xmi:type="ZEL:Class" name="A" colour="red" isAbstract="maybe">
        <superClass xmi:idref="nowhere"/>
        <superClass xmi:type="ZEL:Class" href="gone.xmi#x"/>
        <note>n</note>
        <xmi:Extension xmlns:t="urn:t" extender="T"><t:x t:y="&quot;" xmi:type="t:z"/></xmi:Extension>
      </packagedElement>
      <packagedElement xmi:id="@6" xmi:type="ZEL:Class" name="B" p:k="1" xmi:uuid="u"/>
)")));
    EXPECT_THAT(text, HasSubstr(R"(  </ZEL:MetaModel>
  <tool:Settings xmlns:tool="urn:tool" depth="1"><line>a &lt; b &amp; c</line> tail</tool:Settings>
</xmi:XMI>)"));
    expectStable(text);
}

TEST_F(RemainderOfAFile, HoldsFurtherValuesOfWhatTakesOne) {
    MetaModel const model = readKeeping(document(ReaderTest::model(
        element("Class", 5, "name='A' visibility='private'",
                "<visibility>public</visibility><name>B</name>" +
                    attribute(7, "name='x' type='@5 @6'", "<default>1</default><default>2</default>")) +
        element("Class", 6, "name='C'"))));
    EXPECT_THAT(linesOf(remainderOf(classNamed(model, "A"))),
                ElementsAre("<visibility>public</visibility>", "<name>B</name>"));
    Property const x = classNamed(model, "A").getOwnedAttributeByName(String("x"));
    EXPECT_EQ(named(model, "A"), x.getType());
    EXPECT_EQ("1", x.getDefault().str());
    EXPECT_THAT(linesOf(remainderOf(x)), ElementsAre(filled("type->@6"), "<default>2</default>"));
    std::string const text = written(model);
    expectStable(text);
}

TEST_F(RemainderOfAFile, LeadsToItsLinkOnceTheFileIsThere) {
    std::string const text = document(
        ReaderTest::model(element("Class", 5, "name='A'", "<superClass xmi:type='ZEL:Class' href='other.xmi#@@5'/>")));
    ASSERT_FALSE(written(readKeeping(text)).empty());
    static_cast<void>(file("other.xmi", document(ReaderTest::model("<packagedElement xmi:type='ZEL:Class' "
                                                                   "xmi:id='@@5' name='Other'/>",
                                                                   kOther))));
    reader.addTransformer(std::make_shared<Keeping>());
    MetaModel const model(reader.read(folder.path("out.xmi")));
    EXPECT_THAT(namesOf(classNamed(model, "A").getSuperClasses()), ElementsAre("Other"));
    EXPECT_TRUE(remainderOf(classNamed(model, "A")).empty());
}

TEST_F(RemainderOfAFile, StaysInTheLinkAsLongAsThatHasAnElement) {
    static_cast<void>(
        file("other.xmi", document(ReaderTest::model("<packagedElement xmi:type='ZEL:Class' xmi:id='@@5' "
                                                     "name='Other'/><packagedElement xmi:type='ZEL:Class' "
                                                     "xmi:id='@@6' name='Another'/>",
                                                     kOther))));
    MetaModel const model = readKeeping(document(ReaderTest::model(element(
        "Class", 5, "name='A'",
        attribute(6, "name='x'", "<type xmi:type='ZEL:Class' href='other.xmi#@@6'><note>6</note></type>") +
            attribute(7, "name='y'",
                      "<type xmi:type='ZEL:Class' href='other.xmi#@@5'><note>5</note><note>more</note></type>")))));
    std::string const text = written(model);
    EXPECT_THAT(text, HasSubstr(filled(R"(#@@6">
            <note>6</note>
          </type>)")));
    EXPECT_THAT(text, HasSubstr(filled(R"(#@@5">
            <note>5</note><note>more</note>
          </type>)")));
    // What is said of a link outlives it.
    model.beginTransaction();
    classNamed(model, "A").getOwnedAttributeByName(String("x")).removeType();
    model.commitTransaction();
    EXPECT_THAT(written(model),
                HasSubstr("name=\"x\" isID=\"false\">\n          <note>6</note>\n        </ownedAttribute>"));
    model.undo();
    EXPECT_EQ(written(model), text);
    expectStable(text);
}

TEST_F(RemainderOfAFile, NamesObjectsAsTheFileDoes) {
    std::string const text = written(readKeeping(document(
        "<ZEL:MetaModel xmi:id='m1' name='m'><topPackage xmi:type='ZEL:Package' xmi:id='p1' name='top'>"
        "<packagedElement xmi:type='ZEL:Class' xmi:id='c1' name='A' superClass='c2'/>"
        "<packagedElement xmi:type='ZEL:Class' xmi:id='c2' name='B'/><packagedElement xmi:type='ZEL:Class' name='C'/>"
        "</topPackage><diagram><shape of='c1'/></diagram></ZEL:MetaModel>")));
    EXPECT_THAT(text,
                HasSubstr("<packagedElement xmi:id=\"c1\" xmi:type=\"ZEL:Class\" name=\"A\" superClass=\"c2\"/>"));
    EXPECT_THAT(text, HasSubstr("<diagram><shape of=\"c1\"/></diagram>"));
    expectStable(text);
    EXPECT_THAT(written(Model(reader.read(folder.path("out.xmi"))), false), testing::Not(HasSubstr("xmi:id=\"c1\"")))
        << "a reader that keeps nothing has the ids of this system written";
}

TEST_F(RemainderOfAFile, GivesWayToWhatAProgramSets) {
    MetaModel const model =
        readKeeping(document(ReaderTest::model(element("Class", 5, "name='A' isAbstract='maybe' isAbstrac='x'"))));
    model.beginTransaction();
    classNamed(model, "A").setIsAbstract(Boolean(true));
    model.commitTransaction();
    EXPECT_THAT(written(model), HasSubstr("name=\"A\" isAbstract=\"true\" isAbstrac=\"x\"/>"));
}

TEST_F(RemainderOfAFile, OfAModelThatIsMergedIntoIsThatOfTheFile) {
    std::string const before =
        element("Class", 5, "name='A' colour='red' size='1'") + element("Class", 6, "name='B' q='1'");
    MetaModel const model = readKeeping(document(ReaderTest::model(before)));
    auto merger = std::make_unique<Merger>(Model(model));
    reader.setMerger(merger.release());
    reader.addTransformer(std::make_shared<Keeping>());
    static_cast<void>(read(
        document(ReaderTest::model(element("Class", 5, "name='A' colour='blue'") + element("Class", 6, "name='B'")))));
    EXPECT_THAT(linesOf(remainderOf(classNamed(model, "A"))), ElementsAre("colour=blue"));
    EXPECT_TRUE(remainderOf(classNamed(model, "B")).empty());
    model.undo();
    EXPECT_THAT(linesOf(remainderOf(classNamed(model, "A"))), ElementsAre("colour=red", "size=1"));
    EXPECT_THAT(linesOf(remainderOf(classNamed(model, "B"))), ElementsAre("q=1"));
}

TEST_F(RemainderOfAFile, IsLostToAReaderThatIsNotAskedToKeepIt) {
    MetaModel const model = read(document(ReaderTest::model(element("Class", 5, "name='A' colour='red'", "<note/>"))));
    EXPECT_TRUE(remainderOf(classNamed(model, "A")).empty());
}

TEST_F(RemainderOfAFile, HasElementsAtTheTopThatAModelHasNoPlaceFor) {
    MetaModel const model =
        readKeeping(document("<ZEL:Package xmi:id='@2' name='P'/>\n<other/>\n<ZEL:Comment xmi:id='@3' body='c'/>\n"));
    ASSERT_TRUE(model.isValid());
    EXPECT_THAT(linesOf(remainderOf(model)), ElementsAre("beside <other/>"));
}

// --- as a part of an object's state ------------------------------------------------------------------------------------

struct RemainderOfAnObject : ModelFixture {
    static Remainder coloured(std::string const & colour) {
        Remainder made;
        made.attributes.push_back({"", "", "colour", colour});
        return made;
    }
    static std::string colourOf(ImmutableClassObject const & object) {
        Remainder const & found = remainderOf(object);
        return found.empty() ? "" : found.attributes.front().value;
    }

    Class const object = make<Class>();
};

TEST_F(RemainderOfAnObject, ChangesInTransactionsAlone) {
    EXPECT_THROW(setRemainder(object, coloured("red")), Exception);
    change([&] { setRemainder(object, coloured("red")); });
    model.beginTransaction();
    setRemainder(object, coloured("blue"));
    model.cancelTransaction();
    EXPECT_EQ("red", colourOf(object));
    change([&] { setRemainder(object, {}); });
    EXPECT_EQ("", colourOf(object));
    model.undo();
    EXPECT_EQ("red", colourOf(object));
    model.undo();
    EXPECT_EQ("", colourOf(object));
    model.redo();
    EXPECT_EQ("red", colourOf(object));
}

TEST_F(RemainderOfAnObject, BelongsToAVariantOfTheState) {
    change([&] { setRemainder(object, coloured("red")); });
    MetaModel const draft = model.createDeviantWithName("draft");
    Class const drafted = object.asDeviant(draft);
    EXPECT_EQ("red", colourOf(drafted));
    draft.beginTransaction();
    setRemainder(drafted, coloured("blue"));
    draft.commitTransaction();
    EXPECT_EQ("red", colourOf(object));
    EXPECT_EQ("blue", colourOf(drafted));
}

TEST_F(RemainderOfAnObject, IsCopiedWithTheObject) {
    Class copy;
    change([&] {
        setRemainder(object, coloured("red"));
        copy = Class(object.clone(model));
    });
    EXPECT_EQ("red", colourOf(copy));
    change([&] { setRemainder(copy, {}); });
    EXPECT_EQ("red", colourOf(object));
}

} // namespace
} // namespace ZEL::tests
