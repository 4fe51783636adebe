// What must hold for every class and every property of every metamodel, by reflection alone: a new metamodel needs a row
// in the table of this file and no test of its own.

#include "host/TemporaryFolder.h"
#include "uml/Metaclasses.h"

#include <ZEL/FactoryRegistry.h>
#include <ZEL/LeakChecker.h>
#include <ZEL/Logger.h>
#include <ZEL/PersistenceKind.h>
#include <ZEL/Transaction.h>
#include <ZEL/ZEL.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/serializer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/RandomModelGenerator.h>
#include <ZEL/tools/TypePredicates.h>

#include <GenericComponent/MetaModelRegistration.h>
#include <NumericTypes/MetaModelRegistration.h>
#include <RhapsodyPlatform/MetaModelRegistration.h>
#include <Tessel/MetaModelRegistration.h>
#include <gtest/gtest.h>
#include <library/MetaModelRegistration.h>
#include <prof/MetaModelRegistration.h>
#include <uml/MetaModelRegistration.h>

#include <exception>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace ZEL::Test {

void PrintTo(Subject const & subject, std::ostream * out) { *out << subject.name; }

namespace {

constexpr char kMofUri[] = "http://schema.omg.org/spec/MOF/2.0";
constexpr char kUmlUri[] = "http://schema.omg.org/spec/UML/2.1";
constexpr char kLibraryUri[] = "http://example.org/library/1.0";

ImmutableMetaModel builtIn() { return ImmutableMetaModel(ImmutableClass::MetaClass().getRootModel()); }

Subject const kSubjects[] = {
    {"ZEL", &builtIn, kMofUri, &builtIn},
    {"prof", &prof::getMetaModel, kMofUri, &builtIn},
    {"library", &Library::getMetaModel, kLibraryUri, &Library::getMetaModel},
    {"uml", &uml::getMetaModel, kUmlUri, &uml::getMetaModel},
    {"NumericTypes", &NumericTypes::getMetaModel, kUmlUri, &uml::getMetaModel},
    {"GenericComponent", &GenericComponent::getMetaModel, kUmlUri, &uml::getMetaModel},
    {"Tessel", &Tessel::getMetaModel, kUmlUri, &uml::getMetaModel},
    {"RhapsodyPlatform", &RhapsodyPlatform::getMetaModel, kUmlUri, &uml::getMetaModel},
};

/// A property and the value that the test gave it.
struct Given {
    ImmutableProperty property;
    Object value;
};

class Completeness : public testing::TestWithParam<Subject> {
protected:
    static void SetUpTestSuite() {
        Logger::instance()->setDefaultHandlerLevel(LogLevel::off);
        for (auto const enter :
             {&prof::registerMetaModel, &Library::registerMetaModel, &NumericTypes::registerMetaModel,
              &GenericComponent::registerMetaModel, &Tessel::registerMetaModel, &RhapsodyPlatform::registerMetaModel}) {
            enter();
        }
    }

    static Model newModel() { return FactoryRegistry::instance()->createModel(GetParam().modelUri); }

    static void inTransaction(Model const & model, std::function<void()> const & change) {
        Transaction transaction(model.getRootDeviant());
        change();
        transaction.commit();
    }

    static bool holds(ClassObject const & object, Given const & given) {
        for (Object const & value : object.get(given.property)) {
            if (isValueObject(value) ? value.toString() == given.value.toString() : value == given.value) {
                return true;
            }
        }
        return false;
    }

    /// Sets the property in a transaction of its own, takes that back and does it again.
    static Given give(Model const & model, Nursery & nursery, ClassObject const & object,
                      ImmutableProperty const & property) {
        Given given{property, {}};
        int const before = object.get(property).size();
        bool const hadNone = !object.has(property);
        inTransaction(model, [&] {
            if (isDataType(property.getType())) {
                given.value = nursery.value(property);
            } else {
                ImmutableType const type = property.getType();
                given.value = property.isComposite() ? nursery.makeLoose(type) : nursery.make(type);
            }
            object.setOrAdd(property, given.value);
        });
        EXPECT_TRUE(holds(object, given));
        if (ImmutableProperty const opposite = property.getOpposite(); opposite.isValid()) {
            EXPECT_TRUE(holds(ClassObject(given.value), {opposite, object})) << "at the other end";
        }
        if (property.isComposite() && !isDataType(property.getType())) {
            EXPECT_EQ(ClassObject(given.value).getContainerZEL(), object);
        }
        model.undo();
        EXPECT_FALSE(holds(object, given)) << "after undo";
        EXPECT_EQ(object.get(property).size(), before) << "after undo";
        EXPECT_EQ(!object.has(property), hadNone) << "after undo";
        model.redo();
        EXPECT_TRUE(holds(object, given)) << "after redo";
        return given;
    }

