#include <ZEL/NamespaceRegistry.h>
#include <ZEL/serializer/RhpWriteTransforms.h>

#include <gtest/gtest.h>
#include <kernel/ZEL/serializer/ContextText.h>

#include <string>
#include <utility>
#include <vector>

namespace ZEL::Serializer {
namespace {

using Test::attributeOf;
using Test::below;
using Test::both;
using Test::element;
using Test::linkOf;
using Test::nested;
using Test::textOf;

std::string const kUml = "http://example.org/uml";
std::string const kXmi = "http://schema.omg.org/spec/XMI/2.1";
std::string const kXmlns = "http://www.w3.org/2000/xmlns/";
std::string const kPlatform = "http://example.org/GenericComponent";
std::string const kTessel = "http://example.org/Tessel";
std::string const kRhapsody = "http://example.org/RhapsodyPlatform";
std::string const kLibrary = "library.xmi#_zel_5376c05e-df72-49a6-85e0-5388c3fca417";

/// While it lives, metamodels of the prefixes on which the rules depend are registered.
class Prefixes {
public:
    Prefixes() {
        for (auto const & [uri, prefix] : fPrefixes) {
            NamespaceRegistry::instance()->bindMetaUriToPrefix(uri, prefix);
        }
    }
    ~Prefixes() {
        for (auto const & [uri, prefix] : fPrefixes) {
            NamespaceRegistry::instance()->unbindPrefixMetaUri(uri);
        }
    }
    Prefixes(Prefixes const &) = delete;
    Prefixes & operator=(Prefixes const &) = delete;

private:
    std::vector<std::pair<std::string, std::string>> const fPrefixes = {
        {kUml, "uml"}, {kPlatform, "GenericComponent"}, {kTessel, "Tessel"}, {kRhapsody, "RhapsodyPlatform"}};
};

class Rhapsody : public testing::Test {
protected:
    /// What the first traversal shows for a stereotype instance on a component: the instance, and a link of it.
    void collect(std::string const & typeUri, std::string const & type, std::string const & link,
                 std::string const & value) {
        Context const instance = nested("appliedStereotypeInstance", typeUri, type, "i");
        static_cast<void>(transforms.apply(both(instance, linkOf(instance, link, value))));
    }

