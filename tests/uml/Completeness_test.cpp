// What must hold for every class and every property of every metamodel, by reflection alone: a new metamodel needs a row
// in the table of this file and no test of its own.

#include "host/TemporaryFolder.h"
#include "support/OneTree.h"
#include "uml/Nursery.h"

#include <GenericComponent/MetaModelRegistration.h>
#include <NumericTypes/MetaModelRegistration.h>
#include <RhapsodyPlatform/MetaModelRegistration.h>
#include <Tessel/MetaModelRegistration.h>
#include <library/MetaModelRegistration.h>
#include <prof/MetaModelRegistration.h>
#include <uml/MetaModelRegistration.h>

#include <exception>
#include <functional>
#include <ostream>

namespace ZEL::tests {

void PrintTo(TestedMetaModel const & subject, std::ostream * out) { *out << subject.name; }

namespace {

constexpr char kMofUri[] = "http://schema.omg.org/spec/MOF/2.0";
constexpr char kUmlUri[] = "http://schema.omg.org/spec/UML/2.1";

ImmutableMetaModel builtIn() { return ImmutableMetaModel(ImmutableClass::MetaClass().getRootModel()); }

TestedMetaModel const kMetaModels[] = {
    {"ZEL", &builtIn, kMofUri},
    {"prof", &prof::getMetaModel, kMofUri},
    {"library", &Library::getMetaModel, "http://example.org/library/1.0"},
    {"uml", &uml::getMetaModel, kUmlUri},
    {"NumericTypes", &NumericTypes::getMetaModel, kUmlUri},
    {"GenericComponent", &GenericComponent::getMetaModel, kUmlUri},
    {"Tessel", &Tessel::getMetaModel, kUmlUri},
    {"RhapsodyPlatform", &RhapsodyPlatform::getMetaModel, kUmlUri},
};

class Completeness : public testing::TestWithParam<TestedMetaModel> {
protected:
    static void SetUpTestSuite() {
        Logger::instance()->setDefaultHandlerLevel(LogLevel::off);
        for (auto const enter :
             {&prof::registerMetaModel, &Library::registerMetaModel, &NumericTypes::registerMetaModel,
              &GenericComponent::registerMetaModel, &Tessel::registerMetaModel, &RhapsodyPlatform::registerMetaModel}) {
            enter();
        }
    }

    /// The classes to check: the model's own among them, if the metamodel has one.
    static std::vector<ImmutableClass> classesOf(Places const & places) {
        std::vector<ImmutableClass> classes = concreteClasses(GetParam().metaModel());
        if (GetParam().metaModel() == places.modelClass.getRootModel()) {
            classes.push_back(places.modelClass);
        }
        return classes;
    }

    static bool holds(ClassObject const & object, ImmutableProperty const & property, Object const & value) {
        std::vector<Object> const values = object.get(property).toVector();
        return std::any_of(values.begin(), values.end(), [&value](Object const & held) {
            return isValueObject(held) ? held.toString() == value.toString() : held == value;
        });
    }

    static Object valueFor(Nursery const & nursery, ImmutableProperty const & property) {
        if (isDataType(property.getType())) {
            return nursery.value(property);
        }
        return property.isComposite() ? nursery.makeLoose(property.getType()) : nursery.make(property.getType());
    }

    /// Sets the property in a transaction of its own, takes that back and does it again.
    static void give(Model const & model, Nursery const & nursery, ClassObject const & object,
                     ImmutableProperty const & property) {
        ClassObject const container = object.getContainerZEL();
        int const before = object.get(property).size();
        bool const hadNone = !object.has(property);
        Transaction transaction(model.getRootDeviant());
        Object const value = valueFor(nursery, property);
        object.setOrAdd(property, value);
        transaction.commit();
        EXPECT_TRUE(holds(object, property, value));
        if (ImmutableProperty const opposite = property.getOpposite(); opposite.isValid()) {
            EXPECT_TRUE(holds(ClassObject(value), opposite, object)) << "at the other end";
        }
        if (isContainerEnd(property)) {
            EXPECT_EQ(object.getContainerZEL(), value);
        } else if (property.isComposite() && !isDataType(property.getType())) {
            EXPECT_EQ(ClassObject(value).getContainerZEL(), object);
        }
        model.undo();
        EXPECT_FALSE(holds(object, property, value)) << "after undo";
        EXPECT_EQ(object.get(property).size(), before) << "after undo";
        EXPECT_EQ(!object.has(property), hadNone) << "after undo";
        EXPECT_EQ(object.getContainerZEL(), container) << "after undo";
        model.redo();
        EXPECT_TRUE(holds(object, property, value)) << "after redo";
    }

