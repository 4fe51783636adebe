// Stereotypes of the profiles on elements of UML, and what UML derives.

#include "host/TemporaryFolder.h"

#include <ZEL/ZEL.h>

#include <RhapsodyPlatform/FlowDirection.h>
#include <RhapsodyPlatform/MetaModelRegistration.h>
#include <RhapsodyPlatform/RhapsodyPlatformFactory.h>
#include <RhapsodyPlatform/rhapsodyFlowPort.h>
#include <gmock/gmock.h>
#include <prof/MetaModelRegistration.h>
#include <prof/ProfFactory.h>
#include <prof/annotatedClass.h>
#include <prof/marked.h>
#include <prof/memo.h>
#include <prof/sealed.h>
#include <uml/CallOperationAction.h>
#include <uml/Class.h>
#include <uml/Component.h>
#include <uml/Generalization.h>
#include <uml/InputPin.h>
#include <uml/Interface.h>
#include <uml/InterfaceRealization.h>
#include <uml/Model.h>
#include <uml/OpaqueBehavior.h>
#include <uml/Operation.h>
#include <uml/OutputPin.h>
#include <uml/Port.h>
#include <uml/UmlFactory.h>

namespace uml {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string contentOf(ZEL::Model const & model) {
    TemporaryFolder const folder;
    EXPECT_TRUE(ZEL::Serializer::XmiWriter().write(folder.path("model.xmi"), model));
    return folder.content("model.xmi");
}

class Uml : public testing::Test {
protected:
    Uml() {
        ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
        RhapsodyPlatform::registerMetaModel();
        model = UmlFactory::createNewModel();
        factory = UmlFactory(model.getFactory());
        model.beginTransaction("test");
    }

    template <class T> T add(std::string const & name) const {
        T const element = factory.create<T>();
        element.setName(name);
        model.getPackagedElements().push_back(element);
        return element;
    }

