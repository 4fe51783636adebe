#include "kernel/ZEL/serializer/reader/ReaderTest.h"
#include "kernel/ZEL/tools/TestModel.h"

#include <ZEL/tools/RandomModelGenerator.h>

#include <sys/resource.h>

#include <csignal>
#include <regex>

namespace ZEL::tests {
namespace {

using Serializer::VisitableContext;
using Serializer::XmiWriter;
using Serializer::XmiWriterSettings;
using testing::Not;

/// A model of the built-in metamodel in an open transaction, with a package "p" (id 2) at its top, and a folder to
/// write to. In texts, "@1" stands for the prefixed uuid and "@2" for the model's URI.
struct XmiWriterTest : testing::Test {
    static constexpr char kUuid[] = "5376c05e-df72-49a6-85e0-5388c3fca417";

    XmiWriterTest() { model.setUuidBase(kUuid); }

    [[nodiscard]] std::string filled(std::string const & text) const {
        std::string const withIds = std::regex_replace(text, std::regex("@1"), std::string("_zel_") + kUuid);
        return std::regex_replace(withIds, std::regex("@2"), "file://" + path);
    }
    /// The text of the file to which the model is written.
    std::string written() {
        EXPECT_TRUE(writer.write(path, model));
        return folder.content("m.xmi");
    }

    /// A whole file: what stands in it, and the next id; 0 for none, as it has no head then.
    [[nodiscard]] std::string envelope(int nextId, std::string const & content) const {
        std::string const head =
            R"(  <xmi:Extension extender="The Quillon Inc." persistentIds="true" nextIdValue="@1_)" +
            std::to_string(nextId) + "\"/>\n";
        return filled(R"(<?xml version="1.0" encoding="iso8859-1"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:ZEL="http://schema.omg.org/spec/MOF/2.0">
)" + (nextId == 0 ? "" : head) +
                      content + "</xmi:XMI>\n");
    }
    /// A whole file of the model: what stands in its package.
    [[nodiscard]] std::string file(int nextId, std::string const & content = "") const {
        return envelope(nextId, R"(  <ZEL:MetaModel xmi:id="@1" uri="@2">
    <topPackage xmi:id="@1_2" xmi:type="ZEL:Package" name="p")" +
                                    (content.empty() ? "/>\n" : ">\n" + content + "    </topPackage>\n") +
                                    "  </ZEL:MetaModel>\n");
    }

    Class addClass(char const * name) { return sample.classIn(package, name); }
    Comment addComment(char const * body) {
        Comment const added = factory.createComment();
        added.setBody(body);
        package.getOwnedComments().push_back(added);
        return added;
    }

    TemporaryFolder folder;
    std::string const path = folder.path("m.xmi");
    TestModel const sample{"p"};
    MetaModel const model = sample.model;
    Factory const factory = sample.factory;
    Package const package = sample.top;
    std::shared_ptr<Rules> const rules = std::make_shared<Rules>();
    XmiWriter writer;
};