    /// Whether a program may set the property of this object.
    static bool isWritable(Model const & model, ClassObject const & object, ImmutableProperty const & property) {
        if (property.isDerived() || property.isReadOnly() || property.getName() == "appliedStereotypeInstance") {
            return false;
        }
        if (object == model && (property.getName() == "uri" || isContainerEnd(property))) {
            return false; // a model's URI is that of its file, which the reader says; and nothing contains a model
        }
        ImmutableClass const type(property.getType());
        return !type.isValid() || !isModelOrFactory(type); // where the object is, for its whole life
    }

    void checkReadBack(Model const & model, ClassObject const & object, std::vector<ImmutableProperty> const & all) {
        std::string const file = folder.path("model.xmi");
        ASSERT_TRUE(Serializer::XmiWriter().write(file, model));
        Serializer::XmiReader reader;
        Model const again(reader.read(file));
        ASSERT_TRUE(again.isValid());
        EXPECT_TRUE(reader.report().isEmpty());
        EXPECT_TRUE(compare(model, again));
        ClassObject const objectAgain = again.getObjectById(object.getId());
        ASSERT_TRUE(objectAgain.isValid());
        EXPECT_EQ(objectAgain.getMetaClass(), object.getMetaClass());
        for (ImmutableProperty const & property : all) {
            EXPECT_EQ(objectAgain.get(property).size(), object.get(property).size()) << property.getName().str();
        }
    }

    void checkClass(ImmutableClass const & metaClass, Places const & places) {
        SCOPED_TRACE(metaClass.getQualifiedName().str());
        Model const model = FactoryRegistry::instance()->createModel(GetParam().modelUri);
        model.beginTransaction();
        Nursery const nursery(model, places);
        ClassObject const object = metaClass == places.modelClass ? ClassObject(model) : nursery.make(metaClass);
        model.commitTransaction();
        ASSERT_TRUE(Serializer::XmiWriter().write(folder.path("before.xmi"), model));
        model.clearUndoStack();

        std::vector<ImmutableProperty> all;
        for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
            SCOPED_TRACE(property.getName().str());
            if (!isWritable(model, object, property)) {
                continue;
            }
            try {
                bool const replaces = !property.isMultivalued() && property.isComposite() && object.has(property);
                give(model, nursery, object, property);
                if (isSaved(property) && !replaces && !isContainerEnd(property)) {
                    all.push_back(property);
                } else {
                    model.undo(); // no file would hold it, or what was there before
                }
            } catch (std::exception const & failure) {
                ADD_FAILURE() << failure.what();
            }
        }
        if (isRead(metaClass)) {
            checkReadBack(model, object, all);
        }
        while (model.getUndoStackLength() > 0) {
            model.undo();
        }
        if (isRead(metaClass)) {
            EXPECT_TRUE(compare(model, Serializer::XmiReader().read(folder.path("before.xmi")))) << "after undo of all";
        }
    }

    using Roads = std::map<std::string, std::function<void()>>;

