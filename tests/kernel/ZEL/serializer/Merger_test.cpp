#include "ReaderTest.h"

#include <ZEL/Boolean.h>
#include <ZEL/Deviant.h>
#include <ZEL/Exception.h>
#include <ZEL/Integer.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/XmiWriter.h>

namespace ZEL::Serializer::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Merging : public ReaderTest {
protected:
    /// Reads `text` into a model that is there already.
    Object merge(Model const & into, std::string const & text) {
        reader.setMerger(new Merger(into));
        return reader.read(file("in.xmi", text));
    }
    MetaModel start(std::string const & elements) {
        MetaModel const result = readModel(elements);
        log.clear();
        return result;
    }
    /// All of the model that a merge may change, as a text.
    static std::string snapshot(MetaModel const & model) {
        std::string text = model.getName().str() + " " + model.getUri().str() + " next " +
                           std::to_string(static_cast<int>(model.getNextIdValue())) + " unparented " +
                           std::to_string(model.getUnparented().size()) + ":";
        for (PackageableElement const & element : model.getTopPackage().getPackagedElements()) {
            text += " " + element.getName().str() + "/" + std::to_string(static_cast<int>(element.getId()));
            Class const metaClass(element);
            for (Class const & super : metaClass.isValid() ? metaClass.getSuperClasses() : Sequence<Class>()) {
                text += "<" + super.getName().str();
            }
        }
        return text;
    }
};

TEST_F(Merging, KeepsRefillsMakesAndDestroysInOneStepThatCanBeUndone) {
    MetaModel const model =
        start(element("Class", 3, "name=\"A\" isAbstract=\"true\" visibility=\"private\" superClass=\"" + id(4) + "\"",
                      attribute(6, "name=\"a\" lower=\"0\"")) +
              element("Class", 4, "name=\"B\"") + element("Class", 5, "name=\"C\" superClass=\"" + id(4) + "\""));
    Class const a = classNamed(model, "A");
    Class const b = classNamed(model, "B");
    Class const c = classNamed(model, "C");
    Property const property = a.getOwnedAttributes().at(0);
    std::string const before = snapshot(model);
    int const steps = model.getUndoStackLength();

    Object const result =
        merge(model, document(ReaderTest::model(element("Class", 9, "name=\"N\"") + element("Class", 5, "name=\"C2\"") +
                                                element("Class", 3, "name=\"A2\" superClass=\"" + id(9) + "\"",
                                                        attribute(6, "name=\"a2\"")))));
    EXPECT_EQ(model, result);
    EXPECT_THAT(names(model.getTopPackage().getPackagedElements()), ElementsAre("A2", "C2", "N"))
        << "kept ones stay in place";
    EXPECT_EQ(a, named(model, "A2"));
    EXPECT_FALSE(a.isAbstract()) << "what the file leaves out is the default";
    EXPECT_FALSE(a.hasVisibility());
    EXPECT_THAT(names(a.getSuperClasses()), ElementsAre("N"));
    EXPECT_EQ(property, a.getOwnedAttributeByName(String("a2")));
    EXPECT_EQ(1, property.lowerBound());
    EXPECT_EQ(0, c.getSuperClasses().size());
    EXPECT_FALSE(b.isValid());
    EXPECT_EQ(0, model.getUnparented().size());
    EXPECT_THAT(log.texts(), IsEmpty());

    EXPECT_EQ(steps + 1, model.getUndoStackLength());
    model.undo();
    EXPECT_EQ(b, named(model, "B"));
    EXPECT_THAT(names(a.getSuperClasses()), ElementsAre("B"));
    EXPECT_TRUE(a.isAbstract());
    EXPECT_EQ(0, property.lowerBound());
    EXPECT_EQ("C", c.getName().str());
    EXPECT_EQ(before.substr(0, before.find(" next")), snapshot(model).substr(0, before.find(" next")));
    model.redo();
    EXPECT_EQ("A2", a.getName().str());
    EXPECT_FALSE(b.isValid());
}

TEST_F(Merging, OfWhatWasWrittenChangesNothing) {
    MetaModel const model =
        start(element("Class", 3, "name=\"A\" isAbstract=\"true\"",
                      attribute(4, "name=\"b\" lower=\"0\" upper=\"*\" type=\"" + id(5) + "\" association=\"" + id(7) +
                                       "\"")) +
              element("Class", 5, "name=\"B\" superClass=\"" + id(3) + "\"",
                      attribute(6, "name=\"a\" type=\"" + id(3) + "\" association=\"" + id(7) + "\"",
                                "<ownedComment xmi:type=\"ZEL:Comment\" xmi:id=\"" + id(8) + "\" body=\"text\"/>")) +
              element("Association", 7, "name=\"A_B\" memberEnd=\"" + id(6) + " " + id(4) + "\"") +
              element("Package", 9, "name=\"P\"",
                      "<packagedElement xmi:type=\"ZEL:Enumeration\" xmi:id=\"" + id(10) + "\" name=\"E\"/>"));
    std::string const path = folder.path("written.xmi");
    ASSERT_TRUE(XmiWriter().write(path, model));
    std::string const written = folder.content("written.xmi");
    reader.setMerger(new Merger(model));
    EXPECT_EQ(model, reader.read(path));
    EXPECT_TRUE(reader.report().isEmpty());
    ASSERT_TRUE(XmiWriter().write(path, model));
    EXPECT_EQ(written, folder.content("written.xmi"));
    MetaModel const copy(XmiReader().read(path));
    ASSERT_TRUE(XmiWriter().write(path, copy));
    EXPECT_EQ(written, folder.content("written.xmi")) << "and so does reading it into a new model";
}

