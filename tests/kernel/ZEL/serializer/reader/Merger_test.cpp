#include "ReaderTest.h"

namespace ZEL::tests {
namespace {

/// Reads files into a model that is there already.
struct Merging : ReaderTest {
    Object mergeText(Model const & into, std::string const & text) {
        reader.setMerger(new Merger(into));
        return reader.read(file("in.xmi", text));
    }
    Object merge(Model const & into, std::string const & elements) {
        return mergeText(into, document(model(elements)));
    }
    /// The model; `copy` is made as well, to compare it with later.
    MetaModel start(std::string const & elements) {
        copy = readModel(elements);
        return readModel(elements);
    }

    MetaModel copy;
};

TEST_F(Merging, KeepsRefillsMakesAndDestroysInOneStepThatCanBeUndone) {
    MetaModel const model = start(element("Class", 3, "name='A' isAbstract='true' visibility='private' superClass='@4'",
                                          attribute(6, "name='a' lower='0'")) +
                                  element("Class", 4, "name='B'") + element("Class", 5, "name='C' superClass='@4'"));
    Class const a = classNamed(model, "A");
    Class const b = classNamed(model, "B");
    Property const property = a.getOwnedAttributes().at(0);

    std::string const a2 = element("Class", 3, "name='A2' superClass='@9'", attribute(6, "name='a2'"));
    std::string const c2 = element("Class", 5, "name='C2'");
    std::string const n = element("Class", 9, "name='N'");
    EXPECT_EQ(model, merge(model, n + c2 + a2));
    EXPECT_EQ(a, named(model, "A2"));
    EXPECT_EQ(property, a.getOwnedAttributeByName(String("a2")));
    EXPECT_FALSE(b.isValid());
    EXPECT_EQ(0, model.getUnparented().size());
    EXPECT_THAT(log.texts(), IsEmpty());
    EXPECT_TRUE(compare(model, readModel(a2 + c2 + n)))
        << "kept ones stay in place, and what the file leaves out is the default";

    EXPECT_EQ(2, model.getUndoStackLength());
    model.undo();
    EXPECT_TRUE(compare(model, copy));
    EXPECT_EQ(b, named(model, "B"));
    model.redo();
    EXPECT_EQ("A2", a.getName().str());
    EXPECT_FALSE(b.isValid());
}

TEST_F(Merging, ANumberOfTheFileIsTakenFromAnObjectThatTheModelNumbered) {
    MetaModel const model = start(element("Class", 3, "name='A'"));
    merge(model, "<packagedElement xmi:type='ZEL:Class' name='N'/>" + element("Class", 3, "name='A'") +
                     element("Class", 4, "name='B'"));
    model.undo();
    EXPECT_TRUE(compare(model, copy));
    model.redo();
    EXPECT_EQ(named(model, "N"), model.getObjectById(Integer(5)));
    EXPECT_EQ(named(model, "A"), model.getObjectById(Integer(3)));
    EXPECT_EQ(named(model, "B"), model.getObjectById(Integer(4)));
}

TEST_F(Merging, LeavesFactoryAndModelInWorkingOrder) {
    MetaModel const model = start(element("Class", 3, "name='A'"));
    Factory const factory = model.getFactoryFactory();
    model.beginTransaction();
    Comment const loose = factory.createComment();
    model.commitTransaction();
    merge(model, "");
    ASSERT_TRUE(factory.isValid());
    EXPECT_TRUE(loose.isValid()) << "a file knows nothing of objects without a container";
    model.beginTransaction();
    EXPECT_TRUE(factory.createClass().isValid());
    EXPECT_EQ("(nothing)", raisedText([&] { model.destroy(); }));
    model.cancelTransaction();
}

TEST_F(Merging, OfAnotherModelEmptiesTheGivenOneAndReturnsTheOther) {
    MetaModel const model = start(element("Class", 3, "name='A'"));
    MetaModel const other(mergeText(model, document(ReaderTest::model(element("Class", 3, "name='B'"), kOther))));
    ASSERT_TRUE(other.isValid());
    EXPECT_NE(model, other);
    EXPECT_EQ(kOther, other.getUuidBase().str());
    ASSERT_TRUE(model.isValid());
    EXPECT_FALSE(model.getTopPackage().isValid());
    model.undo();
    EXPECT_TRUE(compare(model, copy));
}

TEST_F(Merging, OfAFileWithoutAModelChangesNothing) {
    MetaModel const model = start(element("Class", 3, "name='A'"));
    std::string otherVersion = document(ReaderTest::model(""));
    otherVersion.replace(otherVersion.find("2.1"), 3, "2.0");
    for (std::string const & text : {otherVersion, document(""), document("<x:M xmlns:x='urn:x'/>"),
                                     document("<ZEL:Class xmi:id='@3' name='top'/>")}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(mergeText(model, text).isValid());
        EXPECT_TRUE(compare(model, copy));
        EXPECT_EQ(4, model.getNextIdValue());
        EXPECT_EQ(1, model.getUndoStackLength());
    }
}

TEST_F(Merging, AGivenModelWhoseFileBreaksEndsTheReadEvenIfFilesMayBeLeftOut) {
    MetaModel const model = start(element("Class", 3, "name='A'"));
    std::string const text =
        document(ReaderTest::model("<packagedElement xmi:type='ZEL:Class' xmi:id='@@3' name='T'/>", kOther));
    MetaModel const other(reader.read(file("other.xmi", text)));
    file("other.xmi", text.substr(0, text.size() - 40));
    settings.setSkipUnreadableExternalFiles(true);
    reader = XmiReader(settings);
    auto * const merger = new Merger(model);
    merger->addReferredModel(other);
    reader.setMerger(merger);
    std::string const link = "<superClass xmi:type='ZEL:Class' href='other.xmi#@@3'/>";
    file("in.xmi", document(ReaderTest::model(element("Class", 3, "name='B'", link))));
    EXPECT_THAT(raisedText([&] { reader.read(folder.path("in.xmi")); }),
                testing::StartsWith("Error encountered while parsing " + folder.path("other.xmi")));
    EXPECT_TRUE(compare(model, copy));
    EXPECT_THAT(elementNames(other), ElementsAre("T"));
}

TEST_F(Merging, CanBringBackAnIdThatWasDestroyed) {
    std::string const a = element("Class", 3, "name='A'");
    std::string const both = a + element("Class", 5, "name='B'");
    MetaModel const model = start(both);
    Class const first = classNamed(model, "B");
    merge(model, a);
    EXPECT_FALSE(first.isValid());
    merge(model, both);
    Class const second = classNamed(model, "B");
    EXPECT_EQ(5, second.getId());
    EXPECT_EQ(second, model.getObjectById(Integer(5)));
    model.undo();
    model.undo();
    EXPECT_TRUE(first.isValid());
    EXPECT_EQ(first, model.getObjectById(Integer(5)));
}

TEST_F(Merging, EndsTheInnerTransactionOfItsCallerOnCommitAndAllOnAbort) {
    MetaModel const model = start(element("Class", 3, "name='A'"));
    model.beginTransaction();
    model.setName(String("outer"));
    merge(model, "");
    EXPECT_EQ("m", model.getName().str());
    model.cancelTransaction();
    EXPECT_TRUE(compare(model, copy));

    model.beginTransaction();
    EXPECT_NE("(nothing)", raisedText([&] { mergeText(model, "<broken"); }));
    EXPECT_RAISES("transaction not started", model.commitTransaction());
}

TEST_F(Merging, WorksInADeviantAndLeavesTheRootAlone) {
    MetaModel const root = start(element("Class", 3, "name='A'"));
    MetaModel const draft = root.createDeviantWithName(String("draft"));
    EXPECT_EQ(draft, merge(draft, element("Class", 3, "name='A2'") + element("Class", 9, "name='N'")));
    EXPECT_THAT(elementNames(draft), ElementsAre("A2", "N"));
    EXPECT_TRUE(compare(root, copy));
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
                                 std::string const & typeUri, std::string const &, std::string const & id) override {
        note("make " + id);
        return Merger::createObjectImpl(model, uri, roleName, typeUri, "Class", "");
    }

private:
    bool note(std::string const & step) {
        fCalls.push_back(step);
        return false;
    }
    std::vector<std::string> & fCalls;
};

TEST_F(Merging, GoesThroughTheHooksOfASubclass) {
    MetaModel const model = start(element("Class", 3, "name='A'"));
    Class const a = classNamed(model, "A");
    std::vector<std::string> calls;
    reader.setMerger(new Custom(model, calls));
    EXPECT_EQ(model, read(document("<ZEL:MetaModel xmi:id='m' name='m'><topPackage xmi:type='ZEL:Package' xmi:id='top'>"
                                   "<packagedElement xmi:type='ZEL:Class' xmi:id='A' name='A'/>"
                                   "<packagedElement xmi:type='ZEL:Package' xmi:id='P' name='P'/>"
                                   "</topPackage></ZEL:MetaModel>")));
    EXPECT_EQ(a, named(model, "A"));
    EXPECT_TRUE(classNamed(model, "P").isValid());
    EXPECT_THAT(calls, ElementsAre("initialize", "make P", "teardown", "abort")) << "an abort follows a teardown too";
}

TEST_F(Merging, ByACopyInBetweenLeavesTheOriginalAtWork) {
    auto const original = std::make_shared<Merger>();
    std::string const inner = file("inner.xmi", document(model("", kOther)));
    reader.setMerger(original);
    auto const rules = std::make_shared<Rules>();
    rules->setOnCreate([&, idle = Merger(*original)](Context const &, ClassObject const &) {
        XmiReader other;
        other.setMerger(std::make_shared<Merger>(idle));
        EXPECT_TRUE(other.read(inner).isValid());
    });
    reader.addTransformer(rules);
    MetaModel const model = readModel(element("Class", 3, "name='A'", attribute(4, "type='@3'")));
    EXPECT_EQ("A", classNamed(model, "A").getOwnedAttributes().at(0).getType().getName().str());
}

// --- a Merger alone ---------------------------------------------------------------------------------------------------

struct MergerAlone : ReaderTest {
    static constexpr char kUri[] = "http://schema.omg.org/spec/MOF/2.0";