    /// All roads that may put `part` where `property` of `owner` holds another one.
    static Roads roadsOf(ClassObject const & owner, ImmutableProperty const & property, ClassObject const & part) {
        Roads roads{
            {"setOrAdd", [=] { owner.setOrAdd(property, part); }},
            {"the view of the property", [=] { owner.get(property).push_back(part); }},
            {"setContainerZEL", [=] { part.setContainerZEL(owner); }},
            {"containeeZEL", [=] { owner.getContaineeZELs().push_back(part); }},
            {"one end after the other",
             [=] {
                 Deviant const deviant = owner.getDeviant();
                 part.getImplementation()->setOnlyContainerZEL(deviant, owner);
                 owner.getImplementation()->getContaineeZELsWithoutAssociation(deviant).push_back(part);
             }},
        };
        for (ImmutableProperty const & view : owner.getMetaClass().getOwnedAttributes()) {
            ImmutableClass const type(view.getType());
            if (view.isDerived() && view.isComposite() && type.isValid() && inherits(part.getMetaClass(), type)) {
                roads["setOrAdd " + view.getName().str()] = [=] { owner.setOrAdd(view, part); };
                roads["push_back " + view.getName().str()] = [=] { owner.get(view).push_back(part); };
            }
        }
        for (ImmutableProperty const & end : part.getMetaClass().getOwnedAttributes()) {
            ImmutableClass const type(end.getType());
            ImmutableProperty const opposite = end.getOpposite();
            if (opposite.isValid() && opposite.isComposite() && type.isValid() && !end.isMultivalued() &&
                inherits(owner.getMetaClass(), type)) {
                roads["the part's " + end.getName().str()] = [=] { part.setOrAdd(end, owner); };
            }
        }
        return roads;
    }

    /// Puts a second part into a property that has room for one, by every road, each taken back and done again.
    void displace(Model const & model, Nursery const & nursery, ClassObject const & owner,
                  ImmutableProperty const & property) {
        model.beginTransaction();
        if (!owner.has(property)) {
            owner.setOrAdd(property, nursery.makeLoose(property.getType()));
        }
        ClassObject const first(owner.getOne(property));
        ClassObject const second = nursery.makeLoose(property.getType());
        model.commitTransaction();
        for (auto const & [name, take] : roadsOf(owner, property, second)) {
            SCOPED_TRACE(name);
            Transaction transaction(model.getRootDeviant());
            ASSERT_NO_THROW(take());
            transaction.commit();
            bool const isDisplaced = owner.getOne(property) == second;
            auto const expectDisplaced = [&] {
                expectOneTree(model);
                EXPECT_EQ(first.hasContainerZEL(), !isDisplaced);
                EXPECT_EQ(second.getContainerZEL(), owner);
            };
            expectDisplaced();
            model.undo();
            expectOneTree(model);
            EXPECT_EQ(owner.getOne(property), first);
            model.redo();
            expectDisplaced();
            model.beginTransaction();
            EXPECT_NO_THROW(model.destroy());
            model.cancelTransaction();
            model.undo();
        }
    }

    TemporaryFolder folder;
};

TEST_P(Completeness, EveryPropertyOfEveryClassIsSetSavedReadAndUndone) {
    LeakChecker checker;
    checker.beginTrackLifetime();
    {
        Places const places(GetParam());
        for (ImmutableClass const & metaClass : classesOf(places)) {
            checkClass(metaClass, places);
        }
    }
    EXPECT_NO_THROW(checker.endTrackLifetime());
}

TEST_P(Completeness, APartThatGivesWayToAnotherHasAPlaceOfItsOwn) {
    Places const places(GetParam());
    for (ImmutableClass const & metaClass : classesOf(places)) {
        for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
            ImmutableClass const type(property.getType());
            if (property.isMultivalued() || property.isDerived() || !property.isComposite() || !type.isValid() ||
                isModelOrFactory(type)) {
                continue;
            }
            SCOPED_TRACE(metaClass.getQualifiedName().str() + "." + property.getName().str());
            Model const model = FactoryRegistry::instance()->createModel(GetParam().modelUri);
            model.beginTransaction();
            Nursery const nursery(model, places);
            ClassObject const owner = metaClass == places.modelClass ? ClassObject(model) : nursery.make(metaClass);
            model.commitTransaction();
            displace(model, nursery, owner, property);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(MetaModels, Completeness, testing::ValuesIn(kMetaModels),
                         [](auto const & info) { return std::string(info.param.name); });

} // namespace
} // namespace ZEL::tests