TEST_F(Merging, LeavesFactoryAndModelInWorkingOrder) {
    MetaModel const model = start(element("Class", 3, "name=\"A\""));
    Factory const factory = model.getFactoryFactory();
    model.beginTransaction();
    Comment const loose = factory.createComment();
    model.commitTransaction();
    merge(model, document(ReaderTest::model("")));
    ASSERT_TRUE(factory.isValid());
    EXPECT_TRUE(loose.isValid()) << "a file knows nothing of objects without a container";
    model.beginTransaction();
    EXPECT_TRUE(factory.createClass().isValid());
    EXPECT_EQ("(nothing)", raisedText([&] { model.destroy(); }));
    model.cancelTransaction();
}

TEST_F(Merging, OfAnotherModelEmptiesTheGivenOneAndGivesTheOther) {
    MetaModel const model = start(element("Class", 3, "name=\"A\""));
    MetaModel const other(merge(model, document(ReaderTest::model(element("Class", 3, "name=\"B\""), "other-uuid"))));
    ASSERT_TRUE(other.isValid());
    EXPECT_NE(model, other);
    EXPECT_EQ("other-uuid", other.getUuidBase().str());
    ASSERT_TRUE(model.isValid());
    EXPECT_FALSE(model.getTopPackage().isValid());
    model.undo();
    EXPECT_EQ("A", named(model, "A").getName().str());
}

TEST_F(Merging, OfAFileWithoutAModelChangesNothing) {
    MetaModel const model = start(element("Class", 3, "name=\"A\""));
    std::string const before = snapshot(model);
    int const steps = model.getUndoStackLength();
    std::string otherVersion = document(ReaderTest::model(""));
    otherVersion.replace(otherVersion.find("2.1"), 3, "2.0");
    for (std::string const & text : {otherVersion, document(""), document("<x:M xmlns:x=\"urn:x\"/>"),
                                     document("<ZEL:Class xmi:id=\"" + id(3) + "\" name=\"top\"/>")}) {
        EXPECT_FALSE(merge(model, text).isValid()) << text;
        EXPECT_EQ(before, snapshot(model)) << text;
        EXPECT_EQ(steps, model.getUndoStackLength()) << text;
    }
}

TEST_F(Merging, ThatFailsLeavesTheModelAsItWas) {
    MetaModel const model =
        start(element("Class", 3, "name=\"A\"") + element("Class", 4, "name=\"B\" superClass=\"" + id(3) + "\""));
    std::string const before = snapshot(model);
    std::string const text =
        document(ReaderTest::model(element("Class", 50, "name=\"N\"") + element("Class", 3, "name=\"A2\"")));
    EXPECT_NE("(nothing)", raisedText([&] { merge(model, text.substr(0, text.size() - 12)); }));
    EXPECT_EQ(before, snapshot(model));
    EXPECT_THAT(
        raisedText([&] { merge(model, document(ReaderTest::model(element("Class", 50) + element("Class", 50)))); }),
        ::testing::StartsWith("Attempt to overwrite object "));
    EXPECT_EQ(before, snapshot(model));

    MetaModel const repaired(merge(model, text));
    EXPECT_EQ(model, repaired) << "ids of the failed reads are free again";
    EXPECT_THAT(names(model.getTopPackage().getPackagedElements()), ElementsAre("A2", "N"));
}

TEST_F(Merging, CanBringBackAnIdThatWasDestroyed) {
    std::string const both = element("Class", 3, "name=\"A\"") + element("Class", 5, "name=\"B\"");
    MetaModel const model = start(both);
    Class const first = classNamed(model, "B");
    merge(model, document(ReaderTest::model(element("Class", 3, "name=\"A\""))));
    EXPECT_FALSE(first.isValid());
    merge(model, document(ReaderTest::model(both)));
    Class const second = classNamed(model, "B");
    EXPECT_EQ(5, second.getId());
    EXPECT_EQ(second, model.getObjectById(Integer(5)));
    model.undo();
    model.undo();
    EXPECT_TRUE(first.isValid());
    EXPECT_EQ(first, model.getObjectById(Integer(5)));
}

