#include "kernel/ZEL/metamodel/ModelFixture.h"

#include <ZEL/sequences/SequenceBuilder.h>
#include <ZEL/serializer/ObjectId.h>

#include <limits>

namespace ZEL::tests {
namespace {

char const kDead[] = "object accessed after its model has been destroyed";

struct ModelTest : ModelFixture {};

TEST_F(ModelTest, IsNewWithItsFactoryAndTheFirstNumber) {
    EXPECT_EQ(1, model.getId());
    EXPECT_EQ(2, model.getNextIdValue());
    EXPECT_TRUE(model.hasNextIdValue());
    EXPECT_EQ(model, model.getModelZEL());
    EXPECT_EQ(model, model.getRootModel());
    EXPECT_FALSE(model.hasContainerZEL());
    EXPECT_EQ(0, model.getUnparented().size());
    ASSERT_TRUE(factory.isValid());
    EXPECT_EQ(factory, model.getFactory());
    EXPECT_EQ(model, factory.getModelZEL());
    EXPECT_EQ(model, factory.getModel());
    EXPECT_FALSE(factory.hasContainerZEL());
    EXPECT_EQ(-1, factory.getId());
    EXPECT_EQ(50, model.getMaximumUndoStackLength());
    EXPECT_EQ(0, model.getUndoStackLength());
    EXPECT_FALSE(model.hasUri());
    EXPECT_EQ(MetaModel::MetaClass(), model.getMetaClass());
}

TEST_F(ModelTest, LivesOnWhenAListGivesBackCountsThatItNeverTook) {
    open();
    Class const former = factory.createClass();
    Class object = factory.createClass();
    for (ClassObject const & victim : {ClassObject(object), ClassObject(factory)}) {
        Sequence<ClassObject> const list = Generic::SequenceBuilder{model.getRootDeviant()}.create<ClassObject>();
        for (int i = 0; victim.getImplementation()->numRef() > 0 && i < 100; ++i) {
            list.push_back(former);
            list.replace(0, victim);
            list.clear();
        }
        list.push_back(former);
        list.replace(0, victim);
        list.clear();
        EXPECT_EQ(0, victim.getImplementation()->numRef());
    }
    EXPECT_RAISES("Decrementing the ref count of a ref with count already 0", object.getImplementation()->decRef());
    Integer const id = object.getId();
    object = former; // a handle without a count, as there are more at the end of the test
    model.commitTransaction();
    model.undo();
    model.redo();
    model.clearUndoStack();
    EXPECT_TRUE(model.getObjectById(id).isValid());
    EXPECT_EQ(factory, model.getFactory());
}

TEST_F(ModelTest, HasAUuidOfItsOwnThatNamesItsObjects) {
    std::string const uuid = model.getUuidBase().str();
    EXPECT_THAT(uuid, testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
    EXPECT_NE(uuid, Factory::createNewModel().getUuidBase().str());
    EXPECT_EQ(uuid, model.getSiid().str());
    EXPECT_EQ(uuid, model.getStringSiid().str());
    change([&] {
        Comment const comment = factory.createComment();
        EXPECT_EQ(uuid + "_2", comment.getSiid().str());
        std::string const text = getPrefixedId(comment.getSiid().str());
        EXPECT_EQ("_zel_" + uuid + "_2", text);
        EXPECT_EQ(2, getIdValue(text));
        EXPECT_EQ(uuid, getUuidValue(text));
        model.setUuidBase(String("u"));
        EXPECT_EQ("u_2", comment.getSiid().str());
    });
    EXPECT_NO_THROW(model.setUuidBase(String("u")));
}

TEST_F(ModelTest, NumbersItsObjectsInTheOrderOfCreationAndAfterThoseFromOutside) {
    open();
    Comment const first = factory.createComment();
    Class const second = factory.create<Class>();
    EXPECT_EQ(2, first.getId());
    EXPECT_EQ(3, second.getId());
    EXPECT_EQ(4, model.getNextIdValue());
    EXPECT_EQ(first, model.getObjectById(Integer(2)));
    EXPECT_EQ(model, model.getObjectById(Integer(1)));
    for (int const id : {4, -1, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_FALSE(model.getObjectById(Integer(id)).isValid()) << id;
    }
    EXPECT_EQ(first, model.getUnparented().at(0));
    EXPECT_EQ(model, first.getModelZEL());
    EXPECT_TRUE(first.hasId());

    EXPECT_EQ(10, ClassObject(factory.createFromString(String("ZEL.Comment"), Integer(10))).getId());
    EXPECT_EQ(11, model.getNextIdValue());
    Class const low(factory.createFromString(String("ZEL.Class"), Integer(5)));
    EXPECT_EQ(low, model.getObjectById(Integer(5)));
    EXPECT_EQ(11, factory.createComment().getId());
}

TEST_F(ModelTest, RefusesANumberThatIsTaken) {
    open();
    Comment const comment = factory.createComment();
    Class const object = factory.createClass();
    EXPECT_RAISES(
        "Attempt to overwrite object (id = '2'; type = 'ZEL.Comment') with object (id = '2; type = 'ZEL.Class')",
        model.setObjectId(object, Integer(2)));
    EXPECT_EQ(3, object.getId());
    EXPECT_EQ(comment, model.getObjectById(Integer(2)));
    EXPECT_RAISES(
        "Attempt to overwrite object (id = '2'; type = 'ZEL.Comment') with object (id = '2; type = 'ZEL.Package')",
        factory.createFromString(String("ZEL.Package"), Integer(2)));
    MetaModel const other = Factory::createNewModel();
    EXPECT_RAISES(kInternalError, other.setObjectId(object, Integer(9)));
    EXPECT_RAISES(kInternalError, other.handleObjectById(Integer(9), object, Integer(0)));
    EXPECT_RAISES(kInternalError, object.setModelZEL(other));
    EXPECT_RAISES("Internal id value overflow!", model.setObjectId(object, Integer(-5)));
    EXPECT_RAISES("Internal id value overflow!", object.setId(Integer(-1)));
    EXPECT_EQ(3, object.getId());
    EXPECT_EQ(model, object.getModelZEL());
    EXPECT_THAT(model.getUnparented(), ElementsAre(comment, object));
    EXPECT_EQ(4, model.getNextIdValue());
    EXPECT_EQ(model, model.handleObjectById(Integer(1), object, Integer(0)));
    EXPECT_EQ(3, object.getId());
    EXPECT_EQ(object, model.handleObjectById(Integer(3), ClassObject(), Integer(1)));
    EXPECT_FALSE(model.handleObjectById(Integer(3), ClassObject(), Integer(2)).isValid());
}

TEST_F(ModelTest, RunsOutOfNumbersAfterTheLargest) {
    open();
    constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max();
    model.setNextIdValue(Integer(kLast));
    Comment const last = factory.createComment();
    EXPECT_EQ(kLast, last.getId());
    EXPECT_EQ(last, model.getObjectById(Integer(kLast)));
    EXPECT_LT(model.getNextIdValue(), 1);
    EXPECT_RAISES("Internal id value overflow!", factory.createComment());
    EXPECT_RAISES("Internal id value overflow!", model.setObjectId(last, Integer(7)));
    EXPECT_EQ(1, model.getUnparented().size());
}

TEST_F(ModelTest, MakesObjectsByTheNamesOfTheirClasses) {
    open();
    EXPECT_EQ("ZEL.Expression",
              factory.createFromString(String("ZEL.Expression")).getFullyQualifiedOrcaTypeName().str());
    for (char const * const name : {"ZEL.Element", "ZEL.NoSuch", "", "ZEL.MetaModel", "ZEL.Factory", "zel.comment"}) {
        EXPECT_FALSE(factory.createFromString(String(name)).isValid()) << name;
        EXPECT_FALSE(factory.createFromString(String(name), Integer(77)).isValid()) << name;
    }
    EXPECT_EQ(1, model.getUnparented().size());
}

TEST_F(ModelTest, MakesObjectsWithWhatTheirCreatorsAreGiven) {
    open();
    Package const package = factory.createPackage(String("P"));
    Class const object = factory.createClass();
    EXPECT_EQ("P", package.getName().str());
    EXPECT_EQ("R", factory.createProfile(String("R")).getName().str());
    Expression const expression = factory.createExpression();
    EXPECT_EQ(expression, factory.createConstraint(expression).getSpecification());
    PackageImport const packageImport = factory.createPackageImport(package, object);
    EXPECT_EQ(package, packageImport.getImportedPackage());
    EXPECT_EQ(object, packageImport.getContainerZEL());
    PackageMerge const merge = factory.createPackageMerge(PackageMergeKind(PackageMergeKind::Define), package, package);
    EXPECT_EQ(PackageMergeKind(PackageMergeKind::Define), merge.getMergeType());
    EXPECT_EQ(package, merge.getReceivingPackage());
    EXPECT_EQ(package, merge.getMergedPackage());
    Stereotype const stereotype = factory.createStereotype();
    ExtensionEnd const end = factory.createExtensionEnd(stereotype, Boolean(true));
    EXPECT_EQ(stereotype, end.getStereotypeType());
    EXPECT_TRUE(end.isRequired());
}

TEST_F(ModelTest, MakesObjectsOnlyWithinATransactionAndNumbersThemForEver) {
    MetaModel const other = openModel(); // whose transaction is not this model's
    EXPECT_THROW(static_cast<void>(factory.createComment()), Exception);
    EXPECT_EQ(2, model.getNextIdValue());
    Comment const comment = make<Comment>();
    model.undo();
    EXPECT_FALSE(comment.isValid());
    EXPECT_EQ(0, model.getUnparented().size());
    EXPECT_FALSE(model.getObjectById(Integer(2)).isValid());
    model.redo();
    EXPECT_EQ(comment, model.getObjectById(Integer(2)));
    open();
    Comment const cancelled = factory.createComment();
    model.cancelTransaction();
    EXPECT_FALSE(cancelled.isValid());
    EXPECT_EQ(3, cancelled.getId());
    EXPECT_THAT(model.getUnparented(), ElementsAre(comment));
}

TEST_F(ModelTest, UsesANumberAgainOnceItsObjectHasEnded) {
    open();
    factory.createComment().destroy();
    Class const second(factory.createFromString(String("ZEL.Class"), Integer(2)));
    EXPECT_EQ(second, model.getObjectById(Integer(2)));
}

TEST(ModelDeath, LeavesItsObjectsWithATextForEachAccess) {
    Class object;
    Comment comment;
    Factory factory;
    Sequence<Property> attributes;
    MetaModel const other = openModel();
    Property const property = other.getFactoryFactory().createProperty();
    {
        MetaModel const model = openModel();
        factory = model.getFactoryFactory();
        object = factory.createClass();
        comment = factory.createComment();
        comment.setOwner(object);
        attributes = object.getOwnedAttributes();
        property.setType(object);
        model.commitTransaction();
    }
    EXPECT_FALSE(object.isValid() || factory.isValid());
    NamedCall const rows[] = {
        {"get", [&] { return object.getName(); }},
        {"has", [&] { return comment.hasBody(); }},
        {"reference", [&] { return comment.getOwner(); }},
        {"set", [&] { object.setName(String("n")); }},
        {"setOwner", [&] { comment.setOwner(Element()); }},
        {"reflection", [&] { return object.getOne(String("name")); }},
        {"sequence", [&] { return attributes.size(); }},
        {"push", [&] { attributes.push_back(Property()); }},
        {"siid", [&] { return object.getSiid(); }},
        {"create", [&] { return factory.createComment(); }},
        {"create by name", [&] { return factory.createFromString(String("ZEL.Comment")); }},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_RAISES(kDead, row.call());
    }
    EXPECT_NO_THROW(object.destroy());
    EXPECT_EQ(2, object.getId());
    EXPECT_EQ("ZEL.Class", object.getMetaClass().getQualifiedName().str());
    EXPECT_EQ("ZEL.Class", object.getFullyQualifiedOrcaTypeName().str());

    // A reference of another model is harmless.
    EXPECT_TRUE(property.hasType());
    EXPECT_FALSE(property.getType().isValid());
    property.removeType();
    EXPECT_FALSE(property.hasType());
    other.commitTransaction();
}

TEST_F(ModelTest, EndsWithAllItsObjectsAndComesBack) {
    Package const package = make<Package>();
    Class const object = make<Class>();
    Class const loose = make<Class>();
    change([&] {
        model.setTopPackage(package);
        object.setPackage(package);
    });
    Factory const second = Factory::createNewFactory(model);
    int const next = model.getNextIdValue();
    change([&] {
        model.destroy();
        EXPECT_THROW(static_cast<void>(second.createClass()), Exception);
    });
    EXPECT_EQ(next, model.getNextIdValue());
    EXPECT_FALSE(object.isValid());
    EXPECT_FALSE(loose.isValid());
    EXPECT_FALSE(model.isValid());
    model.getDeviant().undo();
    EXPECT_TRUE(model.isValid());
    EXPECT_EQ(package, object.getPackage());
    EXPECT_EQ(loose, model.getUnparented().at(0));
    EXPECT_TRUE(factory.isValid());
}

TEST_F(ModelTest, LosesNoObjectThatCannotEndForWantOfItsModel) {
    open();
    Package const package = factory.createPackage();
    Class const object = factory.createClass();
    object.setPackage(package);
    object.removeModelZEL();
    EXPECT_RAISES(kNullRef, object.destroy());
    EXPECT_EQ(object, package.getPackagedElements().at(0));
    object.setModelZEL(model);
}

TEST_F(ModelTest, IsNotWrittenThroughAView) {
    struct Writer : ListenerBase {
        void modifyOnCommit(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) {
            Comment const before(report.modified.at(0));
            before.setDeviant(report.sourceDeviant);
            bool const assertions = DeviantAssertions::enableAssertions(false);
            EXPECT_RAISES(" Deviant '<internal: transaction>' not opened for transactions.\n"
                          "Attempt to modify object of type 'ZEL.Comment' [id = 2 ] ",
                          before.setBody(String("c")));
            DeviantAssertions::enableAssertions(assertions);
        }
    } writer;
    Comment const comment = make<Comment>();
    registerModifierOnCommit(model.getDeviant(), writer);
    change([&] { comment.setBody(String("b")); });
    EXPECT_EQ("b", comment.getBody().str());
    model.getDeviant().unregisterModifierOnCommit(&writer);
}

TEST_F(ModelTest, EndsWithTheWorkDuringWhichItsLastHandleGoes) {
    struct LastHolder : ListenerBase {
        explicit LastHolder(MetaModel const & held) : model(held) {}
        void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const &) { drop(); }
        void onDeviantDestroyed() override { drop(); }
        void drop() { model = MetaModel(); }

        MetaModel model;
    };
    auto const modelWithHistory = [] {
        MetaModel const made = Factory::createNewModel();
        for (char const * const name : {"1", "2", "3", "4"}) {
            made.beginTransaction(name);
            made.setName(name);
            made.commitTransaction();
        }
        return made;
    };
    std::pair<char const *, std::function<void(LastHolder &, Deviant)>> const works[] = {
        {"undo", [](LastHolder &, Deviant root) { root.undo(); }},
        {"undo on and on", [](LastHolder &, Deviant root) { root.undoToChangeLevel(1); }},
        {"redo on and on", [](LastHolder &, Deviant root) { root.redoToChangeLevel(5); }},
        {"removal", [](LastHolder & holder, Deviant) { holder.model.removeDeviantWithName(String("a")); }},
        {"removal below the model",
         [](LastHolder &, Deviant root) { root.getDeviantManager()->removeDeviantWithName("a"); }},
    };
    for (auto const & [name, work] : works) {
        SCOPED_TRACE(name);
        LastHolder holder(modelWithHistory());
        Deviant const root = holder.model.getDeviant();
        root.undo();
        root.undo();
        registerObservingListener(root, holder);
        registerObservingListener(holder.model.createDeviantWithName(String("a")).getDeviant(), holder);
        EXPECT_NO_THROW(work(holder, root));
        EXPECT_FALSE(root.isValid());
    }
}

struct Cloning : OpenModelFixture {
    Cloning() {
        object.setPackage(package);
        attribute.setClass(object);
        attribute.setType(object);
        attribute.setAssociation(factory.createAssociation());
        attribute.setLower(Integer(0));
        object.getSuperClasses().push_back(outside);
    }
    Package package = factory.createPackage(String("P"));
    Class object = factory.createClass();
    Property attribute = factory.createProperty();
    Class outside = factory.createClass();
};

TEST_F(Cloning, WithinAModelCopiesTheTreeAndKeepsLinksToTheRest) {
    Package const copy(package.clone(model));
    ASSERT_TRUE(copy.isValid());
    EXPECT_NE(package, copy);
    EXPECT_FALSE(copy.hasContainerZEL());
    EXPECT_TRUE(model.getUnparented().contains(copy));
    EXPECT_EQ("P", copy.getName().str());
    ASSERT_EQ(1, copy.getOwnedTypes().size());
    Class const objectCopy(copy.getOwnedTypes().at(0));
    EXPECT_FALSE(model.getUnparented().contains(objectCopy));
    EXPECT_EQ(copy, objectCopy.getPackage());
    ASSERT_EQ(1, objectCopy.getOwnedAttributes().size());
    Property const attributeCopy = objectCopy.getOwnedAttributes().at(0);
    EXPECT_EQ(objectCopy, attributeCopy.getType());
    EXPECT_EQ(0, attributeCopy.getLower());
    EXPECT_EQ(objectCopy, attributeCopy.getClass());
    EXPECT_THAT(outside.getSubClasses(), ElementsAre(object, objectCopy));
    EXPECT_THAT(objectCopy.getSuperClasses(), ElementsAre(outside));
    // What was, stays.
    EXPECT_THAT(object.getOwnedAttributes(), ElementsAre(attribute));
    EXPECT_EQ(object, attribute.getType());
    EXPECT_TRUE(attribute.hasAssociation());
}

TEST_F(Cloning, AcrossModelsTakesNumbersOfTheOtherModel) {
    MetaModel const other = openModel();
    Package const copy(package.clone(other));
    ASSERT_TRUE(copy.isValid());
    EXPECT_EQ(2, copy.getId());
    EXPECT_THAT(other.getUnparented(), ElementsAre(copy));
    Class const objectCopy(copy.getOwnedTypes().at(0));
    EXPECT_EQ(other, objectCopy.getModelZEL());
    EXPECT_EQ(objectCopy, objectCopy.getOwnedAttributes().at(0).getType());
    EXPECT_THAT(outside.getSubClasses(), ElementsAre(object));
    EXPECT_EQ(0, objectCopy.getSuperClasses().size());
    EXPECT_FALSE(objectCopy.getOwnedAttributes().at(0).hasAssociation());
    EXPECT_EQ(other, ClassObject(outside.clone(copy)).getModelZEL()) << "by any object of the model";
    EXPECT_RAISES(kNullRef, package.clone(ClassObject()));
}

} // namespace
} // namespace ZEL::tests