    static ImmutableProperty property(ImmutableClass const & metaClass, char const * name) {
        return metaClass.getProperty(String(name));
    }

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
        char const * id;
        char const * made;
        int number;
    };
    for (Case const & c : {Case{"", "packagedElement", kUri, "Class", "@7", "ZEL.Class", 7},
                           Case{kUri, "Comment", "urn:unknown", "X", "@8", "ZEL.Comment", 8},
                           Case{kUri, "Comment", "", "", "other", "ZEL.Comment", 9},
                           Case{"", "packagedElement", kUri, "Class", "@1", "ZEL.Class", 10}, // taken by the model
                           Case{"", "ownedComment", "", "", "@20", "", 0},
                           Case{"", "packagedElement", kUri, "Classifier", "@21", "", 0}}) {
        ClassObject const made = merger.createObject(model, c.uri, c.role, c.typeUri, c.type, filled(c.id));
        ASSERT_EQ(c.number != 0, made.isValid()) << c.role << " " << c.type;
        if (made.isValid()) {
            EXPECT_EQ(c.made, made.getFullyQualifiedOrcaTypeName().str());
            EXPECT_EQ(c.number, made.getId());
        }
    }
    EXPECT_THAT(log.texts(), ElementsAre("Unable to create factory for {}ownedComment with type {}"));
    merger.teardown();
    EXPECT_TRUE(model.isValid());
    EXPECT_THAT(merger.getReferredModels(), IsEmpty());
}