    /// A container is given from both sides, which exclude each other: this one is taken back.
    static void giveContainer(Model const & model, Nursery & nursery, ClassObject const & object,
                              ImmutableProperty const & property) {
        ClassObject const before = object.getContainerZEL();
        ClassObject container;
        inTransaction(model, [&] {
            container = nursery.make(property.getType());
            object.setOrAdd(property, container);
        });
        EXPECT_EQ(object.getContainerZEL(), container);
        EXPECT_TRUE(holds(container, {property.getOpposite(), object})) << "at the other end";
        model.undo();
        EXPECT_EQ(object.getContainerZEL(), before) << "after undo";
    }

    void checkReadBack(Model const & model, ClassObject const & object, std::vector<Given> const & all) {
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
        for (Given const & given : all) {
            EXPECT_EQ(objectAgain.get(given.property).size(), object.get(given.property).size())
                << given.property.getName().str();
        }
    }

    void checkClass(ImmutableClass const & metaClass, Places & places) {
        SCOPED_TRACE(metaClass.getQualifiedName().str());
        Model const model = newModel();
        model.beginTransaction();
        Nursery nursery(model, places);
        ClassObject const object = metaClass == model.getMetaClass() ? ClassObject(model) : nursery.make(metaClass);
        model.commitTransaction();
        ASSERT_TRUE(Serializer::XmiWriter().write(folder.path("before.xmi"), model));
        model.clearUndoStack();

        std::vector<Given> all;
        for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
            SCOPED_TRACE(property.getName().str());
            // A model's URI is that of its file, which the reader says.
            if (property.isDerived() || property.isReadOnly() || (object == model && property.getName() == "uri")) {
                continue;
            }
            ImmutableClass const type(property.getType());
            if (type.isValid() && (inherits(type, Model::MetaClass()) || inherits(type, FactoryObject::MetaClass()))) {
                continue; // where the object is, for its whole life
            }
            if (object == model && isContainerEnd(property)) {
                continue; // nothing contains a model
            }
            try {
                if (isContainerEnd(property)) {
                    giveContainer(model, nursery, object, property);
                } else if (property.getName() != "appliedStereotypeInstance") {
                    bool const replaces = !property.isMultivalued() && property.isComposite() && object.has(property);
                    Given const given = give(model, nursery, object, property);
                    if (isSaved(property) && !replaces) {
                        all.push_back(given);
                    } else {
                        model.undo(); // no file would hold it, or what was there before
                    }
                    ++properties;
                }
            } catch (std::exception const & failure) {
                ADD_FAILURE() << failure.what();
            }
        }
        if (metaClass.getQualifiedName() != "uml.Profile") { // its content is not read
            checkReadBack(model, object, all);
        }
        while (model.getUndoStackLength() > 0) {
            model.undo();
        }
        if (metaClass.getQualifiedName() != "uml.Profile") {
            EXPECT_TRUE(compare(model, Serializer::XmiReader().read(folder.path("before.xmi")))) << "after undo of all";
        }
    }

    TemporaryFolder folder;
    int properties = 0;
};

TEST_P(Completeness, EveryPropertyOfEveryClassIsSetSavedReadAndUndone) {
    LeakChecker checker;
    checker.beginTrackLifetime();
    {
        Places places(GetParam());
        std::vector<ImmutableClass> classes = concreteClasses(GetParam().metaModel());
        if (GetParam().metaModel() == GetParam().modelMetaModel()) {
            classes.push_back(modelClass(GetParam().metaModel()));
        }
        for (ImmutableClass const & metaClass : classes) {
            checkClass(metaClass, places);
        }
        RecordProperty("classes", static_cast<int>(classes.size()));
        RecordProperty("properties", properties);
    }
    EXPECT_NO_THROW(checker.endTrackLifetime());
}

INSTANTIATE_TEST_SUITE_P(MetaModels, Completeness, testing::ValuesIn(kSubjects),
                         [](auto const & info) { return std::string(info.param.name); });

} // namespace
} // namespace ZEL::Test