    Model model;
    UmlFactory factory;
};

TEST_F(Uml, AModelIsAPackageToo) {
    model.setName("world");
    Class const thing = add<Class>("Thing");
    EXPECT_EQ(ZEL::Package(model).getPackagedElements().size(), 1);
    EXPECT_EQ(thing.getContainerZEL(), model);
    EXPECT_EQ(thing.getOwner(), model);
    EXPECT_EQ(thing.getQualifiedName(), "world.Thing");
    EXPECT_FALSE(factory.createFromString("Model").isValid()) << "a model does not lie in another one";
}

TEST_F(Uml, RelationshipsShowTheirEnds) {
    Class const general = add<Class>("general");
    Component const special = add<Component>("special");
    Interface const contract = add<Interface>("contract");
    Generalization const generalization = factory.createGeneralization();
    generalization.setSpecific(special);
    generalization.setGeneral(general);
    InterfaceRealization const realization = factory.createInterfaceRealization();
    special.getInterfaceRealizations().push_back(realization);
    realization.setContract(contract);
    realization.getClients().push_back(special);
    realization.getSuppliers().push_back(contract);

    EXPECT_EQ(generalization.getSources().at(0), special);
    EXPECT_EQ(generalization.getTargets().at(0), general);
    EXPECT_EQ(generalization.getRelatedElements().size(), 2);
    EXPECT_EQ(realization.getImplementingClassifier(), special);
    EXPECT_EQ(realization.getTargets().at(0), contract);
}

TEST_F(Uml, ClassesShowTheirFeaturesAndTheirPorts) {
    Component const component = add<Component>("c");
    Port const port = factory.createPort();
    component.getOwnedAttributes().push_back(port);
    component.getOwnedAttributes().push_back(factory.createProperty());
    Operation const operation = factory.createOperation();
    component.getOwnedOperations().push_back(operation);
    EXPECT_EQ(component.getFeatures().size(), 3);
    EXPECT_EQ(component.getAttributes().size(), 2);
    ASSERT_EQ(component.getOwnedPorts().size(), 1);
    EXPECT_EQ(component.getOwnedPorts().at(0), port);
    EXPECT_EQ(operation.getFeaturingClassifiers().at(0), component);

    OpaqueBehavior const method = factory.createOpaqueBehavior();
    component.getOwnedBehaviors().push_back(method);
    EXPECT_EQ(component.getContaineeZELs().at(0), method) << "behaviors come before features";
    component.setIsAbstract(ZEL::Boolean(true));
    EXPECT_TRUE(ZEL::Class(component).isAbstract()) << "one property, in whichever class it is looked for";
    EXPECT_TRUE(Classifier(component).isAbstract());
}

TEST_F(Uml, ActionsShowTheirPins) {
    CallOperationAction const action = factory.createCallOperationAction();
    InputPin const target = factory.createInputPin();
    action.setTarget(target);
    action.getArguments().push_back(factory.createInputPin());
    action.getResults().push_back(factory.createOutputPin());
    EXPECT_EQ(action.getInputs().size(), 2);
    EXPECT_TRUE(action.getInputs().contains(target));
    EXPECT_EQ(action.getOutputs().size(), 1);
    EXPECT_TRUE(action.isSynchronous());
}

TEST_F(Uml, ARequiredDirectionIsAlwaysWritten) {
    Component const component = add<Component>("c");
    Port const port = factory.createPort();
    component.getOwnedAttributes().push_back(port);
    auto const platform = RhapsodyPlatform::RhapsodyPlatformFactory::createNewFactory(model);
    RhapsodyPlatform::rhapsodyFlowPort const flow = platform.createrhapsodyFlowPort();
    flow.setBase_Port(port);
    EXPECT_THAT(contentOf(model), AllOf(HasSubstr("direction=\"in\""), Not(HasSubstr("isService")))) << "a default";
    flow.setDirection(RhapsodyPlatform::FlowDirection::Inout);
    port.setIsService(ZEL::Boolean(false));
    EXPECT_THAT(contentOf(model), AllOf(HasSubstr("direction=\"inout\""), HasSubstr("isService=\"false\"")));
}

TEST(Prof, ExtensionsAreWrittenInsideOnesAndScratchAndDefaultsAreNot) {
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
    prof::registerMetaModel();
    ZEL::MetaModel const model = ZEL::Factory::createNewModel();
    for (char const * const uri : {"http://example.org/prof", "http://example.org/prof/2"}) {
        EXPECT_TRUE(prof::ProfFactory(ZEL::FactoryRegistry::instance()->createFactory(uri, model)).isValid()) << uri;
    }
    prof::ProfFactory const factory = prof::ProfFactory::createNewFactory(model);
    model.beginTransaction("test");
    ZEL::Package const top = model.getFactoryFactory().createPackage("top");
    model.setTopPackage(top);
    prof::annotatedClass const annotated = factory.createannotatedClass();
    top.getPackagedElements().push_back(annotated);
    annotated.setScratch("gone");
    prof::memo const outer = factory.creatememo();
    annotated.getAttachments().push_back(outer);
    factory.creatememo().setOuter(outer);
    prof::sealed const seal = factory.createsealed();
    seal.setBase_Class(annotated);
    EXPECT_THAT(annotated.getMarks(), ElementsAre(seal)) << "a seal is a mark";
    EXPECT_THAT(contentOf(model), AllOf(HasSubstr("<xmi:Extension extender=\"The Quillon Inc.\">"),
                                        HasSubstr("<prof:sealed "), Not(HasSubstr("gone")), Not(HasSubstr("<mark "))));

    // The default of a type that is written by hand.
    ZEL::Argument const none = outer.getTag();
    EXPECT_EQ(none.getName(), "none");
    EXPECT_TRUE(outer.hasTag());
    EXPECT_THAT(contentOf(model), Not(HasSubstr(" tag=")));
    ZEL::Argument urgent;
    urgent.setName("urgent");
    outer.setTag(urgent);
    EXPECT_THAT(contentOf(model), HasSubstr(" tag=\"(urgent,())\""));
    outer.removeTag();
    EXPECT_FALSE(outer.hasTag());
    EXPECT_EQ(outer.getTag(), none);
    outer.setTag(none);
    EXPECT_TRUE(outer.hasTag());
}

} // namespace
} // namespace uml