    Prefixes prefixes; // the rules are made by them
    RhpWriteTransforms transforms;
};

Context inA(std::string const & parentType, Context context) {
    return below(nested("parent", kUml, parentType), std::move(context));
}

Context linkIn(std::string const & parentType, std::string const & name, std::string const & value) {
    return linkOf(nested("parent", kUml, parentType), name, value);
}

Context outsideLinkIn(std::string const & parentType, std::string const & name, std::string const & value) {
    Context link = linkIn(parentType, name, "");
    Context outside;
    outside.setRole(link.getRole());
    outside.setParentRole(link.getParentRole());
    outside.setParentType(link.getParentType());
    outside.addReference(value);
    return outside;
}

TEST_F(Rhapsody, LeavesOutAndRewritesInTheSecondTraversal) {
    Context const model = element(kUml, "Model", "m");
    Context const import = inA("Package", nested("packageImport", kUml, "PackageImport", "i"));
    auto const importOf = [&](std::string const & target) {
        Context link = linkOf(import, "importedPackage", "");
        link.setType(kUml, "Model");
        link.addReference(target);
        link.setFirstValue(target);
        return both(import, link);
    };
    struct Row {
        ContextSequence input;
        std::string collected;
        std::string written;
    };
    auto const link = [](char const * parentType, char const * name) {
        return Row{linkIn(parentType, name, "1"), std::string("r {}") + name + "=1",
                   std::string("r! {}") + name + "=1"};
    };
    auto const declaration = [](char const * prefix) {
        Context context;
        context.setRole(kXmlns, prefix);
        context.setAttribute("u");
        std::string const name = "{" + kXmlns + "}" + prefix + "=u";
        return Row{context, "a " + name, "a! " + name};
    };
    std::vector<Row> const rows = {
        {model, "e {http://schema.omg.org/spec/UML/2.1.1}Model=m", "e {http://schema.omg.org/spec/UML/2.1.1}Model=m"},
        {element(kXmi, "Extension"), "e {" + kXmi + "}Extension=", "e! {" + kXmi + "}Extension="},
        {inA("Component", nested("ownedConnector", kUml, "Connector", "c")), "e {}ownedConnector=c",
         "e! {}ownedConnector=c"},
        {inA("Class", nested("ownedConnector", kUml, "Connector", "c")), "e {}ownedConnector=c",
         "e {}ownedConnector=c"},
        {inA("Component", nested("ownedBehavior", kUml, "OpaqueBehavior", "b")), "e {}ownedBehavior=b",
         "e! {}ownedBehavior=b"},
        {inA("Component", nested("ownedBehavior", kUml, "StateMachine", "b")), "e {}ownedBehavior=b",
         "e {}ownedBehavior=b"},
        link("Port", "end"),
        link("Operation", "method"),
        {linkIn("Reception", "method", "1"), "r {}method=1", "r {}method=1"},
        {attributeOf(model, "", "uri", "u"), "a {}uri=u", "a! {}uri=u"},
        declaration("GenericComponent"),
        declaration("Tessel"),
        declaration("NumericTypes"),

        {importOf(kLibrary), "e! {}packageImport=", "e! {}packageImport="},
        {importOf(kLibrary + "_14"), "e {}packageImport=i r+ {}importedPackage=" + kLibrary + "_14",
         "e {}packageImport=i r+ {}importedPackage=" + kLibrary + "_14"},

        {outsideLinkIn("Property", "type", kLibrary + "_14"), "r+ {}type=RhapsodyProfiles.xml#_D6tGfXUNEd24iMNaL4DaEg",
         "r+ {}type=RhapsodyProfiles.xml#_D6tGfXUNEd24iMNaL4DaEg"},
        {outsideLinkIn("Parameter", "type", kLibrary + "_94"), "r+ {}type=RhapsodyProfiles.xml#_D6tGfXUNEd24iMNaL4DaEg",
         "r+ {}type=RhapsodyProfiles.xml#_D6tGfXUNEd24iMNaL4DaEg"},
        {outsideLinkIn("Port", "type", kLibrary + "_22"), //
         "r+ {}type=RhapsodyProfiles.xml#_D6tGknUNEd24iMNaL4DaEg",
         "r+ {}type=RhapsodyProfiles.xml#_D6tGknUNEd24iMNaL4DaEg"},
        {outsideLinkIn("Property", "type", "other.xmi#_zel_u_14"), "? {}type=", "? {}type="},
        {linkIn("Property", "type", "_zel_u_14"), "r {}type=_zel_u_14", "r {}type=_zel_u_14"},
        {outsideLinkIn("Operation", "type", kLibrary + "_14"), "r+ {}type=" + kLibrary + "_14",
         "r+ {}type=" + kLibrary + "_14"},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        transforms.setSerializePhase(false);
        EXPECT_EQ(textOf(transforms.apply(rows[i].input)), rows[i].collected) << "row " << i << ", collecting";
        transforms.setSerializePhase(true);
        EXPECT_EQ(textOf(transforms.apply(rows[i].input)), rows[i].written) << "row " << i << ", writing";
    }
}

TEST_F(Rhapsody, LeavesOutComponentsOfTheSourcePlatform) {
    collect(kPlatform, "softwareComponent", "base_Component", "c1");
    collect(kPlatform, "adapterComponent", "base_Component", "c2");
    collect(kTessel, "algorithmicComponent", "base_Component", "c3");
    collect(kRhapsody, "rhapsodyComponent", "base_Component", "c4"); // says nothing of the platform

    auto const written = [&](Context const & context) { return transforms.apply(context).front().skipContext(); };
    Context const packaged = inA("Package", nested("packagedElement", kUml, "Component", "c1"));
    EXPECT_FALSE(written(packaged));
    transforms.setSerializePhase(true);
    EXPECT_TRUE(written(packaged));
    EXPECT_TRUE(written(inA("Package", nested("packagedElement", kUml, "Component", "c3"))));
    EXPECT_TRUE(written(inA("Component", nested("nestedClassifier", kUml, "Component", "c2"))));
    EXPECT_FALSE(written(inA("Component", nested("nestedClassifier", kUml, "Component", "c4"))));
    // Only where the tool would stumble: not at the top of a model.
    EXPECT_FALSE(written(inA("Model", nested("packagedElement", kUml, "Component", "c1"))));
    // What was noted while collecting stays; what comes later does not count.
    collect(kPlatform, "softwareComponent", "base_Component", "c5");
    EXPECT_FALSE(written(inA("Package", nested("packagedElement", kUml, "Component", "c5"))));
}

TEST_F(Rhapsody, NotesTheModelOfTheActiveComponent) {
    EXPECT_EQ(transforms.getModelElementId(), "");
    collect(kTessel, "algorithmicComponent", "model", "n7");
    EXPECT_EQ(transforms.getModelElementId(), "n7");
}

TEST_F(Rhapsody, DeclaresTheToolsNamespaces) {
    Context declaration;
    declaration.setRole(kXmlns, "uml");
    declaration.setAttribute(kUml);
    std::string const x = "a {" + kXmlns + "}";
    EXPECT_EQ(textOf(transforms.apply(declaration)),
              x + "uml=http://schema.omg.org/spec/UML/2.1.1 " +                                             //
                  x + "xsi=http://www.w3.org/2001/XMLSchema-instance " +                                    //
                  x + "PredefinedTypes_profile=http:/Rhapsody/schemas/PredefinedTypes_profile.xmi " +       //
                  x + "PredefinedTypesCpp_profile=http:/Rhapsody/schemas/PredefinedTypesCpp_profile.xmi " + //
                  x + "RHP=http:/Rhapsody/schemas/RHP.xmi " +                                               //
                  x + "RhapsodyProfile=http:/Rhapsody/schemas/RhapsodyProfile.xmi " +                       //
                  x + "Standard=http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2 " +                  //
                  x + "ecore=http://www.eclipse.org/emf/2002/Ecore " +                                      //
                  x + "Tessel=http:/Rhapsody/schemas/Tessel.xmi " +                                         //
                  x + "CG=http:/Rhapsody/schemas/CG.xmi " +                                                 //
                  x + "CPP_CG=http:/Rhapsody/schemas/CPP_CG.xmi " +                                         //
                  "a {http://www.w3.org/2001/XMLSchema-instance}schemaLocation="
                  "http:/Rhapsody/schemas/PredefinedTypesCpp_profile.xmi "
                  "RhapsodyProfiles.xml#_HRcKwWftEd250cs88OLFhA "
                  "http:/Rhapsody/schemas/PredefinedTypes_profile.xmi RhapsodyProfiles.xml#_HRcJvGftEd250cs88OLFhA "
                  "http:/Rhapsody/schemas/RHP.xmi RhapsodyProfiles.xml#_HRcCumftEd250cs88OLFhA "
                  "http:/Rhapsody/schemas/RhapsodyProfile.xmi RhapsodyProfiles.xml#_HRcBpGftEd250cs88OLFhA "
                  "http://www.eclipse.org/uml2/schemas/Standard/1 "
                  "http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#_HM-YYWftEd250cs88OLFhA "
                  "http:/Rhapsody/schemas/Tessel.xmi RhapsodyProfiles.xml#_D6tGRHUNEd24iMNaL4DaEg "
                  "http:/Rhapsody/schemas/CG.xmi RhapsodyProfiles.xml#_5L1wOH7FEd2DRp78gaPFRQ "
                  "http:/Rhapsody/schemas/CPP_CG.xmi RhapsodyProfiles.xml#_5L1wVH7FEd2DRp78gaPFRQ");
}

TEST_F(Rhapsody, LetsNothingPassBehindTheModel) {
    Context const model = element(kUml, "Model", "m");
    EXPECT_TRUE(transforms.postApply(model).empty());
    transforms.setSerializePhase(true);
    EXPECT_FALSE(transforms.postApply(model).empty());
    EXPECT_EQ(textOf(transforms.apply(element(kRhapsody, "rhapsodyComponent", "r"))),
              "e! {" + kRhapsody + "}rhapsodyComponent=r");
}

} // namespace
} // namespace ZEL::Serializer