TEST_F(Merging, KeepsAnObjectThatIsOnlyLinkedTo) {
    MetaModel const model = start(element("Class", 3, "name=\"A\"") + element("Class", 4, "name=\"B\""));
    Class const a = classNamed(model, "A");
    Class const b = classNamed(model, "B");
    Merger merger(model);
    merger.initialize();
    Class const kept(
        merger.createObject(model, "", "packagedElement", "http://schema.omg.org/spec/MOF/2.0", "Class", id(3)));
    EXPECT_EQ(a, kept);
    EXPECT_TRUE(merger.setProperty(a, Class::MetaClass().getProperty(String("superClass")), b));
    EXPECT_FALSE(merger.setProperty(a, Class::MetaClass().getProperty(String("ownedMember")), model));
    static_cast<void>(
        merger.createObject(model, "", "topPackage", "http://schema.omg.org/spec/MOF/2.0", "Package", id(2)));
    merger.teardown();
    EXPECT_TRUE(b.isValid());
    ASSERT_EQ(1, a.getSuperClasses().size());
    EXPECT_EQ(b, a.getSuperClasses().at(0));
    EXPECT_THAT(merger.getReferredModels(), IsEmpty());
}

TEST_F(Merging, EndsTheInnerTransactionOfItsCallerOnCommitAndAllOnAbort) {
    MetaModel const model = start(element("Class", 3, "name=\"A\""));
    model.beginTransaction();
    model.setName(String("outer"));
    merge(model, document(ReaderTest::model("")));
    EXPECT_EQ("m", model.getName().str());
    model.cancelTransaction();
    EXPECT_EQ("A", named(model, "A").getName().str());

    model.beginTransaction();
    EXPECT_NE("(nothing)", raisedText([&] { merge(model, "<broken"); }));
    EXPECT_RAISES("transaction not started", model.commitTransaction());
}

// --- making objects and setting values --------------------------------------------------------------------------------

class MergerAlone : public ReaderTest {
protected:
    static constexpr char kUri[] = "http://schema.omg.org/spec/MOF/2.0";
    Merger merger;
};

TEST_F(MergerAlone, FindsTheFactoryByTypeAndThenByRole) {
    merger.initialize();
    Model const model(merger.createObject(Model(), kUri, "MetaModel", kUri, "MetaModel", std::string("_zel_") + kUuid));
    ASSERT_TRUE(model.isValid());
    ASSERT_EQ(1u, merger.getReferredModels().size());
    struct Case {
        char const * uri;
        char const * role;
        char const * typeUri;
        char const * type;
        int id;
        char const * made;
    };
    for (Case const & c :
         {Case{"", "packagedElement", kUri, "Class", 7, "ZEL.Class"},
          Case{kUri, "Comment", "urn:unknown", "X", 8, "ZEL.Comment"}, Case{kUri, "Comment", "", "", 0, "ZEL.Comment"},
          Case{"", "ownedComment", "", "", 9, ""}, Case{"", "packagedElement", kUri, "Classifier", 10, ""},
          Case{"", "packagedElement", kUri, "Class", 1, "ZEL.Class"}}) {
        ClassObject const made =
            merger.createObject(model, c.uri, c.role, c.typeUri, c.type, c.id == 0 ? "other" : id(c.id));
        ASSERT_EQ(*c.made != '\0', made.isValid()) << c.role << " " << c.type;
        if (made.isValid()) {
            EXPECT_EQ(c.made, made.getFullyQualifiedOrcaTypeName().str());
            EXPECT_EQ(c.id > 1, made.getId() == c.id) << "the model's own id is taken";
        }
    }
    EXPECT_THAT(log.texts(), ElementsAre("Unable to create factory for {}ownedComment with type {}"));
    merger.teardown();
    EXPECT_TRUE(model.isValid());
    EXPECT_THAT(merger.getReferredModels(), IsEmpty());
}

TEST_F(MergerAlone, GivesFalseForWhatAPropertyRefusesAndLeavesTheObjectAlone) {
    merger.initialize();
    MetaModel const model(merger.createObject(Model(), kUri, "MetaModel", kUri, "MetaModel", ""));
    Class const a(merger.createObject(model, "", "x", kUri, "Class", ""));
    Package const package(merger.createObject(model, "", "x", kUri, "Package", ""));
    auto const property = [](char const * name) { return Class::MetaClass().getProperty(String(name)); };
    EXPECT_TRUE(merger.setProperty(a, property("name"), "A"));
    EXPECT_TRUE(merger.setProperty(a, property("isAbstract"), "true"));
    EXPECT_FALSE(merger.setProperty(a, property("isAbstract"), "0"));
    EXPECT_TRUE(a.isAbstract());
    EXPECT_FALSE(merger.setProperty(a, property("qualifiedName"), "Q"));
    ImmutableProperty const contents = Package::MetaClass().getProperty(String("packagedElement"));
    EXPECT_TRUE(merger.setProperty(package, contents, package.isValid() ? ClassObject(a) : ClassObject()));
    EXPECT_FALSE(merger.setProperty(package, contents, package));
    EXPECT_THAT(
        log.texts(),
        ElementsAre("Unable to create property isAbstract on object A with value 0: Can't convert string '0' to bool",
                    "Unable to create property qualifiedName on object A with value Q: qualifiedName is a read-only "
                    "derived property so you cannot use the set property method!",
                    "Unable to set property packagedElement on [noname] to [noname] : Cyclic composition"));
    merger.abort();
}