TEST_F(XmiWriterTest, ModelWithOnePackageAndWithNone) {
    EXPECT_EQ(written(), file(3));
    EXPECT_EQ(model.getUri(), "file://" + path);
    EXPECT_FALSE(std::filesystem::exists(folder.path("m.xmi~")));
    package.destroy();
    EXPECT_EQ(written(), envelope(3, R"(  <ZEL:MetaModel xmi:id="@1" uri="@2"/>
)"));
}

TEST_F(XmiWriterTest, ValuesEqualToTheirDefaultsAreLeftOutAndNameGoesFirst) {
    Class const c = addClass("C");
    c.setIsAbstract(true);
    Class const d = addClass("D");
    d.setIsAbstract(false);
    Property const a = sample.attribute(c, "a");
    a.setLower(0);
    a.setUpper(UnlimitedNatural(UnlimitedNatural::GetUnlimitedValue()));
    a.setIsOrdered(true);
    a.setDefault("x");
    Property const b = sample.attribute(c, "b");
    b.setLower(1);
    b.setUpper(UnlimitedNatural(1U));
    b.setIsUnique(true);
    b.setIsID(true);
    EXPECT_EQ(written(),
              file(7, R"(      <packagedElement xmi:id="@1_3" xmi:type="ZEL:Class" name="C" isAbstract="true">
        <ownedAttribute xmi:id="@1_5" xmi:type="ZEL:Property" name="a" default="x" isID="false" isOrdered="true" lower="0" upper="*"/>
        <ownedAttribute xmi:id="@1_6" xmi:type="ZEL:Property" name="b" isID="true"/>
      </packagedElement>
      <packagedElement xmi:id="@1_4" xmi:type="ZEL:Class" name="D"/>
)"));
}

TEST_F(XmiWriterTest, LinksWithinTheModelAreListsOfIdsLastPropertyFirst) {
    Class const c = addClass("C");
    Class const d = addClass("D");
    Class const e = addClass("E");
    d.getSuperClasses().push_back(c);
    d.getSuperClasses().push_back(e);
    Property const a = sample.attribute(c, "a");
    Property const b = sample.attribute(d, "b");
    b.setType(c);
    b.getSubsettedProperties().push_back(a);
    b.getRedefinedProperties().push_back(a);
    EXPECT_EQ(written(), file(8, R"(      <packagedElement xmi:id="@1_3" xmi:type="ZEL:Class" name="C" subClass="@1_4">
        <ownedAttribute xmi:id="@1_6" xmi:type="ZEL:Property" name="a" isID="false"/>
      </packagedElement>
      <packagedElement xmi:id="@1_4" xmi:type="ZEL:Class" name="D" superClass="@1_3 @1_5">
        <ownedAttribute xmi:id="@1_7" xmi:type="ZEL:Property" name="b" isID="false" type="@1_3" subsettedProperty="@1_6" redefinedProperty="@1_6"/>
      </packagedElement>
      <packagedElement xmi:id="@1_5" xmi:type="ZEL:Class" name="E" subClass="@1_4"/>
)"));
}

TEST_F(XmiWriterTest, OneLinkToAnotherModelMakesElementsOfAllLinksOfItsProperty) {
    Class const c = addClass("C");
    ImmutableDataType const integer = Integer::MetaDataType();
    std::string const href = "http://schema.omg.org/spec/MOF/2.0#_zel_" + integer.getSiid().str();
    Comment const comment = addComment("on");
    comment.getAnnotatedElements().push_back(c);
    comment.getAnnotatedElements().push_back(Element(DataType(integer.getImplementation(), integer.getDeviant())));
    EXPECT_EQ(written(), file(5, R"(      <packagedElement xmi:id="@1_3" xmi:type="ZEL:Class" name="C"/>
      <ownedComment xmi:id="@1_4" xmi:type="ZEL:Comment" body="on">
        <annotatedElement xmi:type="ZEL:PrimitiveType" href="@1_3"/>
        <annotatedElement xmi:type="ZEL:PrimitiveType" href=")" +
                                     href + R"("/>
      </ownedComment>
)"));
}

TEST_F(XmiWriterTest, LinkToAModelInANeighbouringFileIsRelative) {
    Model const other = FactoryRegistry::instance()->createModel(METAMODEL_URI);
    Transaction open(other.getDeviant());
    other.setUuidBase("5376c05e-0000-0000-0000-000000000000");
    Class const there = Factory(other.getFactory()).createClass();
    Comment const comment = addComment("on");
    comment.getAnnotatedElements().push_back(there);

    // A model without a URI cannot be linked to.
    EXPECT_THAT(written(), Not(HasSubstr("annotatedElement")));
    other.setUri("file://" + folder.path("other.xmi"));
    EXPECT_THAT(written(), HasSubstr(R"(<annotatedElement xmi:type="ZEL:Class" href="other.xmi#_zel_)"
                                     R"(5376c05e-0000-0000-0000-000000000000_2"/>)"));
    there.destroy();
    open.commit();
}

TEST_F(XmiWriterTest, LinkBetweenWhatHasNoFileIsWhole) {
    model.setUri("http://schema.omg.org/spec/MOF/other");
    ImmutableDataType const text = String::MetaDataType();
    sample.attribute(addClass("C"), "a").setType(DataType(text.getImplementation(), text.getDeviant()));
    ASSERT_TRUE(writer.writeObject(path, model));
    EXPECT_THAT(folder.content("m.xmi"), HasSubstr("<type xmi:type=\"ZEL:PrimitiveType\" "
                                                   "href=\"http://schema.omg.org/spec/MOF/2.0#_zel_"));
    XmiReader reader;
    MetaModel const read(reader.read(path));
    EXPECT_THAT(linesOf(reader.report()), testing::IsEmpty());
    EXPECT_EQ(Class(read.getTopPackage().getPackagedElements().at(0)).getOwnedAttributes().at(0).getType(), text);
}

TEST_F(XmiWriterTest, LinkIntoAFileOfOtherIdsKeepsThoseUntilThatModelIsWritten) {
    std::string const xmi = "<xmi:XMI xmi:version='2.1' xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' "
                            "xmlns:ZEL='http://schema.omg.org/spec/MOF/2.0'><ZEL:MetaModel xmi:id='";
    static_cast<void>(folder.file("other.xmi", xmi + "M'><topPackage xmi:type='ZEL:Package' xmi:id='P%20\xC3\xA9'>"
                                                     "<packagedElement xmi:type='ZEL:Class' xmi:id='E1' name='D'/>"
                                                     "</topPackage></ZEL:MetaModel></xmi:XMI>"));
    std::string const in = folder.file(
        "in.xmi", xmi + "I'><topPackage xmi:type='ZEL:Package' xmi:id='Q'><ownedComment xmi:type='ZEL:Comment'>"
                        "<annotatedElement xmi:type='ZEL:Class' href='other.xmi#E1'/>"
                        "<annotatedElement xmi:type='ZEL:Package' href='other.xmi#P%20\xC3\xA9'/>"
                        "</ownedComment></topPackage></ZEL:MetaModel></xmi:XMI>");
    XmiReader reader;
    MetaModel const read(reader.read(in));
    ASSERT_EQ(reader.referredModelCount(), 1);
    Model const other(reader.getReferredModel(0));
    XmiWriterSettings settings;
    auto const hrefs = [&] {
        std::string const target = folder.path("out.xmi");
        EXPECT_TRUE(XmiWriter(settings).write(target, read));
        XmiReader again;
        EXPECT_EQ(Comment(MetaModel(again.read(target)).getTopPackage().getOwnedComments().at(0))
                      .getAnnotatedElements()
                      .size(),
                  settings.getKeepFileIds() ? 2 : 0);
        std::string const text =
            std::regex_replace(folder.content("out.xmi"), std::regex(other.getUuidBase().str()), "u");
        std::vector<std::string> found;
        std::regex const href("href=\"([^\"]*)\"");
        for (std::sregex_iterator at(text.begin(), text.end(), href); at != std::sregex_iterator(); ++at) {
            found.push_back((*at)[1]);
        }
        return found;
    };
    EXPECT_THAT(hrefs(), ElementsAre("other.xmi#_zel_u_3", "other.xmi#_zel_u_2"));
    settings.setKeepFileIds(true);
    EXPECT_THAT(hrefs(), ElementsAre("other.xmi#E1", "other.xmi#P%20\xE9"));
    ASSERT_TRUE(XmiWriter().write(ImmutableModel(other)));
    EXPECT_THAT(hrefs(), ElementsAre("other.xmi#_zel_u_3", "other.xmi#_zel_u_2"));
}

TEST_F(XmiWriterTest, AllValuesOfAMultiValuedPropertyStandInOneElement) {
    Constraint const rule = factory.createConstraint();
    package.getOwnedRules().push_back(rule);
    OpaqueExpression const expression = factory.createOpaqueExpression();
    rule.setSpecification(expression);
    expression.getBodies().push_back("a < b");
    expression.getBodies().push_back("& c");
    LogCapture log;
    EXPECT_EQ(written(), file(5, R"(      <ownedRule xmi:id="@1_3" xmi:type="ZEL:Constraint">
        <specification xmi:id="@1_4" xmi:type="ZEL:OpaqueExpression">
          <body>a &lt; b&amp; c</body>
        </specification>
      </ownedRule>
)"));
    EXPECT_THAT(log.texts(),
                ElementsAre("Objects whose values of property OpaqueExpression.body stand in one element, to be "
                            "read back as one: 1"));
    log.clear();

    XmiWriterSettings settings;
    settings.setElementPerValue(true);
    writer = XmiWriter(settings);
    EXPECT_THAT(written(), HasSubstr(R"(
          <body>a &lt; b</body>
          <body>&amp; c</body>
        </specification>)"));
    EXPECT_TRUE(compare(model, XmiReader().read(path)));
    EXPECT_THAT(log.texts(), testing::IsEmpty());
}

TEST_F(XmiWriterTest, LinkToADestroyedObjectLeavesOutThePropertyAndIsLoggedOnce) {
    Comment const comment = addComment("on");
    Class const c = addClass("C");
    Class const d = addClass("D");
    comment.getAnnotatedElements().push_back(c);
    comment.getAnnotatedElements().push_back(d);
    d.destroy();
    LogCapture const log;
    writer.addTransformer(rules);
    EXPECT_THAT(written(), HasSubstr(R"(xmi:type="ZEL:Comment" body="on"/>)"));
    auto const warning = testing::AllOf(HasSubstr("annotatedElement"), HasSubstr(filled("@1_3")));
    EXPECT_THAT(log.texts(LogLevel::info), ElementsAre("Serializing XMI output to " + path, warning,
                                                       "Finished serializing XMI output to " + path));
    EXPECT_THAT(log.texts(), ElementsAre(warning));
    EXPECT_THAT(log.texts(LogLevel::error), testing::IsEmpty());
}

TEST_F(XmiWriterTest, OtherObjectThanAModelIsWrittenUnderItsOwnName) {
    addClass("C");
    ASSERT_TRUE(writer.writeObject(folder.path("o.xmi"), package));
    EXPECT_EQ(folder.content("o.xmi"), envelope(4, R"(  <ZEL:Package xmi:id="@1_2" name="p">
    <packagedElement xmi:id="@1_3" xmi:type="ZEL:Class" name="C"/>
  </ZEL:Package>
)"));
    EXPECT_RAISES("Internal Error: Invalid dispatch to base during XMI serialization!",
                  writer.writeObject(folder.path("v.xmi"), Object(Integer(3))));
}

TEST_F(XmiWriterTest, ExtensionPropertyStandsInAnExtensionBlock) {
    addComment("plain");
    // The class's own copy of the property, which all packages share.
    ImmutableClass const metaClass = package.getMetaClass();
    ImmutableProperty const read = metaClass.getProperty("ownedComment");
    Property const property(read.getImplementation(), read.getDeviant());
    bool const assertions = DeviantAssertions::enableAssertions(false);
    property.setPersistence(PersistenceKind::Extension);
    std::string const text = written();
    property.removePersistence();
    DeviantAssertions::enableAssertions(assertions);
    EXPECT_EQ(text, file(4, R"(      <xmi:Extension extender="The Quillon Inc."/>
      <ownedComment xmi:id="@1_3" xmi:type="ZEL:Comment" body="plain"/>
)"));
}

TEST_F(XmiWriterTest, TransformersRewriteAndLeaveOutForOneRun) {
    addClass("C");
    addComment("note");
    rules->addTransform(role("body"), [](Context const & context) {
        Context changed = context;
        changed.setAttribute(context.getFirstValue() + "!");
        return ContextSequence(changed);
    });
    rules->addTransform(role("packagedElement"), [rules = rules.get()](Context const & context) {
        return ContextSequence(rules->isSerializePhase() ? skipped(context) : context);
    });
    writer.addTransformer(rules);
    EXPECT_EQ(written(), file(5, R"(      <ownedComment xmi:id="@1_4" xmi:type="ZEL:Comment" body="note!"/>
)"));
    EXPECT_THAT(written(), testing::AllOf(HasSubstr("ZEL:Class"), HasSubstr(R"(body="note")")));
}

TEST_F(XmiWriterTest, TransformerWithoutRulesChangesNothing) {
    TestModel const other{"q"};
    Class const destroyed = addClass("D");
    Comment const comment = addComment("on");
    comment.getAnnotatedElements().push_back(other.top);
    comment.getAnnotatedElements().push_back(package);
    addComment("dead").getAnnotatedElements().push_back(destroyed);
    destroyed.destroy();
    for (unsigned int seed = 1; seed <= 10; ++seed) {
        createRandomModel(package, 4, 4, 500, seed);
        std::string const text = written();
        writer.addTransformer(rules);
        EXPECT_EQ(written(), text) << "seed " << seed;
    }
}

TEST_F(XmiWriterTest, SiblingElementsOfOneObjectStayBalanced) {
    addComment("note");
    rules->addTransform(role("topPackage"), [](Context const & context) {
        Context sibling = context;
        sibling.setRole("", "sibling");
        sibling.setElement("s");
        return both(sibling, context);
    });
    writer.addTransformer(rules);
    EXPECT_THAT(written(), HasSubstr(filled(R"(
    <sibling xmi:id="s" xmi:type="ZEL:Package"></sibling>
    <topPackage xmi:id="@1_2" xmi:type="ZEL:Package" name="p">
      <ownedComment xmi:id="@1_3" xmi:type="ZEL:Comment" body="note"/>
    </topPackage>
  </ZEL:MetaModel>
</xmi:XMI>
)")));
}

TEST_F(XmiWriterTest, VisitableGeneratorDecidesWhatIsDescendedInto) {
    addClass("C");
    addComment("note");
    std::string calls;
    writer.setVisitableGenerator([&](ImmutableClassObject const & object, VisitableContext & visitable) {
        calls += visitable.context.getRoleName() + "." + visitable.property.getName().str() + " ";
        return visitable.property.getName() == "packagedElement"
                   ? ImmutableSequence<ImmutableClassObject>()
                   : ImmutableSequence<ImmutableClassObject>(object.get(visitable.property));
    });
    std::string const withoutClass = file(5, R"(      <ownedComment xmi:id="@1_4" xmi:type="ZEL:Comment" body="note"/>
)");
    EXPECT_EQ(written(), withoutClass);
    EXPECT_THAT(calls, HasSubstr("topPackage.packagedElement "));
    EXPECT_THAT(calls, HasSubstr("topPackage.appliedStereotypeInstance "));
    // Unlike Transformers it stays, and an empty one is the default again.
    EXPECT_EQ(written(), withoutClass);
    writer.setVisitableGenerator({});
    EXPECT_THAT(written(), HasSubstr("ZEL:Class"));
}

TEST_F(XmiWriterTest, GeneratorsAroundAnObjectAddToItsPlace) {
    Class const loose = factory.createClass();
    loose.setName("Loose");
    auto const looseOnes = [&](ImmutableClassObject const & object, VisitableContext & visitable) {
        EXPECT_EQ(visitable.property.isValid(), !(object == model));
        return object == package ? ImmutableSequence<ImmutableClassObject>(model.getUnparented())
                                 : ImmutableSequence<ImmutableClassObject>();
    };
    EXPECT_THAT(written(), Not(HasSubstr("Loose")));
    std::string const more = filled(R"(    <topPackage xmi:id="@1_3" xmi:type="ZEL:Class" name="Loose"/>
)");
    std::string const own = filled(R"(    <topPackage xmi:id="@1_2" xmi:type="ZEL:Package" name="p"/>
)");
    writer.setPreVisitableGenerator(looseOnes);
    EXPECT_THAT(written(), HasSubstr(more + own + "  </ZEL:MetaModel>"));
    writer = XmiWriter();
    writer.setPostVisitableGenerator(looseOnes);
    EXPECT_THAT(written(), HasSubstr(own + more + "  </ZEL:MetaModel>"));
    loose.destroy();
}

TEST_F(XmiWriterTest, ContextSequenceCreatorTakesThePlaceOfTheWholeFile) {
    writer.setContextSequenceCreator([](ImmutableClassObject const & object, VisitableContext &) {
        Context context = role("object");
        context.setElement(object.getSiid().str());
        return ContextSequence(context);
    });
    EXPECT_THAT(written(), testing::AllOf(HasSubstr("<object "), HasSubstr(std::string("id=\"") + kUuid + "\"")));
}

TEST_F(XmiWriterTest, InvalidInputRaisesBeforeAnyFileIsTouched) {
    EXPECT_RAISES("Attempt to serialize invalid model!", writer.write(path, Model()));
    EXPECT_RAISES("Attempt to serialize invalid model!", writer.write(ImmutableModel()));
    EXPECT_RAISES("Attempt to serialize invalid object!", writer.writeObject(path, Object()));
    EXPECT_RAISES("Unable to create URI from output file ", writer.write("", model));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

TEST_F(XmiWriterTest, OfAFileThatCannotBeMadeReturnsFalse) {
    LogCapture const log;
    std::string const missing = folder.path("missing/m.xmi");
    EXPECT_FALSE(writer.write(missing, model));

    std::string const victim = folder.file("victim", "mine");
    std::filesystem::create_symlink(victim, path + "~");
    EXPECT_FALSE(writer.write(path, model));
    EXPECT_EQ(folder.content("victim"), "mine") << "the temporary file is never a link";
    EXPECT_FALSE(std::filesystem::exists(path));
    std::filesystem::remove(path + "~");

    std::filesystem::create_directory(path);
    EXPECT_FALSE(writer.write(path, model));
    EXPECT_THAT(folder.content("m.xmi~"), testing::EndsWith("</xmi:XMI>\n"));
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_THAT(log.texts(LogLevel::error), ElementsAre("Unable to open file " + missing + "~ for writing",
                                                        "Unable to open file " + path + "~ for writing",
                                                        "Unable to open file " + path + "~ for writing"));
}

TEST_F(XmiWriterTest, TextThatXmlCannotHoldRaisesAndLeavesTheEarlierFile) {
    static_cast<void>(folder.file("m.xmi", "earlier"));
    addComment("bell \x07");
    EXPECT_THAT(raisedText([&] { writer.write(path, model); }), testing::AllOf(HasSubstr("body"), HasSubstr("U+0007")));
    EXPECT_EQ(folder.content("m.xmi"), "earlier");
}

TEST_F(XmiWriterTest, EarlierFileIsReplacedAndALinkIsWrittenThrough) {
    std::string const goal = folder.file("goal.xmi", std::string(100000, 'x'));
    std::filesystem::create_symlink(goal, path);
    EXPECT_EQ(written(), file(3));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(folder.content("goal.xmi"), file(3));
    EXPECT_FALSE(std::filesystem::exists(folder.path("m.xmi~")));
}

TEST_F(XmiWriterTest, FullDiskLeavesTheEarlierFile) {
    static_cast<void>(folder.file("m.xmi", "earlier"));
    addComment(std::string(200000, 'x').c_str());
    auto const former = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit const small{100000, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    LogCapture const log;
    bool const result = writer.write(path, model);
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, former);
    EXPECT_FALSE(result);
    EXPECT_THAT(log.texts(LogLevel::error), ElementsAre("Error in serializing to XMI file " + path));
    EXPECT_EQ(folder.content("m.xmi"), "earlier");
}

TEST_F(XmiWriterTest, UuidThatEndsLikeAnIdStaysWhole) {
    model.setUuidBase("lib_1");
    EXPECT_THAT(written(), HasSubstr("<topPackage xmi:id=\"_zel_lib_1_2\""));
}

TEST_F(XmiWriterTest, SettingsAndUriOfTheModelAreUsed) {
    XmiWriterSettings settings;
    settings.setXmiVersion("9.9");
    settings.setAutoFlush(true);
    writer = XmiWriter(settings);
    model.setUri("file://" + folder.path("own.xmi"));
    EXPECT_TRUE(writer.write(model));
    EXPECT_THAT(folder.content("own.xmi"), HasSubstr(R"(xmi:version="9.9")"));
    EXPECT_TRUE(XmiWriter().write(folder.path("own.xmi"), model));
    EXPECT_THAT(folder.content("own.xmi"), HasSubstr(R"(xmi:version="2.1")"));
}

TEST_F(XmiWriterTest, OtherDialectsHaveNoHeadAndLeaveAModelOfAnotherMetamodelAsItIs) {
    for (XmiFormat const format : {XmiFormat::MagicDraw, XmiFormat::Rhapsody}) {
        XmiWriterSettings settings;
        settings.setOutputFormat(format);
        writer = XmiWriter(settings);
        EXPECT_EQ(written(), file(0)) << format.toString();
    }
}

} // namespace
} // namespace ZEL::tests
