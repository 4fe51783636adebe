#include "ReaderTest.h"

namespace ZEL::tests {
namespace {

struct Reading : ReaderTest {};

// --- elements, values, ids ---------------------------------------------------------------------------------------------

TEST_F(Reading, LogsItsBeginAndItsEndAndCommitsOneStep) {
    MetaModel const model =
        readModel(element("Class", 5, "name='A'", attribute(6, "name='a' visibility='private' type='@5'")));
    EXPECT_EQ(kUuid, model.getUuidBase().str());
    EXPECT_EQ(7, model.getNextIdValue());
    EXPECT_EQ(1, model.getUndoStackLength());
    EXPECT_EQ(5, named(model, "A").getId());
    EXPECT_EQ(named(model, "A"), classNamed(model, "A").getOwnedAttributeByName(String("a")).getType());
    EXPECT_THAT(log.texts(LogLevel::info), ElementsAre("Processing XMI input from " + folder.path("in.xmi"),
                                                       "Finished processing XMI input " + folder.path("in.xmi")));
    EXPECT_TRUE(reader.report().isEmpty());
}

TEST_F(Reading, TakesTextOfElementsAsValues) {
    MetaModel const model = readModel(
        element("Constraint", 3, "name='c'",
                "<specification xmi:type='ZEL:OpaqueExpression' xmi:id='@4'><body>a &lt; <![CDATA[b]]></body>"
                "<body>second</body><language>OCL</language></specification>") +
        element("Class", 5, "name='A'", "<ownedComment xmi:type='ZEL:Comment'><body>line\nline</body></ownedComment>"));
    OpaqueExpression const expression(Constraint(named(model, "c")).getSpecification());
    ASSERT_EQ(2, expression.getBodies().size());
    EXPECT_EQ("a < b", expression.getBodies().at(0).str());
    EXPECT_EQ("second", expression.getBodies().at(1).str());
    EXPECT_EQ("OCL", expression.getLanguages().at(0).str());
    EXPECT_EQ("line\nline", classNamed(model, "A").getOwnedComments().at(0).getBody().str());
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(Reading, RestoresTheIdCounterFromTheHead) {
    std::string const head = "<xmi:Extension extender='The Quillon Inc.' persistentIds='true' nextIdValue='@";
    EXPECT_EQ(100, read(document(head + "100'/>" + model(""))).getNextIdValue());
    EXPECT_EQ(51, read(document(head + "3'/>" + model(element("Class", 50)))).getNextIdValue())
        << "never below an id in use";
}

TEST_F(Reading, GivesElementsWithoutAnIdOfThisSystemNumbersThatNoOtherHas) {
    // Where no head says which numbers the file uses, a number that the file has for another object is taken back.
    std::string const own = element("Class", 3, "name='B'") + element("Class", 4, "name='C' superClass='@3'");
    for (std::string const attributes : {"", " xmi:id='E_1'"}) {
        std::string const ahead = "<packagedElement xmi:type='ZEL:Class' name='A'" + attributes + "/>";
        for (int const number : {100, 5}) {
            SCOPED_TRACE(attributes + std::to_string(number));
            std::string const head = "<xmi:Extension extender='The Quillon Inc.' nextIdValue='@100'/>";
            MetaModel const model = read(document((number == 100 ? head : "") + ReaderTest::model(ahead + own)));
            EXPECT_EQ(named(model, "A"), model.getObjectById(Integer(number)));
            EXPECT_EQ(number, named(model, "A").getId());
            EXPECT_EQ(named(model, "B"), model.getObjectById(Integer(3)));
            EXPECT_EQ(4, named(model, "C").getId());
            EXPECT_THAT(namesOf(classNamed(model, "C").getSuperClasses()), ElementsAre("B"));
            EXPECT_EQ(number + 1, model.getNextIdValue());
        }
        EXPECT_THAT(raisedText([&] { readModel(ahead + own + element("Class", 3)); }),
                    StartsWith("Attempt to overwrite object (id = '3'"));
    }
}

TEST_F(Reading, IgnoresAttributesThatBelongToTheFile) {
    MetaModel const model = read(document("<ZEL:MetaModel xmi:id='m' uri='file:///where/it/was.xmi'>"
                                          "<topPackage xmi:type='ZEL:Package' id='77' name='top' uri='urn:own'/>"
                                          "</ZEL:MetaModel>"));
    EXPECT_EQ("file://" + folder.path("in.xmi"), model.getUri().str());
    EXPECT_EQ(2, model.getTopPackage().getId());
    EXPECT_EQ("urn:own", model.getTopPackage().getUri().str()) << "that of a package is its own";
}

// --- what is left out --------------------------------------------------------------------------------------------------

struct LeavingOut : ReaderTest {
    /// Reads a document; `elements` are the names of what the model has of it.
    void expectRead(std::string const & content, std::vector<std::string> const & elements,
                    std::vector<std::string> const & logged, std::vector<std::string> const & inReport) {
        SCOPED_TRACE(content);
        log.clear();
        MetaModel const read = ReaderTest::read(document(content));
        EXPECT_EQ("top", read.getTopPackage().getName().str()) << "attributes of what is left out are not another's";
        EXPECT_EQ(elements, elementNames(read));
        EXPECT_EQ(logged, log.texts());
        EXPECT_EQ(inReport, reported());
    }

    std::string const a = element("Class", 5, "name='A'");
};

TEST_F(LeavingOut, TellsOfValuesAndAttributesThatFitNoProperty) {
    expectRead(model(element("Class", 5, "name='A'", attribute(6, "name='a'", "<default/>"))), {"A"},
               {"Read empty value for property default of object a"}, {});
    expectRead(model(element("Class", 5, "name='A' isAbstract='yes'", attribute(6, "lower='x'"))), {"A"},
               {"Unable to create property isAbstract on object A with value yes: Can't convert string 'yes' to bool",
                "Unable to create property lower on object [noname] with value x: Can't convert string 'x' to INT32_T"},
               {"rejected Class.isAbstract 1", "rejected Property.lower 1"});
    expectRead(model(element("Class", 5, "name='A' colour='red'") +
                     element("Class", 6, "name='B' colour='blue' ownedAttribute='@9'", attribute(9, ""))),
               {"A", "B"}, {}, {"ignored Class.colour 2", "ignored Class.ownedAttribute 1"});
}

TEST_F(LeavingOut, PassesOverAnUnknownElementToItsOwnEnd) {
    expectRead(model("<other><other><packagedElement xmi:type='ZEL:Class' name='inside'/></other>"
                     "<packagedElement xmi:type='ZEL:Class' name='still'/></other>" +
                     a),
               {"A"}, {}, {"skipped other 1", "inside other 1", "inside packagedElement of type ZEL:Class 2"});
}

TEST_F(LeavingOut, TellsOfClassesThatCannotBeMadeOrMayNotStandThere) {
    expectRead(
        model(element("Classifier", 6, "name='abstract'", "<name>inside</name>") + element("Nonsense", 7, "name='n'") +
              element("Nonsense", 8) + element("Comment", 9, "body='text'") +
              "<packagedElement xmlns:x='urn:x' xmi:type='x:Class'/>" + a),
        {"A"},
        {"Type PackageableElement of property packagedElement on top doesn't match type Comment of value [noname]",
         "Unable to create factory for {}packagedElement with type {urn:x}Class"},
        {"skipped packagedElement of type ZEL:Classifier 1", "skipped packagedElement of type ZEL:Comment 1",
         "skipped packagedElement of type ZEL:Nonsense 2", "skipped packagedElement of type x:Class 1",
         "inside name 1"});
    // The same with a link to what is left out.
    expectRead(
        model(element("Comment", 6) + "<ownedComment xmi:type='ZEL:Comment' annotatedElement='@6'/>" + a), {"A"},
        {"Type PackageableElement of property packagedElement on top doesn't match type Comment of value [noname]",
         "Unable to resolve property (association) annotatedElement from [noname] to object with id " + filled("@6")},
        {"skipped packagedElement of type ZEL:Comment 1", "unresolved Comment.annotatedElement 1"});
    expectRead(model("<packagedElement xmi:type='Class'/><packagedElement xmi:type='no:Class'/>"), {},
               {"Invalid format for XMI type name Class", "Unable to create factory for {}packagedElement with type {}",
                "Namespace prefix no not present in namespace registry",
                "Unable to create factory for {}packagedElement with type {}"},
               {"skipped packagedElement of type Class 1", "skipped packagedElement of type no:Class 1"});
    expectRead(
        "<x:Thing xmlns:x='urn:x'><x:Thing/></x:Thing>" + model(a) + "<ZEL:Nonsense/>", {"A"},
        {"Unable to create element {urn:x}Thing",
         "Unable to create element {http://schema.omg.org/spec/MOF/2.0}Nonsense"},
        {"skipped {http://schema.omg.org/spec/MOF/2.0}Nonsense 1", "skipped {urn:x}Thing 1", "inside {urn:x}Thing 1"});
}

TEST_F(LeavingOut, TakesTheLastOfSeveralValuesOfAPropertyForOne) {
    expectRead(
        model(element("Class", 5, "name='A' isAbstract='true'",
                      "<name>B</name><isAbstract>true</isAbstract>" + attribute(6, "name='a' type='@5 gone @7 @7'") +
                          attribute(11, "type='@5'", "<ownedComment xmi:type='ZEL:Comment'/><type xmi:idref='@5'/>")) +
              element("Class", 7, "name='C'") +
              element("Constraint", 8, "name='c'",
                      "<specification xmi:type='ZEL:OpaqueExpression' xmi:id='@9'>"
                      "<ownedComment xmi:type='ZEL:Comment'/></specification>"
                      "<specification xmi:type='ZEL:OpaqueExpression' xmi:id='@10'/>")),
        {"B", "C", "c"},
        {"A further value of property name of object B takes the place of the one before",
         "A further value of property specification of object c takes the place of the one before",
         "Unable to resolve property (association) type from a to object with id gone",
         "A further value of property type of object a takes the place of the one before",
         "Objects of class Comment that nothing contains, and no file will hold: 1",
         "Objects of class OpaqueExpression that nothing contains, and no file will hold: 1"},
        {"replaced Class.name 1", "replaced Constraint.specification 1", "replaced Property.type 1",
         "uncontained Comment 1", "uncontained OpaqueExpression 1", "unresolved Property.type 1"});
}

TEST_F(LeavingOut, TellsOfElementsAtTheTopBesideTheModel) {
    expectRead(model(a) + "<ZEL:Package xmi:id='@7'>" + element("Class", 6, "name='B'") +
                   "</ZEL:Package><ZEL:Package/>",
               {"A"},
               {"Objects of class Class that nothing contains, and no file will hold: 1",
                "Objects of class Package that nothing contains, and no file will hold: 2"},
               {"uncontained Class 1", "uncontained Package 2"});
}

TEST_F(LeavingOut, PassesOverTheBlocksOfOtherToolsAlone) {
    expectRead(model("<xmi:Extension name='X' extender='Other'>" + a + "<xmi:Extension/></xmi:Extension>" +
                     "<xmi:Extension extender='The Quillon Inc.'>" + element("Class", 6, "name='own'") +
                     "</xmi:Extension><xmi:Extension name='X'>" + element("Class", 7, "name='plain'") +
                     "</xmi:Extension>"),
               {"own", "plain"}, {},
               {"skipped {http://schema.omg.org/spec/XMI/2.1}Extension 1", "inside packagedElement of type ZEL:Class 1",
                "inside {http://schema.omg.org/spec/XMI/2.1}Extension 1"});
}

TEST_F(Reading, MakesAModelOfAnyTopElementOfAKnownMetamodelAndSaysSo) {
    MetaModel const model = read(document("<ZEL:Package xmi:id='p' name='P'/>"));
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ("P", model.getName().str());
    EXPECT_THAT(log.texts(), ElementsAre("Unable to create element {http://schema.omg.org/spec/MOF/2.0}Package"));
}

TEST_F(Reading, OfAnotherVersionReturnsNoModelAndNoError) {
    std::string text = document(model(""));
    EXPECT_FALSE(read(text.replace(text.find("2.1"), 3, "2.0")).isValid());
    EXPECT_THAT(log.texts(), IsEmpty());
    EXPECT_THAT(reported(), ElementsAre("skipped {http://schema.omg.org/spec/XMI/2.1}XMI 1",
                                        "inside topPackage of type ZEL:Package 1",
                                        "inside {http://schema.omg.org/spec/MOF/2.0}MetaModel 1", "version 2.0 1"));

    // Without an envelope the model itself says it.
    auto const bare = [&](std::string const & uri, std::string const & attributes) {
        return read("<ZEL:MetaModel xmlns:xmi='" + uri + "' xmlns:ZEL='http://schema.omg.org/spec/MOF/2.0' " +
                    attributes + "><topPackage xmi:type='ZEL:Package'/></ZEL:MetaModel>");
    };
    std::string const own = "http://schema.omg.org/spec/XMI/2.1";
    EXPECT_TRUE(bare(own, "xmi:version='2.1' version='7'").getTopPackage().isValid());
    EXPECT_THAT(reported(), ElementsAre("ignored MetaModel.version 1"));
    std::pair<std::string, std::string> const others[] = {
        {own, "xmi:version='2.0'"},
        {"http://www.omg.org/XMI", "xmi:version='2.0'"},
        {"http://www.omg.org/spec/XMI/20131001", "xmi:version='20131001'"},
        {"http://schema.omg.org/spec/XMI/2.0", "xmi:version='2.1'"},
        {"http://www.omg.org/spec/XMI/20110701", "xmi:id='m'"},
    };
    for (auto const & [uri, attributes] : others) {
        EXPECT_FALSE(bare(uri, attributes).isValid()) << uri << attributes;
        EXPECT_EQ(1u, reader.report().otherVersions().size()) << uri << attributes;
    }
}

TEST_F(Reading, OfANameWithoutUriReturnsNothing) {
    EXPECT_FALSE(reader.read("").isValid());
    EXPECT_THAT(log.texts(LogLevel::error), ElementsAre("Invalid input XMI file : "));
}

TEST_F(Reading, TakesNoUuidFromIdsAfterABlockOfAnotherTool) {
    MetaModel const behind = read(document("<xmi:Extension extender='Other'/>" + model("")));
    EXPECT_EQ(36, behind.getUuidBase().size());
    EXPECT_NE(kUuid, behind.getUuidBase().str());
}

// --- links -------------------------------------------------------------------------------------------------------------

TEST_F(Reading, KeepsTheOrderOfBothEndsOfALink) {
    // Each class lists the others in the reverse of the order in which they are read.
    MetaModel const model = readModel(
        element("Class", 3, "name='A' subClass='@6 @5'") + element("Class", 4, "name='B' subClass='@5 @6'") +
        element("Class", 5, "name='C' superClass='@4 @3'") + element("Class", 6, "name='D' superClass='@3 @4'"));
    EXPECT_THAT(namesOf(classNamed(model, "A").getSubClasses()), ElementsAre("D", "C"));
    EXPECT_THAT(namesOf(classNamed(model, "B").getSubClasses()), ElementsAre("C", "D"));
    EXPECT_THAT(namesOf(classNamed(model, "C").getSuperClasses()), ElementsAre("B", "A"));
    EXPECT_THAT(namesOf(classNamed(model, "D").getSuperClasses()), ElementsAre("A", "B"));
}

TEST_F(Reading, FollowsLinksByAttributeElementAndFragmentInTheirOrder) {
    MetaModel const model =
        readModel(element("Class", 3, "name='A'") + element("Class", 4, "name='B'") +
                  element("Class", 5, "name='C' superClass='@4'",
                          attribute(6, "association='@7'") + "<superClass xmi:idref='@3'/><superClass href='#@8'/>") +
                  element("Association", 7, "memberEnd='@6'") + element("Class", 8, "name='D'"));
    EXPECT_THAT(namesOf(classNamed(model, "C").getSuperClasses()), ElementsAre("B", "A", "D"));
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(Reading, LogsLinksThatLeadNowhereOrToTheWrongClass) {
    EXPECT_TRUE(
        readModel(element("Class", 5, "name='A' superClass='gone @6 @2'", attribute(7, "name='a' type='urn:x#y'")) +
                  element("DataType", 6, "name='D'"))
            .isValid());
    EXPECT_THAT(log.texts(LogLevel::error),
                ElementsAre("Unable to resolve property (association) superClass from A to object with id gone",
                            "Type Class of property superClass on A doesn't match type DataType of value D",
                            "Type Class of property superClass on A doesn't match type Package of value top",
                            "Unable to find elements corresponding to model urn:x"));
    EXPECT_THAT(reported(), ElementsAre("rejected Class.superClass 2", "unresolved Class.superClass 1",
                                        "unresolved Property.type 1", "unread urn:x 1"));
}

TEST_F(Reading, LinksDoNotMoveObjects) {
    MetaModel const model = readModel("<ownedMember xmi:idref='@5'/>" + element("Class", 5, "name='A'") +
                                      element("Package", 6, "name='P' packagedElement='@5'"));
    EXPECT_THAT(elementNames(model), testing::UnorderedElementsAre("A", "P"));
}

TEST_F(Reading, FindsTargetsInTheBuiltInMetamodel) {
    std::string const base = "http://schema.omg.org/spec/MOF/2.0";
    std::string const byId = "#@" + std::to_string(static_cast<int>(Class::MetaClass().getId()));
    std::string attributes;
    for (std::string const & href :
         {std::string("/cmof.xml#Class"), byId, std::string("#String"), std::string("#Nonsense")}) {
        attributes += "<ownedAttribute xmi:type='ZEL:Property'><type href='" + base + href + "'/></ownedAttribute>";
    }
    MetaModel const model = readModel(element("Class", 5, "name='A'", attributes));
    std::vector<ImmutableType> found;
    for (Property const & property : classNamed(model, "A").getOwnedAttributes()) {
        found.emplace_back(property.getType());
    }
    EXPECT_THAT(found, ElementsAre(Class::MetaClass(), Class::MetaClass(), String::MetaDataType(), ImmutableType()));
    EXPECT_THAT(log.texts(), ElementsAre("Unable to find elements corresponding to model " + base));
    EXPECT_EQ(0, reader.referredModelCount());
}

TEST_F(Reading, LogsATwoEndedLinkIntoAModelThatIsNotOpen) {
    int const before = Class::MetaClass().getSubClasses().size();
    readModel(element("Class", 5, "name='A'",
                      "<superClass xmi:type='ZEL:Class' href='http://schema.omg.org/spec/MOF/2.0#Class'/>"));
    EXPECT_THAT(log.texts(), ElementsAre(StartsWith("Unable to set property superClass on A to Class : ")));
    EXPECT_EQ(before, Class::MetaClass().getSubClasses().size());
}

// --- other files ---------------------------------------------------------------------------------------------------------

struct ReadingSeveralFiles : ReaderTest {
    /// A class "A" with an attribute whose type is elsewhere.
    static std::string linked(std::string const & href) {
        return model(
            element("Class", 5, "name='A'", attribute(6, "", "<type xmi:type='ZEL:Class' href='" + href + "'/>")));
    }
    /// A model of another file, with a class "T".
    static std::string other(std::string const & content = {}) {
        return model("<packagedElement xmi:type='ZEL:Class' xmi:id='@@3' name='T'>" + content + "</packagedElement>",
                     kOther);
    }
    [[nodiscard]] MetaModel referredModel() const { return MetaModel(reader.getReferredModel(0)); }
    static ImmutableType typeOfA(MetaModel const & model) {
        return classNamed(model, "A").getOwnedAttributes().at(0).getType();
    }
};

TEST_F(ReadingSeveralFiles, ReadsAFileOnceForAllLinksIntoIt) {
    file("other.xmi", document(other()));
    std::string const uri = "file://" + folder.path("other.xmi");
    std::string const link = "#@@3'/>";
    MetaModel const model = readModel(
        element("Class", 5, "name='A'",
                attribute(6, "", "<type href='other.xmi" + link) + attribute(7, "", "<type href='" + uri + link)));
    ASSERT_EQ(1, reader.referredModelCount());
    EXPECT_EQ(kOther, referredModel().getUuidBase().str());
    EXPECT_EQ(kUuid, model.getUuidBase().str());
    for (Property const & property : classNamed(model, "A").getOwnedAttributes()) {
        EXPECT_EQ(classNamed(referredModel(), "T"), property.getType());
    }
    EXPECT_THAT(log.texts(LogLevel::info),
                ElementsAre("Processing XMI input from " + folder.path("in.xmi"),
                            "Processing external reference " + uri, "Finished processing external reference " + uri,
                            "Finished processing XMI input " + folder.path("in.xmi")));
}

TEST_F(ReadingSeveralFiles, EndsInACycle) {
    file("other.xmi", document(other("<superClass xmi:type='ZEL:Class' href='in.xmi#@5'/>")));
    MetaModel const model = read(document(linked("other.xmi#@@3")));
    ASSERT_EQ(1, reader.referredModelCount());
    Class const target = classNamed(referredModel(), "T");
    EXPECT_EQ(target, typeOfA(model));
    EXPECT_EQ(classNamed(model, "A"), target.getSuperClasses().at(0));
    EXPECT_THAT(namesOf(classNamed(model, "A").getSubClasses()), ElementsAre("T")) << "the other end, in another file";
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(ReadingSeveralFiles, RestoresTheIdCountersOfAll) {
    std::string const head = "<xmi:Extension extender='The Quillon Inc.' nextIdValue='";
    std::string const text = document(head + "@100'/>" + linked("other.xmi#@@3"));
    file("other.xmi", document(head + "@@200'/>" + other()));
    EXPECT_EQ(100, read(text).getNextIdValue());
    EXPECT_EQ(200, referredModel().getNextIdValue());

    file("other.xmi", document(other()));
    EXPECT_EQ(100, read(text).getNextIdValue());
    EXPECT_EQ(4, referredModel().getNextIdValue()) << "a file without a head";
}

TEST_F(ReadingSeveralFiles, FailsAsAWholeIfOneIsMissingUnlessTold) {
    std::string const text = document(linked("gone.xmi#x"));
    EXPECT_THAT(raisedText([&] { read(text); }),
                StartsWith("Error encountered while parsing " + folder.path("gone.xmi") + " at line 0, column 0 : "));
    EXPECT_EQ(0, reader.referredModelCount());

    settings.setSkipUnreadableExternalFiles(true);
    reader = XmiReader(settings);
    MetaModel const model = read(text);
    ASSERT_TRUE(model.isValid());
    EXPECT_FALSE(typeOfA(model).isValid());
    std::string const uri = "file://" + folder.path("gone.xmi");
    EXPECT_THAT(log.texts(LogLevel::error), ElementsAre("Unable to find elements corresponding to model " + uri));
    EXPECT_THAT(reported(), ElementsAre("unresolved Property.type 1", "unread " + uri + " 1"));
}

TEST_F(ReadingSeveralFiles, GoesOnWithoutAFileThatBreaksInItsMiddleIfTold) {
    // Where it breaks, links from this file and into it are still to be resolved, and links between others are not.
    std::string const link = "<superClass xmi:type='ZEL:Class' href='";
    file("third.xmi", document(model("<packagedElement xmi:type='ZEL:Class' xmi:id='_zel_t_3' name='T3'/>", "t")));
    file("broken.xmi", document(other(link + "third.xmi#_zel_t_3'/>" + link + "in.xmi#@5'/><secret:token/>")));
    std::string const error = "Error encountered while parsing " + folder.path("broken.xmi") + " at line 5, column ";
    std::string const text =
        document(model(element("Class", 5, "name='A'", link + "broken.xmi#@@3'/>" + link + "third.xmi#_zel_t_3'/>")));
    std::string const raised = raisedText([&] { read(text); });
    EXPECT_THAT(raised, StartsWith(error));
    EXPECT_THAT(raised, testing::EndsWith(" : prefix '...' is not declared")) << "what it holds is not told";

    settings.setSkipUnreadableExternalFiles(true);
    reader = XmiReader(settings);
    log.clear();
    MetaModel const model = read(text);
    ASSERT_TRUE(model.isValid());
    EXPECT_THAT(namesOf(classNamed(model, "A").getSuperClasses()), ElementsAre("T3"));
    EXPECT_EQ(0, classNamed(model, "A").getSubClasses().size());
    ASSERT_EQ(1, reader.referredModelCount());
    EXPECT_EQ("t", referredModel().getUuidBase().str());
    std::string const uri = "file://" + folder.path("broken.xmi");
    EXPECT_THAT(reported(), ElementsAre("unresolved Class.superClass 1", "unread " + uri + " 1"));
    EXPECT_THAT(log.texts(),
                ElementsAre("Unable to read " + folder.path("broken.xmi") + " : prefix '...' is not declared",
                            "Unable to find elements corresponding to model " + uri));
    EXPECT_EQ(1, model.getUndoStackLength());

    file("in.xmi", document("<secret:token/>"));
    EXPECT_THAT(raisedText([&] { reader.read(folder.path("in.xmi")); }), HasSubstr("prefix 'secret' is not declared"));
}

// --- Transformers and runs -------------------------------------------------------------------------------------------------

TEST_F(Reading, SkipsTheContentOfAnElementThatARuleLeavesOutByAnotherName) {
    auto const rules = std::make_shared<Rules>();
    Context classes;
    classes.setType("http://schema.omg.org/spec/MOF/2.0", "Class");
    rules->addTransform(classes, [](Context const & context) {
        Context renamed = skipped(context);
        renamed.setRole("", "dropped");
        renamed.setType("urn:other", "Dropped");
        return ContextSequence(renamed);
    });
    reader.addTransformer(rules);
    MetaModel const model = readModel(element("Class", 5, "", "<ownedComment xmi:type='ZEL:Comment' xmi:id='@6'/>") +
                                      element("Package", 7, "name='P'"));
    EXPECT_EQ(model.getTopPackage().getOwnedComments().size(), 0);
    EXPECT_THAT(elementNames(model), ElementsAre("P"));
    EXPECT_THAT(reported(), ElementsAre("skipped packagedElement of type ZEL:Class 1",
                                        "inside ownedComment of type ZEL:Comment 1"));
}

TEST_F(Reading, CallsTransformersForOneRunAndTellsThemOfCompletedObjects) {
    std::vector<std::string> completed;
    auto const rules = std::make_shared<Rules>();
    rules->addTransform(role("ownedAttribute"), [](Context const & c) { return ContextSequence(skipped(c)); });
    rules->setOnCreate([&](Context const & context, ClassObject const & object) {
        completed.push_back(context.getRoleName() + (object.getContaineeZELs().size() > 0 ? " with content" : ""));
    });
    reader.addTransformer(rules);
    std::string const text = element("Class", 5, "name='A'", attribute(6, "name='a'"));
    EXPECT_EQ(0, classNamed(readModel(text), "A").getOwnedAttributes().size());
    EXPECT_THAT(completed, ElementsAre("packagedElement", "topPackage with content", "MetaModel with content"));
    EXPECT_EQ(1, classNamed(readModel(text), "A").getOwnedAttributes().size());
    EXPECT_EQ(3u, completed.size());
}

TEST_F(Reading, HeedsRulesThatComeAndGoBetweenElementsOfOneKind) {
    auto const dropNames = [](Rules & rules) {
        rules.addTransform(role("name"), [](Context const &) { return ContextSequence(); });
    };
    auto const rules = std::make_shared<Rules>();
    rules->setOnCreate([&, own = rules.get(), completed = 0](Context const &, ClassObject const &) mutable {
        switch (++completed) {
        case 2:
            return dropNames(*own);
        case 3:
            return own->removeTransform(role("name"));
        case 4:
            auto const others = std::make_shared<Rules>();
            dropNames(*others);
            return reader.addTransformer(others);
        }
    });
    reader.addTransformer(rules);
    std::string text;
    for (int i = 0; i < 5; ++i) {
        text += element("Class", 5 + i, "name='" + std::string(1, static_cast<char>('A' + i)) + "'");
    }
    EXPECT_THAT(elementNames(readModel(text)), ElementsAre("A", "B", "", "D", ""));
}

TEST_F(Reading, LeavesNothingForTheNextRun) {
    readModel(element("Class", 5, "name='A' superClass='gone' x='y'"));
    EXPECT_THAT(reported(), ElementsAre("ignored Class.x 1", "unresolved Class.superClass 1"));
    log.clear();
    readModel(element("Class", 6, "name='B' superClass='@5'"));
    EXPECT_THAT(
        log.texts(),
        ElementsAre("Unable to resolve property (association) superClass from B to object with id " + filled("@5")));
    EXPECT_THAT(reported(), ElementsAre("unresolved Class.superClass 1"));
}

TEST_F(Reading, KnowsADialectThatIsWrittenOnly) {
    settings.setInputFormat(XmiFormat::Rhapsody);
    reader = XmiReader(settings);
    EXPECT_TRUE(readModel("").isValid());
}

} // namespace
} // namespace ZEL::tests