TEST_F(MergerAlone, ReturnsFalseForWhatAPropertyRefusesAndLeavesTheObjectAlone) {
    merger.initialize();
    MetaModel const model(merger.createObject(Model(), kUri, "MetaModel", kUri, "MetaModel", ""));
    Class const a(merger.createObject(model, "", "x", kUri, "Class", ""));
    Package const package(merger.createObject(model, "", "x", kUri, "Package", ""));
    ImmutableClass const metaClass = Class::MetaClass();
    EXPECT_TRUE(merger.setProperty(a, property(metaClass, "name"), "A"));
    EXPECT_TRUE(merger.setProperty(a, property(metaClass, "isAbstract"), "true"));
    EXPECT_FALSE(merger.setProperty(a, property(metaClass, "isAbstract"), "0"));
    EXPECT_TRUE(a.isAbstract());
    EXPECT_FALSE(merger.setProperty(a, property(metaClass, "qualifiedName"), "Q"));
    ImmutableProperty const contents = property(Package::MetaClass(), "packagedElement");
    EXPECT_TRUE(merger.setProperty(package, contents, a));
    EXPECT_FALSE(merger.setProperty(package, contents, package));
    EXPECT_THAT(
        log.texts(),
        ElementsAre("Unable to create property isAbstract on object A with value 0: Can't convert string '0' to bool",
                    "Unable to create property qualifiedName on object A with value Q: qualifiedName is a read-only "
                    "derived property so you cannot use the set property method!",
                    "Unable to set property packagedElement on [noname] to [noname] : Cyclic composition"));
    merger.abort();
}

TEST_F(MergerAlone, KeepsAnObjectThatIsOnlyLinkedTo) {
    MetaModel const model = readModel(element("Class", 3, "name='A'") + element("Class", 4, "name='B'"));
    Class const a = classNamed(model, "A");
    Class const b = classNamed(model, "B");
    merger = Merger(model);
    merger.initialize();
    EXPECT_EQ(a, merger.createObject(model, "", "packagedElement", kUri, "Class", filled("@3")));
    EXPECT_TRUE(merger.setProperty(a, property(Class::MetaClass(), "superClass"), b));
    static_cast<void>(merger.createObject(model, "", "topPackage", kUri, "Package", filled("@2")));
    merger.teardown();
    ASSERT_EQ(1, a.getSuperClasses().size());
    EXPECT_EQ(b, a.getSuperClasses().at(0));
}

TEST_F(MergerAlone, RefusesAnInvalidModel) {
    EXPECT_RAISES("Input model is invalid!", merger.addReferredModel(Model()));
    EXPECT_RAISES("Input model is invalid!", Merger(Model()));
}

} // namespace
} // namespace ZEL::tests
