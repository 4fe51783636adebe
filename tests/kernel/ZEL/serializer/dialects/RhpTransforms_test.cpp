#include "DialectTest.h"

#include <ZEL/serializer/dialects/RhpWriteTransforms.h>

namespace ZEL::tests {
namespace {

using Serializer::RhpWriteTransforms;

std::string const kPlatform = "http://example.org/GenericComponent";
std::string const kTessel = "http://example.org/Tessel";
std::string const kRhapsody = "http://example.org/RhapsodyPlatform";
std::string const kLibrary = "library.xmi#_zel_5376c05e-df72-49a6-85e0-5388c3fca417";

struct Rhapsody : DialectTest {
    Rhapsody()
        : DialectTest(
              {{kUml, "uml"}, {kPlatform, "GenericComponent"}, {kTessel, "Tessel"}, {kRhapsody, "RhapsodyPlatform"}}) {}

    /// What the first traversal shows for a stereotype instance on a component: the instance, and a link of it.
    void collect(std::string const & typeUri, std::string const & type, std::string const & link,
                 std::string const & value) {
        Context const instance = nested("appliedStereotypeInstance", typeUri, type, "i");
        static_cast<void>(transforms.apply(both(instance, linkOf(instance, link, value))));
    }

    RhpWriteTransforms transforms; // which looks the prefixes up when it is made
};

Context inA(std::string const & parentType, Context context) {
    return below(nested("parent", kUml, parentType), std::move(context));
}

Context child(std::string const & parentType, std::string const & role, std::string const & type) {
    return inA(parentType, nested(role, kUml, type, "x"));
}

Context linkIn(std::string const & parentType, std::string const & name) {
    return linkOf(nested("parent", kUml, parentType), name, "1");
}

/// A link in the form of a child element.
Context outsideLink(Context const & parent, std::string const & name, std::string const & value) {
    Context link = below(parent, nested(name, kUml, "Model"));
    link.addReference(value);
    return link;
}

Context declaration(std::string const & prefix) {
    return attributeOf(Context(), "http://www.w3.org/2000/xmlns/", prefix, "u");
}

TEST_F(Rhapsody, LeavesOutInTheSecondTraversal) {
    Context const rows[] = {element(kXmi, "Extension"),
                            child("Component", "ownedConnector", "Connector"),
                            child("Component", "ownedBehavior", "OpaqueBehavior"),
                            linkIn("Port", "end"),
                            linkIn("Operation", "method"),
                            attributeOf(element(kUml, "Model", "m"), "", "uri", "u"),
                            declaration("GenericComponent"),
                            declaration("Tessel"),
                            declaration("NumericTypes")};
    for (bool const isWriting : {false, true}) {
        transforms.setSerializePhase(isWriting);
        for (Context expected : rows) {
            Context const given = expected;
            expected.setSkipState(isWriting);
            EXPECT_EQ(textOf(transforms.apply(given)), textOf(expected));
        }
    }
}

TEST_F(Rhapsody, RewritesAndLeavesAlone) {
    Context const import = child("Package", "packageImport", "PackageImport");
    auto const importOf = [&](std::string const & target) {
        return both(import, outsideLink(import, "importedPackage", target));
    };
    auto const typeOf = [](std::string const & type, std::string const & target) {
        return outsideLink(nested("parent", kUml, type), "type", target);
    };
    std::pair<ContextSequence, std::string> const rows[] = {
        {element(kUml, "Model", "m"), "e {http://schema.omg.org/spec/UML/2.1.1}Model=m"},
        {importOf(kLibrary), "e! {}packageImport="},
        {importOf(kLibrary + "_14"), "e {}packageImport=x r+ {}importedPackage=" + kLibrary + "_14"},
        {typeOf("Property", kLibrary + "_14"), "r+ {}type=RhapsodyProfiles.xml#_D6tGfXUNEd24iMNaL4DaEg"},
        {typeOf("Parameter", kLibrary + "_94"), "r+ {}type=RhapsodyProfiles.xml#_D6tGfXUNEd24iMNaL4DaEg"},
        {typeOf("Port", kLibrary + "_22"), "r+ {}type=RhapsodyProfiles.xml#_D6tGknUNEd24iMNaL4DaEg"},
        {typeOf("Property", "other.xmi#_zel_u_14"), "? {}type="},
        {typeOf("Operation", kLibrary + "_14"), "r+ {}type=" + kLibrary + "_14"},
        {linkIn("Property", "type"), "r {}type=1"},
        {linkIn("Reception", "method"), "r {}method=1"},
        {child("Class", "ownedConnector", "Connector"), "e {}ownedConnector=x"},
        {child("Component", "ownedBehavior", "StateMachine"), "e {}ownedBehavior=x"},
    };
    for (bool const isWriting : {false, true}) {
        transforms.setSerializePhase(isWriting);
        for (auto const & [given, expected] : rows) {
            EXPECT_EQ(textOf(transforms.apply(given)), expected);
        }
    }
}

TEST_F(Rhapsody, LeavesOutComponentsOfTheSourcePlatform) {
    collect(kPlatform, "softwareComponent", "base_Component", "c1");
    collect(kPlatform, "adapterComponent", "base_Component", "c2");
    collect(kTessel, "algorithmicComponent", "base_Component", "c3");
    collect(kRhapsody, "rhapsodyComponent", "base_Component", "c4"); // says nothing of the platform

    auto const isLeftOut = [&](char const * parent, char const * role, char const * id) {
        Context const component = inA(parent, nested(role, kUml, "Component", id));
        return transforms.apply(component).front().skipContext();
    };
    EXPECT_FALSE(isLeftOut("Package", "packagedElement", "c1"));
    transforms.setSerializePhase(true);
    EXPECT_TRUE(isLeftOut("Package", "packagedElement", "c1"));
    EXPECT_TRUE(isLeftOut("Package", "packagedElement", "c3"));
    EXPECT_TRUE(isLeftOut("Component", "nestedClassifier", "c2"));
    EXPECT_FALSE(isLeftOut("Component", "nestedClassifier", "c4"));
    // Only where the tool would stumble: not at the top of a model.
    EXPECT_FALSE(isLeftOut("Model", "packagedElement", "c1"));
    // What was noted while collecting stays; what comes later does not count.
    collect(kPlatform, "softwareComponent", "base_Component", "c5");
    EXPECT_FALSE(isLeftOut("Package", "packagedElement", "c5"));
}

TEST_F(Rhapsody, NotesTheModelOfTheActiveComponent) {
    EXPECT_EQ(transforms.getModelElementId(), "");
    collect(kTessel, "algorithmicComponent", "model", "n7");
    EXPECT_EQ(transforms.getModelElementId(), "n7");
}

} // namespace
} // namespace ZEL::tests