TEST_F(MergerAlone, RefusesAnInvalidModel) {
    EXPECT_RAISES("Input model is invalid!", merger.addReferredModel(Model()));
    EXPECT_RAISES("Input model is invalid!", Merger(Model()));
}

/// Names objects by their names, makes classes of everything, and takes note of the steps.
class Custom : public Merger {
public:
    Custom(Model const & model, std::vector<std::string> & calls) : Merger(model), fCalls(calls) {}
    std::string getExternalId(ClassObject object) override {
        ImmutableNamedElement const element(object);
        return element.isValid() ? element.getName().str() : "model";
    }

protected:
    bool initializeImpl() override { return note("initialize"); }
    bool teardownImpl() override { return note("teardown"); }
    bool abortImpl() override { return note("abort"); }
    ClassObject createObjectImpl(Model model, std::string const & uri, std::string const & roleName,
                                 std::string const & typeUri, std::string const & typeName,
                                 std::string const & id) override {
        fCalls.push_back("make " + id);
        return Merger::createObjectImpl(model, uri, roleName, typeUri, typeName == "Package" ? "Class" : typeName, "");
    }

private:
    bool note(char const * step) {
        fCalls.push_back(step);
        return false;
    }
    std::vector<std::string> & fCalls;
};

TEST_F(Merging, GoesThroughTheHooksOfASubclass) {
    MetaModel const model = start(element("Class", 3, "name=\"A\""));
    Class const a = classNamed(model, "A");
    std::vector<std::string> calls;
    reader.setMerger(new Custom(model, calls));
    std::string const text = document(
        "<ZEL:MetaModel xmi:id=\"m\" name=\"m\"><topPackage xmi:type=\"ZEL:Package\" xmi:id=\"top\" name=\"top\">"
        "<packagedElement xmi:type=\"ZEL:Class\" xmi:id=\"A\" name=\"A\"/>"
        "<packagedElement xmi:type=\"ZEL:Package\" xmi:id=\"P\" name=\"P\"/></topPackage></ZEL:MetaModel>");
    EXPECT_EQ(model, reader.read(file("in.xmi", text)));
    EXPECT_EQ(a, named(model, "A"));
    EXPECT_TRUE(classNamed(model, "P").isValid());
    EXPECT_THAT(calls, ElementsAre("initialize", "make P", "teardown", "abort")) << "an abort follows a teardown too";
}

/// Calls a function at each completed object.
class AtCreation : public Transformer {
public:
    explicit AtCreation(boost::function<void()> const & call) {
        setOnCreate([call](Context const &, ClassObject const &) { call(); });
    }
};

TEST_F(Merging, ByACopyInBetweenLeavesTheOriginalAtWork) {
    auto const original = std::make_shared<Merger>();
    std::string const inner = file("inner.xmi", document(ReaderTest::model("", "inner")));
    reader.setMerger(original);
    reader.addTransformer(new AtCreation([&, idle = Merger(*original)] {
        XmiReader other;
        other.setMerger(std::make_shared<Merger>(idle));
        EXPECT_TRUE(other.read(inner).isValid());
    }));
    MetaModel const model = readModel(element("Class", 3, "name=\"A\"", attribute(4, "type=\"" + id(3) + "\"")));
    EXPECT_EQ("A", classNamed(model, "A").getOwnedAttributes().at(0).getType().getName().str());
}

TEST_F(Merging, WorksInADeviantAndLeavesTheRootAlone) {
    MetaModel const root = start(element("Class", 3, "name=\"A\""));
    MetaModel const draft = root.createDeviantWithName(String("draft"));
    EXPECT_EQ(draft, merge(draft, document(ReaderTest::model(element("Class", 3, "name=\"A2\"") +
                                                             element("Class", 9, "name=\"N\"")))));
    EXPECT_THAT(names(draft.getTopPackage().getPackagedElements()), ElementsAre("A2", "N"));
    EXPECT_THAT(names(root.getTopPackage().getPackagedElements()), ElementsAre("A"));
}

} // namespace
} // namespace ZEL::Serializer::Test
