#include "ReaderTest.h"

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/Constraint.h>
#include <ZEL/metamodel/OpaqueExpression.h>
#include <ZEL/metamodel/PrimitiveType.h>
#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/Transformer.h>

#include <filesystem>

namespace ZEL::Serializer::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class Reading : public ReaderTest {};

// --- elements, values, ids ---------------------------------------------------------------------------------------------

TEST_F(Reading, GivesObjectsTheirValuesPlacesAndIds) {
    MetaModel const model = readModel(
        element("Class", 5, "name=\"A\" isAbstract=\"true\"",
                attribute(6, "name=\"a\" isID=\"false\" lower=\"0\" upper=\"*\" visibility=\"private\" type=\"" +
                                 id(5) + "\"")));
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ("m", model.getName().str());
    EXPECT_EQ(kUuid, model.getUuidBase().str());
    EXPECT_EQ("file://" + folder.path("in.xmi"), model.getUri().str());
    EXPECT_EQ(7, model.getNextIdValue());

    Class const a = classNamed(model, "A");
    EXPECT_TRUE(a.isAbstract());
    EXPECT_EQ(5, a.getId());
    EXPECT_EQ(std::string(kUuid) + "_5", a.getSiid().str());
    Property const property = a.getOwnedAttributeByName(String("a"));
    EXPECT_EQ(0, property.lowerBound());
    EXPECT_TRUE(property.getUpper().isUnlimited());
    EXPECT_EQ("private", property.getVisibility().toString().str());
    EXPECT_EQ(a, property.getType());
    EXPECT_EQ(a, property.getClass());

    EXPECT_THAT(log.texts(), IsEmpty());
    EXPECT_TRUE(reader.report().isEmpty());
    EXPECT_EQ(0, reader.referredModelCount());
}

TEST_F(Reading, LogsItsBeginAndItsEnd) {
    std::string const path = file("in.xmi", document(model("")));
    EXPECT_TRUE(reader.read(path).isValid());
    EXPECT_TRUE(log.has(LogLevel::info, "Processing XMI input from " + path));
    EXPECT_TRUE(log.has(LogLevel::info, "Finished processing XMI input " + path));
}

TEST_F(Reading, TakesTextOfElementsAsValues) {
    MetaModel const model = readModel(
        element("Constraint", 3, "name=\"c\"",
                "<specification xmi:type=\"ZEL:OpaqueExpression\" xmi:id=\"" + id(4) +
                    "\"><body>a &lt; <![CDATA[b]]></body><body>second</body><language>OCL</language></specification>") +
        element("Class", 5, "name=\"A\"",
                "<ownedComment xmi:type=\"ZEL:Comment\" xmi:id=\"" + id(6) +
                    "\"><body>line\nline</body></ownedComment>"));
    OpaqueExpression const expression(Constraint(named(model, "c")).getSpecification());
    ASSERT_EQ(2, expression.getBodies().size());
    EXPECT_EQ("a < b", expression.getBodies().at(0).str());
    EXPECT_EQ("second", expression.getBodies().at(1).str());
    EXPECT_EQ("OCL", expression.getLanguages().at(0).str());
    EXPECT_EQ("line\nline", classNamed(model, "A").getOwnedComments().at(0).getBody().str());
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(Reading, WarnsOfAnElementForAValueWithoutText) {
    MetaModel const model = readModel(element("Class", 5, "name=\"A\"", attribute(6, "name=\"a\"", "<default/>")));
    EXPECT_TRUE(model.isValid());
    EXPECT_THAT(log.texts(), ElementsAre("Read empty value for property default of object a"));
}

TEST_F(Reading, RestoresTheIdCounterFromTheHead) {
    std::string const head =
        "<xmi:Extension extender=\"The Quillon Inc.\" persistentIds=\"true\" nextIdValue=\"" + id(100) + "\"/>\n";
    EXPECT_EQ(100, read(document(head + model(""))).getNextIdValue());
    std::string const low = "<xmi:Extension extender=\"The Quillon Inc.\" nextIdValue=\"" + id(3) + "\"/>\n";
    EXPECT_EQ(51, read(document(low + model(element("Class", 50)))).getNextIdValue()) << "never below an id in use";
}

TEST_F(Reading, IgnoresAttributesThatBelongToTheFile) {
    MetaModel const model =
        read(document("<ZEL:MetaModel xmi:id=\"_zel_" + std::string(kUuid) +
                      "\" name=\"m\" uri=\"file:///where/it/was.xmi\"><topPackage xmi:type=\"ZEL:Package\" "
                      "xmi:id=\"" +
                      id(2) + "\" id=\"77\" name=\"top\" uri=\"urn:own\"/></ZEL:MetaModel>"));
    EXPECT_EQ("file://" + folder.path("in.xmi"), model.getUri().str());
    EXPECT_EQ(2, model.getTopPackage().getId());
    EXPECT_EQ("urn:own", model.getTopPackage().getUri().str()) << "that of a package is its own";
}

TEST_F(Reading, LogsAValueThatItsTypeDoesNotTake) {
    MetaModel const model =
        readModel(element("Class", 5, "name=\"A\" isAbstract=\"yes\"", attribute(6, "lower=\"x\"")));
    EXPECT_THAT(
        log.texts(),
        ElementsAre(
            "Unable to create property isAbstract on object A with value yes: Can't convert string 'yes' to bool",
            "Unable to create property lower on object [noname] with value x: Can't convert string 'x' to INT32_T"));
    EXPECT_FALSE(classNamed(model, "A").isAbstract());
    EXPECT_THAT(reader.report().rejectedValues(), ElementsAre(Pair("Class.isAbstract", 1), Pair("Property.lower", 1)));
}

TEST_F(Reading, CountsAttributesWithoutAProperty) {
    EXPECT_TRUE(
        readModel(element("Class", 5, "name=\"A\" colour=\"red\"") + element("Class", 6, "colour=\"blue\"")).isValid());
    EXPECT_THAT(reader.report().ignoredAttributes(), ElementsAre(Pair("Class.colour", 2)));
    EXPECT_THAT(log.texts(), IsEmpty());
}

// --- what is skipped ---------------------------------------------------------------------------------------------------

TEST_F(Reading, SkipsAnUnknownElementToItsOwnEnd) {
    MetaModel const model = readModel("<other><other><packagedElement xmi:type=\"ZEL:Class\" name=\"inside\"/></other>"
                                      "<packagedElement xmi:type=\"ZEL:Class\" name=\"still\"/></other>" +
                                      element("Class", 5, "name=\"A\""));
    EXPECT_THAT(names(model.getTopPackage().getPackagedElements()), ElementsAre("A"));
    EXPECT_THAT(reader.report().skippedElements(), ElementsAre(Pair("other", 1)));
}

TEST_F(Reading, SkipsElementsOfClassesThatCannotBeMade) {
    MetaModel const model = readModel(element("Classifier", 5, "name=\"abstract\"", "<name>inside</name>") +
                                      element("Nonsense", 6, "name=\"unknown\"") + element("Class", 7, "name=\"A\""));
    EXPECT_THAT(names(model.getTopPackage().getPackagedElements()), ElementsAre("A"));
    EXPECT_EQ("top", model.getTopPackage().getName().str()) << "attributes of a skipped element are not another's";
}

TEST_F(Reading, CountsWhatItSkipsByNameAndTypeAndOnce) {
    EXPECT_TRUE(readModel(element("Nonsense", 5, "name=\"a\"") + element("Nonsense", 6, "name=\"b\"") +
                          element("Comment", 7, "body=\"may not stand here\"") +
                          "<packagedElement xmlns:x=\"urn:x\" xmi:type=\"x:Class\"/>" +
                          element("Class", 8, "ownedAttribute=\"" + id(9) + "\"", attribute(9, "")))
                    .isValid());
    EXPECT_THAT(reader.report().skippedElements(), ElementsAre(Pair("packagedElement of type ZEL:Comment", 1),
                                                               Pair("packagedElement of type ZEL:Nonsense", 2),
                                                               Pair("packagedElement of type {urn:x}Class", 1)));
    EXPECT_THAT(reader.report().ignoredAttributes(), ElementsAre(Pair("Class.ownedAttribute", 1)));
    EXPECT_THAT(reader.report().rejectedValues(), IsEmpty());
}

TEST_F(Reading, LogsATypeThatCannotBeUnderstood) {
    MetaModel const model = readModel("<packagedElement xmi:type=\"Class\" name=\"a\"/>"
                                      "<packagedElement xmi:type=\"no:Class\" name=\"b\"/>");
    EXPECT_EQ(0, model.getTopPackage().getPackagedElements().size());
    EXPECT_THAT(log.texts(), ElementsAre("Invalid format for XMI type name Class",
                                         "Unable to create factory for {}packagedElement with type {}",
                                         "Namespace prefix no not present in namespace registry",
                                         "Unable to create factory for {}packagedElement with type {}"));
}

TEST_F(Reading, SkipsTopElementsOfUnknownMetamodels) {
    MetaModel const model = read(
        document("<x:Thing xmlns:x=\"urn:x\"><x:Thing/></x:Thing>\n" + ReaderTest::model("") + "<ZEL:Nonsense/>\n"));
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ("top", model.getTopPackage().getName().str());
    EXPECT_THAT(log.texts(), ElementsAre("Unable to create element {urn:x}Thing",
                                         "Unable to create element {http://schema.omg.org/spec/MOF/2.0}Nonsense"));
    EXPECT_THAT(reader.report().skippedElements(),
                ElementsAre(Pair("{http://schema.omg.org/spec/MOF/2.0}Nonsense", 1), Pair("{urn:x}Thing", 1)));
}

TEST_F(Reading, MakesAModelOfAnyTopElementOfAKnownMetamodelAndSaysSo) {
    MetaModel const model = read(document("<ZEL:Package xmi:id=\"p\" name=\"P\"/>"));
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ("P", model.getName().str());
    EXPECT_THAT(log.texts(), ElementsAre("Unable to create element {http://schema.omg.org/spec/MOF/2.0}Package"));
}

TEST_F(Reading, OfAnotherVersionGivesNoModelAndNoError) {
    std::string text = document(model(""));
    text.replace(text.find("2.1"), 3, "2.0");
    EXPECT_FALSE(reader.read(file("in.xmi", text)).isValid());
    EXPECT_THAT(log.texts(), IsEmpty());
    EXPECT_THAT(reader.report().skippedElements(), ElementsAre(Pair("{http://schema.omg.org/spec/XMI/2.1}XMI", 1)));
}

TEST_F(Reading, SkipsBlocksOfOtherToolsAndReadsItsOwn) {
    std::string const foreign = "<xmi:Extension name=\"X\" extender=\"Other\"><packagedElement xmi:type=\"ZEL:Class\" "
                                "name=\"inside\"/><xmi:Extension/></xmi:Extension>";
    std::string const own = "<xmi:Extension extender=\"The Quillon Inc.\">" + element("Class", 5, "name=\"own\"") +
                            "</xmi:Extension><xmi:Extension name=\"X\">" + element("Class", 6, "name=\"plain\"") +
                            "</xmi:Extension>";
    MetaModel const model = readModel(foreign + own);
    EXPECT_THAT(names(model.getTopPackage().getPackagedElements()), ElementsAre("own", "plain"));
    EXPECT_EQ("top", model.getTopPackage().getName().str()) << "attributes of a block are of no object";
}

TEST_F(Reading, TakesNoUuidFromIdsBehindABlockOfAnotherTool) {
    MetaModel const behind = read(document("<xmi:Extension extender=\"Other\"/>" + model("")));
    EXPECT_EQ(36, behind.getUuidBase().size());
    EXPECT_NE(kUuid, behind.getUuidBase().str());
}

// --- links -------------------------------------------------------------------------------------------------------------

TEST_F(Reading, KeepsTheOrderOfBothEndsOfALink) {
    // Each class lists the others against the order in which they are met.
    MetaModel const model = readModel(element("Class", 3, "name=\"A\" subClass=\"" + id(6) + " " + id(5) + "\"") +
                                      element("Class", 4, "name=\"B\" subClass=\"" + id(5) + " " + id(6) + "\"") +
                                      element("Class", 5, "name=\"C\" superClass=\"" + id(4) + " " + id(3) + "\"") +
                                      element("Class", 6, "name=\"D\" superClass=\"" + id(3) + " " + id(4) + "\""));
    EXPECT_THAT(names(classNamed(model, "A").getSubClasses()), ElementsAre("D", "C"));
    EXPECT_THAT(names(classNamed(model, "B").getSubClasses()), ElementsAre("C", "D"));
    EXPECT_THAT(names(classNamed(model, "C").getSuperClasses()), ElementsAre("B", "A"));
    EXPECT_THAT(names(classNamed(model, "D").getSuperClasses()), ElementsAre("A", "B"));
}

TEST_F(Reading, KeepsTheOrderOfAnEndThatStandsInSeveralPlaces) {
    MetaModel const model =
        readModel(element("Class", 3, "name=\"A\"") + element("Class", 4, "name=\"B\"") +
                  element("Class", 5, "name=\"C\" superClass=\"" + id(4) + "\"",
                          attribute(6, "association=\"" + id(7) + "\"") + "<superClass xmi:idref=\"" + id(3) + "\"/>") +
                  element("Association", 7, "memberEnd=\"" + id(6) + "\""));
    EXPECT_THAT(names(classNamed(model, "C").getSuperClasses()), ElementsAre("B", "A"));
}

TEST_F(Reading, FollowsLinksByElementAndByFragment) {
    MetaModel const model =
        readModel(element("Class", 5, "name=\"A\"",
                          "<superClass xmi:idref=\"" + id(6) + "\"/><superClass href=\"#" + id(7) + "\"/>") +
                  element("Class", 6, "name=\"B\"") + element("Class", 7, "name=\"C\""));
    EXPECT_THAT(names(classNamed(model, "A").getSuperClasses()), ElementsAre("B", "C"));
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(Reading, LogsLinksThatLeadNowhereOrToTheWrongClass) {
    std::string const nowhere = folder.path("in.xmi");
    EXPECT_TRUE(readModel(element("Class", 5, "name=\"A\" superClass=\"gone " + id(6) + " " + id(2) + "\"",
                                  attribute(7, "name=\"a\" type=\"urn:x#y\"")) +
                          element("DataType", 6, "name=\"D\""))
                    .isValid());
    EXPECT_THAT(log.texts(),
                ElementsAre("Unable to resolve property (association) superClass from A to object with id gone",
                            "Type Class of property superClass on A doesn't match type DataType of value D",
                            "Type Class of property superClass on A doesn't match type Package of value top",
                            "Unable to find elements corresponding to model urn:x"));
    EXPECT_THAT(log.texts(LogLevel::error), ::testing::SizeIs(4));
    EXPECT_THAT(reader.report().unresolvedReferences(),
                ElementsAre(Pair("Class.superClass", 1), Pair("Property.type", 1)));
    EXPECT_THAT(reader.report().rejectedValues(), ElementsAre(Pair("Class.superClass", 2)));
    EXPECT_THAT(reader.report().unreadFiles(), ElementsAre(Pair("urn:x", 1)));
}

TEST_F(Reading, LinksDoNotMoveObjects) {
    MetaModel const model = readModel("<ownedMember xmi:idref=\"" + id(5) + "\"/>" + element("Class", 5, "name=\"A\"") +
                                      element("Package", 6, "name=\"P\" packagedElement=\"" + id(5) + "\""));
    EXPECT_THAT(names(model.getTopPackage().getPackagedElements()), ::testing::UnorderedElementsAre("A", "P"));
    EXPECT_EQ(model.getTopPackage(), named(model, "A").getContainerZEL());
}

TEST_F(Reading, FindsTargetsInTheBuiltInMetamodel) {
    ImmutableMetaModel const builtIn(Class::MetaClass().getRootModel());
    std::string const base = "http://schema.omg.org/spec/MOF/2.0";
    std::string const classId = std::to_string(static_cast<int>(Class::MetaClass().getId()));
    MetaModel const model = readModel(element(
        "Class", 5, "name=\"A\"",
        attribute(6, "name=\"byName\"", "<type xmi:type=\"ZEL:Class\" href=\"" + base + "/cmof.xml#Class\"/>") +
            attribute(7, "name=\"byId\"",
                      "<type xmi:type=\"ZEL:Class\" href=\"" + base + "#_zel_any_" + classId + "\"/>") +
            attribute(8, "name=\"text\"", "<type xmi:type=\"ZEL:PrimitiveType\" href=\"" + base + "#String\"/>") +
            attribute(9, "name=\"none\"", "<type xmi:type=\"ZEL:Class\" href=\"" + base + "#Nonsense\"/>")));
    Class const a = classNamed(model, "A");
    EXPECT_EQ(Class::MetaClass(), a.getOwnedAttributeByName(String("byName")).getType());
    EXPECT_EQ(Class::MetaClass(), a.getOwnedAttributeByName(String("byId")).getType());
    EXPECT_EQ("String", a.getOwnedAttributeByName(String("text")).getType().getName().str());
    EXPECT_FALSE(a.getOwnedAttributeByName(String("none")).getType().isValid());
    EXPECT_THAT(log.texts(), ElementsAre("Unable to find elements corresponding to model " + base));
    EXPECT_EQ(0, reader.referredModelCount());
}

TEST_F(Reading, LogsATwoEndedLinkIntoAModelThatIsNotOpen) {
    std::string const href = "http://schema.omg.org/spec/MOF/2.0#Class";
    int const before = Class::MetaClass().getSubClasses().size();
    MetaModel const model =
        readModel(element("Class", 5, "name=\"A\"", "<superClass xmi:type=\"ZEL:Class\" href=\"" + href + "\"/>"));
    ASSERT_TRUE(model.isValid());
    ASSERT_EQ(1u, log.texts().size());
    EXPECT_THAT(log.texts().front(), ::testing::StartsWith("Unable to set property superClass on A to Class : "));
    EXPECT_EQ(before, Class::MetaClass().getSubClasses().size());
}

// --- other files ---------------------------------------------------------------------------------------------------------

class ReadingSeveralFiles : public ReaderTest {
protected:
    static constexpr char kOther[] = "99999999-2222-3333-4444-555555555555";

    static std::string linked(std::string const & type, std::string const & hrefs) {
        return element("Class", 5, "name=\"A\"",
                       attribute(6, "name=\"a\"", "<type xmi:type=\"ZEL:" + type + "\" href=\"" + hrefs + "\"/>"));
    }
    static std::string other(std::string const & elements) { return document(model(elements, kOther)); }
    static std::string otherClass(std::string const & content = {}) {
        return "<packagedElement xmi:type=\"ZEL:Class\" xmi:id=\"" + id(3, kOther) + "\" name=\"T\">" + content +
               "</packagedElement>";
    }
    [[nodiscard]] ImmutableType typeOfA(MetaModel const & model) const {
        return classNamed(model, "A").getOwnedAttributeByName(String("a")).getType();
    }
};

TEST_F(ReadingSeveralFiles, ReadsAFileOnceHoweverItIsSpelled) {
    std::filesystem::create_directory(folder.path("sub"));
    static_cast<void>(file("sub/o ther.xmi", other(otherClass())));
    std::string const target = "#" + id(3, kOther);
    std::string content;
    int number = 10;
    for (char const * spelling : {"sub/o%20ther.xmi", "./sub/o%20ther.xmi", "sub/../sub/%6F%20ther.xmi"}) {
        content += attribute(number, "name=\"p" + std::to_string(number) + "\"",
                             "<type xmi:type=\"ZEL:Class\" href=\"" + (spelling + target) + "\"/>");
        ++number;
    }
    content += attribute(number, "name=\"p13\"",
                         "<type xmi:type=\"ZEL:Class\" href=\"file://" + folder.path("sub") + "/o%20ther.xmi" + target +
                             "\"/>");
    MetaModel const model = readModel(element("Class", 5, "name=\"A\"", content));

    ASSERT_EQ(1, reader.referredModelCount());
    MetaModel const referred(reader.getReferredModel(0));
    EXPECT_EQ(kOther, referred.getUuidBase().str());
    EXPECT_EQ(kUuid, model.getUuidBase().str());
    for (Property const & property : classNamed(model, "A").getOwnedAttributes()) {
        EXPECT_EQ(classNamed(referred, "T"), property.getType()) << property.getName().str();
    }
    EXPECT_TRUE(
        log.has(LogLevel::info, "Processing external reference file://" + folder.path("sub") + "/o%20ther.xmi"));
    EXPECT_TRUE(log.has(LogLevel::info,
                        "Finished processing external reference file://" + folder.path("sub") + "/o%20ther.xmi"));
}

TEST_F(ReadingSeveralFiles, EndsInACycle) {
    static_cast<void>(
        file("other.xmi", other(otherClass("<superClass xmi:type=\"ZEL:Class\" href=\"in.xmi#" + id(5) + "\"/>"))));
    MetaModel const model = readModel(linked("Class", "other.xmi#" + id(3, kOther)));
    ASSERT_EQ(1, reader.referredModelCount());
    Class const target = classNamed(MetaModel(reader.getReferredModel(0)), "T");
    EXPECT_EQ(target, typeOfA(model));
    EXPECT_EQ(classNamed(model, "A"), target.getSuperClasses().at(0));
    EXPECT_THAT(names(classNamed(model, "A").getSubClasses()), ElementsAre("T")) << "the other end, in another file";
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(ReadingSeveralFiles, RestoresTheIdCountersOfAll) {
    auto const head = [](int next, std::string const & uuid) {
        return "<xmi:Extension extender=\"The Quillon Inc.\" nextIdValue=\"" + id(next, uuid) + "\"/>\n";
    };
    static_cast<void>(
        file("other.xmi",
             document(head(200, kOther) +
                      model(otherClass() + otherClass().replace(otherClass().find("_3\""), 3, "_4\""), kOther))));
    MetaModel const model =
        read(document(head(100, kUuid) + ReaderTest::model(linked("Class", "other.xmi#" + id(3, kOther)))));
    EXPECT_EQ(100, model.getNextIdValue());
    EXPECT_EQ(200, MetaModel(reader.getReferredModel(0)).getNextIdValue());

    static_cast<void>(file("other.xmi", other(otherClass())));
    MetaModel const outer =
        read(document(head(100, kUuid) + ReaderTest::model(linked("Class", "other.xmi#" + id(3, kOther)))));
    EXPECT_EQ(100, outer.getNextIdValue());
    EXPECT_EQ(4, MetaModel(reader.getReferredModel(0)).getNextIdValue()) << "a file without a head";
}

TEST_F(ReadingSeveralFiles, FailsAsAWholeIfOneIsMissing) {
    std::string const text = raisedText([&] { return readModel(linked("Class", "gone.xmi#x")); });
    EXPECT_THAT(text, ::testing::StartsWith("Error encountered while parsing " + folder.path("gone.xmi") +
                                            " at line 0, column 0 : "));
    EXPECT_EQ(0, reader.referredModelCount());
}

TEST_F(ReadingSeveralFiles, LeavesLinksIntoMissingOnesOpenWhenAsked) {
    XmiReaderSettings settings;
    settings.setSkipUnreadableExternalFiles(true);
    reader = XmiReader(settings);
    MetaModel const model = readModel(linked("Class", "gone.xmi#x"));
    ASSERT_TRUE(model.isValid());
    EXPECT_FALSE(typeOfA(model).isValid());
    std::string const uri = "file://" + folder.path("gone.xmi");
    EXPECT_TRUE(log.has(LogLevel::error, "Unable to find elements corresponding to model " + uri));
    EXPECT_THAT(reader.report().unreadFiles(), ElementsAre(Pair(uri, 1)));
    EXPECT_THAT(reader.report().unresolvedReferences(), ElementsAre(Pair("Property.type", 1)));

    static_cast<void>(file("broken.xmi", other(otherClass()).substr(0, 400)));
    EXPECT_THAT(raisedText([&] { return readModel(linked("Class", "broken.xmi#x")); }),
                ::testing::StartsWith("Error encountered while parsing " + folder.path("broken.xmi")))
        << "half a model is no model";
}

TEST_F(ReadingSeveralFiles, OpensNothingOutsideTheRootFolder) {
    std::filesystem::create_directory(folder.path("inside"));
    static_cast<void>(file("other.xmi", other(otherClass())));
    std::filesystem::create_symlink(folder.path("other.xmi"), folder.path("inside/link.xmi"));
    XmiReaderSettings settings;
    settings.setExternalRootFolder(folder.path("inside"));
    for (char const * href : {"../other.xmi", "link.xmi", "file:///etc/passwd"}) {
        XmiReader bounded(settings);
        std::string const input =
            file("inside/in.xmi", document(model(linked("Class", std::string(href) + "#" + id(3, kOther)))));
        MetaModel const read(bounded.read(input));
        EXPECT_TRUE(read.isValid()) << href;
        EXPECT_FALSE(typeOfA(read).isValid()) << href;
        EXPECT_EQ(0, bounded.referredModelCount()) << href;
        EXPECT_EQ(1u, bounded.report().unreadFiles().size()) << href;
    }
    static_cast<void>(file("inside/other.xmi", other(otherClass())));
    XmiReader bounded(settings);
    MetaModel const read(
        bounded.read(file("inside/in.xmi", document(model(linked("Class", "other.xmi#" + id(3, kOther)))))));
    EXPECT_EQ("T", typeOfA(read).getName().str());
}

TEST_F(ReadingSeveralFiles, AsksTheResolverForUrisOfOtherTools) {
    static_cast<void>(file("real.xmi", other(otherClass())));
    XmiReaderSettings settings;
    std::vector<std::string> asked;
    settings.setExternalUriResolver([&](std::string const & uri) {
        asked.push_back(uri);
        return uri.starts_with("pathmap:") ? folder.path("real.xmi") : std::string();
    });
    reader = XmiReader(settings);
    MetaModel const model = readModel(linked("Class", "pathmap://PROFILES/Standard.xmi#" + id(3, kOther)));
    EXPECT_EQ("T", typeOfA(model).getName().str());
    EXPECT_THAT(asked, ElementsAre("pathmap://PROFILES/Standard.xmi"));
}

TEST_F(ReadingSeveralFiles, FollowsAChainAsFarAsTheSettingsAllow) {
    auto const chain = [&](int length) {
        for (int i = 0; i < length; ++i) {
            std::string const uuid = "chain-" + std::to_string(i);
            std::string const link = i + 1 == length
                                         ? std::string()
                                         : "<superClass xmi:type=\"ZEL:Class\" href=\"c" + std::to_string(i + 1) +
                                               ".xmi#_zel_chain-" + std::to_string(i + 1) + "_3\"/>";
            static_cast<void>(file("c" + std::to_string(i) + ".xmi",
                                   document(model("<packagedElement xmi:type=\"ZEL:Class\" xmi:id=\"" + id(3, uuid) +
                                                      "\" name=\"T\">" + link + "</packagedElement>",
                                                  uuid))));
        }
        return folder.path("c0.xmi");
    };
    EXPECT_TRUE(reader.read(chain(256)).isValid());
    EXPECT_EQ(255, reader.referredModelCount());
    EXPECT_THAT(raisedText([&] { return reader.read(chain(257)); }), ::testing::StartsWith("Too many files are open"));
    EXPECT_EQ(0, reader.referredModelCount());
}

// --- Transformers and runs -------------------------------------------------------------------------------------------------

/// Leaves out the elements of one name, and takes note of completed objects.
class DropElements : public Transformer {
public:
    DropElements(std::string const & name, std::vector<std::string> & completed) {
        Context pattern;
        pattern.setRole("", name);
        addTransform(pattern, [](Context const & context) {
            Context skipped = context;
            skipped.setSkipState(true);
            return ContextSequence(skipped);
        });
        setOnCreate([&completed](Context const & context, ClassObject const & object) {
            bool const hasContent = object.getContaineeZELs().size() > 0;
            completed.push_back(context.getRoleName() + (hasContent ? " with content" : ""));
        });
    }
};

/// Leaves out classes, and gives what it leaves out another name.
class DropClassesByAnotherName : public Transformer {
public:
    DropClassesByAnotherName() {
        Context pattern;
        pattern.setType("http://schema.omg.org/spec/MOF/2.0", "Class");
        addTransform(pattern, [](Context const & context) {
            Context skipped = context;
            skipped.setRole("", "dropped");
            skipped.setType("urn:other", "Dropped");
            skipped.setSkipState(true);
            return ContextSequence(skipped);
        });
    }
};

TEST_F(Reading, SkipsTheContentOfAnElementThatARuleLeavesOutByAnotherName) {
    reader.addTransformer(new DropClassesByAnotherName);
    Package const top =
        readModel(element("Class", 5, "", "<ownedComment xmi:type=\"ZEL:Comment\" xmi:id=\"" + id(6) + "\"/>") +
                  element("Package", 7))
            .getTopPackage();
    EXPECT_EQ(top.getOwnedComments().size(), 0);
    EXPECT_EQ(top.getPackagedElements().size(), 1);
    EXPECT_THAT(reader.report().skippedElements(), ElementsAre(Pair("dropped of type {urn:other}Dropped", 1)));
}

TEST_F(Reading, CallsTransformersForOneRunAndTellsThemOfCompletedObjects) {
    std::vector<std::string> completed;
    reader.addTransformer(new DropElements("ownedAttribute", completed));
    std::string const text = element("Class", 5, "name=\"A\"", attribute(6, "name=\"a\""));
    EXPECT_EQ(0, classNamed(readModel(text), "A").getOwnedAttributes().size());
    EXPECT_THAT(completed, ElementsAre("packagedElement", "topPackage with content", "MetaModel with content"));
    EXPECT_EQ(1, classNamed(readModel(text), "A").getOwnedAttributes().size());
    EXPECT_EQ(3u, completed.size());
}

TEST_F(Reading, LeavesNothingForTheNextRun) {
    EXPECT_TRUE(readModel(element("Class", 5, "name=\"A\" superClass=\"gone\" x=\"y\"")).isValid());
    EXPECT_FALSE(reader.report().isEmpty());
    log.clear();
    MetaModel const second = readModel(element("Class", 6, "name=\"B\" superClass=\"" + id(5) + "\""));
    EXPECT_EQ(0, classNamed(second, "B").getSuperClasses().size());
    EXPECT_THAT(log.texts(),
                ElementsAre("Unable to resolve property (association) superClass from B to object with id " + id(5)));
    EXPECT_TRUE(reader.report().ignoredAttributes().empty());
}

TEST_F(Reading, KnowsItsDialects) {
    std::string const path = file("in.xmi", document(model("")));
    for (XmiFormat const format : {XmiFormat::Rhapsody, XmiFormat::MagicDraw}) {
        XmiReaderSettings settings;
        settings.setInputFormat(format);
        EXPECT_TRUE(XmiReader(settings).read(path).isValid()) << format.toString();
    }
}

TEST_F(Reading, OfANameWithoutUriGivesNothing) {
    EXPECT_FALSE(reader.read("").isValid());
    EXPECT_TRUE(log.has(LogLevel::error, "Invalid input XMI file : "));
}

TEST_F(Reading, LeavesTheModelCommittedAsOneStep) {
    MetaModel const model = readModel(element("Class", 5, "name=\"A\""));
    EXPECT_EQ(1, model.getUndoStackLength());
    model.beginTransaction();
    model.setName(String("other"));
    model.commitTransaction();
    EXPECT_EQ("other", model.getName().str());
}

} // namespace
} // namespace ZEL::Serializer::Test
