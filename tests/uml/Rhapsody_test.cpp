#include "DialectFixture.h"

#include <gmock/gmock.h>

#include <memory>
#include <utility>
#include <vector>

namespace ZEL::Serializer {
namespace {

using tests::replaced;

class RhapsodyFile : public tests::DialectFixture {
protected:
    static constexpr char kDescription[] =
        R"(descriptionRTF="&lt;![CDATA[{\rtf1\ansi\ansicpg1252\deff0\deflang1033)"
        R"({\fonttbl{\f0\fswiss\fcharset0 Arial;}}\viewkind4\uc1\pard\f0\fs20\par}]]&gt;")";

    /// The library of primitive types, which models import.
    void addLibrary() const {
        std::string const text = R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1">
  <uml:Model xmi:id="@L"><packagedElement xmi:type="uml:PrimitiveType" xmi:id="@L_14"/>
    <packagedElement xmi:type="uml:PrimitiveType" xmi:id="@L_22"/>
    <packagedElement xmi:type="uml:PrimitiveType" xmi:id="@L_94"/></uml:Model>
</xmi:XMI>
)";
        static_cast<void>(folder.file("library.xmi", replaced(text, "@L", kLibrary)));
    }
    /// What a model with this content looks like in the tool's form.
    std::string converted(std::string const & content, std::string const & instances = {},
                          std::shared_ptr<Transformer> caller = nullptr) {
        std::string const text = R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1"
    xmlns:GenericComponent="http://www.quillon.example/schemas/GenericComponent.xmi"
    xmlns:RhapsodyPlatform="http://www.quillon.example/schemas/RhapsodyPlatform.xmi">
  <uml:Model xmi:id="@1" name="m">
)" + content + "  </uml:Model>\n" +
                                 instances + "</xmi:XMI>\n";
        uml::Model const model = read(file("in.xmi", replaced(text, "@L", "library.xmi#" + std::string(kLibrary))));
        EXPECT_TRUE(model.isValid());
        EXPECT_TRUE(reader.report().isEmpty());
        XmiWriterSettings settings;
        settings.setOutputFormat(XmiFormat::Rhapsody);
        XmiWriter writer(settings);
        if (caller != nullptr) {
            writer.addTransformer(std::move(caller));
        }
        EXPECT_TRUE(writer.write(folder.path("out.xmi"), model));
        return written(model);
    }

    /// The whole file: its model's content, further namespaces, and the stereotypes but for those of the model, which
    /// have the ids from `firstStereotype` to that plus 4. A line that begins with "+" continues the one before.
    static std::string expected(std::string const & content, int firstStereotype, std::string const & namespaces = {},
                                std::string const & stereotypes = {}) {
        std::string text =
            R"(<?xml version="1.0" encoding="iso8859-1"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1"
+ xmlns:uml="http://schema.omg.org/spec/UML/2.1.1" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
+ xmlns:PredefinedTypes_profile="@R/PredefinedTypes_profile.xmi"
+ xmlns:PredefinedTypesCpp_profile="@R/PredefinedTypesCpp_profile.xmi" xmlns:RHP="@R/RHP.xmi"
+ xmlns:RhapsodyProfile="@R/RhapsodyProfile.xmi"
+ xmlns:Standard="http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2"
+ xmlns:ecore="http://www.eclipse.org/emf/2002/Ecore" xmlns:Tessel="@R/Tessel.xmi" xmlns:CG="@R/CG.xmi"
+ xmlns:CPP_CG="@R/CPP_CG.xmi" xsi:schemaLocation="@R/PredefinedTypesCpp_profile.xmi @P_HRcKwWftEd250cs88OLFhA
+ @R/PredefinedTypes_profile.xmi @P_HRcJvGftEd250cs88OLFhA @R/RHP.xmi @P_HRcCumftEd250cs88OLFhA
+ @R/RhapsodyProfile.xmi @P_HRcBpGftEd250cs88OLFhA http://www.eclipse.org/uml2/schemas/Standard/1
+ http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#_HM-YYWftEd250cs88OLFhA
+ @R/Tessel.xmi @P_D6tGRHUNEd24iMNaL4DaEg @R/CG.xmi @P_5L1wOH7FEd2DRp78gaPFRQ
+ @R/CPP_CG.xmi @P_5L1wVH7FEd2DRp78gaPFRQ")" +
            namespaces + ">\n  <uml:Model xmi:id=\"@1\" name=\"m\">\n" + profileApplications() + content +
            R"(  </uml:Model>
  <RhapsodyProfile:RhpProject xmi:id="#M1" base_Model="@1"></RhapsodyProfile:RhpProject>
  <CG:Class xmi:id="#M2" base_Model="@1" GenerateImplicitConstructors="True" UseAsExternal="False"></CG:Class>
  <CPP_CG:Class xmi:id="#M3" base_Model="@1" GenerateDestructor="True"></CPP_CG:Class>
  <RHP:RHPStereotype xmi:id="#M4" IsBeingGenerated="TRUE"></RHP:RHPStereotype>
  <RhapsodyProfile:RhpModelElement xmi:id="#M5" RTF base_Package="@1"></RhapsodyProfile:RhpModelElement>
)" + stereotypes +
            "</xmi:XMI>\n";
        for (int i = 0; i < 5; ++i) {
            text = replaced(text, "#M" + std::to_string(i + 1), "#" + std::to_string(firstStereotype + i));
        }
        text = replaced(replaced(text, "\n+", ""), "@R", "http:/Rhapsody/schemas");
        return replaced(replaced(text, "@P", "RhapsodyProfiles.xml#"), " RTF", std::string(" ") + kDescription);
    }

private:
    static constexpr char kLibrary[] = "_zel_5376c05e-df72-49a6-85e0-5388c3fca417";

    static std::string profileApplications() {
        std::string const standard = "http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#";
        std::string const rows[][2] = {{standard + "_0", standard + "_HM-YYWftEd250cs88OLFhA"},
                                       {"@P_HRcCuGftEd250cs88OLFhA", "@P_HRcCumftEd250cs88OLFhA"},
                                       {"@P_HRcBomftEd250cs88OLFhA", "@P_HRcBpGftEd250cs88OLFhA"},
                                       {"@P_HRcJumftEd250cs88OLFhA", "@P_HRcJvGftEd250cs88OLFhA"},
                                       {"@P_5L1wNn7FEd2DRp78gaPFRQ", "@P_5L1wOH7FEd2DRp78gaPFRQ"},
                                       {"@P_5L1wUn7FEd2DRp78gaPFRQ", "@P_5L1wVH7FEd2DRp78gaPFRQ"}};
        std::string text;
        for (auto const & [profile, package] : rows) {
            text += R"(    <profileApplication xmi:type="uml:ProfileApplication" applyingPackage="@1">
      <appliedProfile xmi:type="uml:Profile" href=")" +
                    profile + R"("/>
      <xmi:Extension extender="http://www.eclipse.org/emf/2002/Ecore">
        <eAnnotations xmi:type="ecore:EAnnotation" source="http://www.eclipse.org/uml2/2.0.0/UML">
          <references xmi:type="ecore:EPackage" href=")" +
                    package + R"("/>
        </eAnnotations>
      </xmi:Extension>
    </profileApplication>
)";
        }
        return text;
    }
};

TEST_F(RhapsodyFile, OfAModelWithoutComponentsHasWhatTheToolExpects) {
    EXPECT_EQ(converted(R"(    <packagedElement xmi:type="uml:Association" xmi:id="@1_2" name="a"/>
)"),
              expected(R"(    <packagedElement xmi:id="@1_2" xmi:type="uml:Association" name="a"/>
)",
                       1));
}

// --- components of all kinds, with what the tool knows of them -------------------------------------------------------

constexpr char kComponents[] = R"(
    <packageImport xmi:type="uml:PackageImport" xmi:id="@1_2"><importedPackage href="@L"/></packageImport>
    <packagedElement xmi:type="uml:Package" xmi:id="@1_3" name="p">
      <packagedElement xmi:type="uml:Component" xmi:id="@1_4" name="Engine">
        <packagedElement xmi:type="uml:DataType" xmi:id="@1_5" name="Speed">
          <ownedAttribute xmi:type="uml:Property" xmi:id="@1_6" name="value">
            <lowerValue xmi:type="uml:LiteralInteger" xmi:id="@1_30" value="1"/><type href="@L_14"/>
          </ownedAttribute>
          <ownedAttribute xmi:type="uml:Property" xmi:id="@1_31" name="limit" type="@1_7"/>
        </packagedElement>
        <packagedElement xmi:type="uml:DataType" xmi:id="@1_7" name="Torque"/>
        <packagedElement xmi:type="uml:TimeEvent" xmi:id="@1_8" name="tick"/>
        <nestedClassifier xmi:type="uml:Component" xmi:id="@1_9" name="Adapter"/>
        <ownedBehavior xmi:type="uml:OpaqueBehavior" xmi:id="@1_10" name="b" specification="@1_15">
          <body>go();</body></ownedBehavior>
        <ownedBehavior xmi:type="uml:OpaqueBehavior" xmi:id="@1_35"><body>of no operation</body></ownedBehavior>
        <interfaceRealization xmi:type="uml:InterfaceRealization" xmi:id="@1_11" contract="@1_20"/>
        <ownedConnector xmi:type="uml:Connector" xmi:id="@1_12">
          <end xmi:type="uml:ConnectorEnd" xmi:id="@1_32" role="@1_14"/></ownedConnector>
        <ownedAttribute xmi:type="uml:Property" xmi:id="@1_13" name="on"><type href="@L_22"/></ownedAttribute>
        <ownedAttribute xmi:type="uml:Port" xmi:id="@1_14" name="out" type="@1_20" end="@1_32"/>
        <ownedAttribute xmi:type="uml:Port" xmi:id="@1_37"/><ownedAttribute xmi:type="uml:Port" xmi:id="@1_38"/>
        <ownedAttribute xmi:type="uml:Port" xmi:id="@1_39"/>
        <ownedOperation xmi:type="uml:Operation" xmi:id="@1_15" name="run" method="@1_10"/>
        <ownedOperation xmi:type="uml:Operation" xmi:id="@1_16" name="Engine">
          <ownedParameter xmi:type="uml:Parameter" xmi:id="@1_33" name="n"><type href="@L_94"/></ownedParameter>
        </ownedOperation>
      </packagedElement>
      <packagedElement xmi:type="uml:Component" xmi:id="@1_17" name="Host">
        <ownedOperation xmi:type="uml:Operation" xmi:id="@1_34" name="Host"/></packagedElement>
      <packagedElement xmi:type="uml:DataType" xmi:id="@1_18" name="Gear"/>
      <packagedElement xmi:type="uml:Dependency" xmi:id="@1_19" client="@1_21" supplier="@1_20"/>
      <packagedElement xmi:type="uml:Interface" xmi:id="@1_20" name="Drive"/>
      <packagedElement xmi:type="uml:Class" xmi:id="@1_21" name="Gauge" clientDependency="@1_19">
        <ownedAttribute xmi:type="uml:Port" xmi:id="@1_36"/></packagedElement>
    </packagedElement>
)";

constexpr char kInstancesOnComponents[] = R"(
  <RhapsodyPlatform:rhapsodyComponent xmi:id="@1_22" base_Component="@1_4" constructor="@1_16"
      destructor="@1_15" implementationProperty="@1_13"/>
  <RhapsodyPlatform:rhapsodyFlowPort xmi:id="@1_23" direction="out" base_Port="@1_14"/>
  <RhapsodyPlatform:rhapsodyFlowPort xmi:id="@1_27" direction="in" base_Port="@1_37"/>
  <RhapsodyPlatform:rhapsodyFlowPort xmi:id="@1_28" direction="inout" base_Port="@1_38"/>
  <RhapsodyPlatform:rhapsodyFlowPort xmi:id="@1_29" direction="out" base_Port="@1_36"/>
  <GenericComponent:softwareComponent xmi:id="@1_24" base_Component="@1_17"/>
  <GenericComponent:adapterComponent xmi:id="@1_25" base_Component="@1_9"/>
  <RhapsodyPlatform:rhapsodyComponent xmi:id="@1_26" base_Component="@1_17" constructor="@1_34"/>
)";

constexpr char kComponentsOfTheTool[] = R"(    <packagedElement xmi:id="@1_3" xmi:type="uml:Package" name="p">
      <packagedElement xmi:id="@1_4" xmi:type="uml:Component" name="Engine">
        <ownedBehavior xmi:id="#1" xmi:type="uml:StateMachine" name="StateChartOfActiveObject">
          <region xmi:id="#2" xmi:type="uml:Region" name="ROOT">
            <subvertex xmi:id="#3" xmi:type="uml:State" name="runState" outgoing="#4" incoming="#5 #4"></subvertex>
            <subvertex xmi:id="#6" xmi:type="uml:Pseudostate" name="ROOT" outgoing="#5"></subvertex>
            <transition xmi:id="#5" xmi:type="uml:Transition" name="0" target="#3" source="#6">
              <effect xmi:id="#7" xmi:type="uml:OpaqueBehavior" body="runAlgo();"></effect>
            </transition>
            <transition xmi:id="#4" xmi:type="uml:Transition" name="1" target="#3" source="#3">
              <effect xmi:id="#8" xmi:type="uml:OpaqueBehavior" body="runAlgo();"></effect>
              <trigger xmi:id="#9" xmi:type="uml:Trigger" event="#10"></trigger>
            </transition>
          </region>
        </ownedBehavior>
        <packagedElement xmi:id="#10" xmi:type="uml:TimeEvent" isRelative="true">
          <when xmi:id="#11" xmi:type="uml:LiteralString" value="10"></when>
        </packagedElement>
        <packagedElement xmi:id="@1_8" xmi:type="uml:TimeEvent" name="tick"/>
        <interfaceRealization xmi:id="@1_11" xmi:type="uml:InterfaceRealization" contract="@1_20"/>
        <ownedAttribute xmi:id="@1_13" xmi:type="uml:Property" name="on" isID="false">
          <type xmi:type="uml:PrimitiveType" href="@P_D6tGknUNEd24iMNaL4DaEg"/>
        </ownedAttribute>
        <packagedElement xmi:id="@1_5" xmi:type="uml:DataType" name="Speed">
          <ownedAttribute xmi:id="@1_6" xmi:type="uml:Property" name="value" isID="false">
            <type xmi:type="uml:PrimitiveType" href="@P_D6tGfXUNEd24iMNaL4DaEg"/>
            <lowerValue xmi:id="@1_30" xmi:type="uml:LiteralInteger" value="1"></lowerValue>
          </ownedAttribute>
          <ownedAttribute xmi:id="@1_31" xmi:type="uml:Property" name="limit" isID="false" type="@1_7"></ownedAttribute>
        </packagedElement>
        <packagedElement xmi:id="@1_7" xmi:type="uml:DataType" name="Torque"></packagedElement>
        <ownedAttribute xmi:id="@1_14" xmi:type="uml:Port" name="out" isID="false" type="@1_20"></ownedAttribute>
        <ownedAttribute xmi:id="@1_37" xmi:type="uml:Port" isID="false"></ownedAttribute>
        <ownedAttribute xmi:id="@1_38" xmi:type="uml:Port" isID="false"></ownedAttribute>
        <ownedAttribute xmi:id="@1_39" xmi:type="uml:Port" isID="false"/>
        <ownedOperation xmi:id="@1_15" xmi:type="uml:Operation" name="run"/>
        <ownedOperation xmi:id="@1_16" xmi:type="uml:Operation" name="Engine">
          <ownedParameter xmi:id="@1_33" xmi:type="uml:Parameter" name="n">
            <type xmi:type="uml:PrimitiveType" href="@P_D6tGfXUNEd24iMNaL4DaEg"/>
          </ownedParameter>
        </ownedOperation>
      </packagedElement>
      <packagedElement xmi:id="@1_18" xmi:type="uml:DataType" name="Gear"/>
      <packagedElement xmi:id="@1_19" xmi:type="uml:Dependency" supplier="@1_20" client="@1_21"/>
      <packagedElement xmi:id="@1_20" xmi:type="uml:Interface" name="Drive"/>
      <packagedElement xmi:id="@1_21" xmi:type="uml:Class" name="Gauge" clientDependency="@1_19">
        <ownedAttribute xmi:id="@1_36" xmi:type="uml:Port" isID="false"></ownedAttribute>
      </packagedElement>
    </packagedElement>
)";

/// Elements of the tool's profiles for one element of the model: what they call it, its number in the model, and the name
/// of each with its further attributes.
struct Applied {
    std::string base;
    std::string number;
    std::vector<std::string> elements;
};

/// With the ids from `first` on.
std::string instancesOf(std::vector<Applied> const & rows, int first) {
    std::string text;
    for (Applied const & row : rows) {
        for (std::string const & element : row.elements) {
            std::string const name = element.substr(0, element.find(' '));
            text += "  <" + name + " xmi:id=\"#" + std::to_string(first++) + "\" base_" + row.base + "=\"@1_" +
                    row.number + "\"" + element.substr(name.size()) + "></" + name + ">\n";
        }
    }
    return text;
}

TEST_F(RhapsodyFile, OfComponents) {
    addLibrary();
    std::string const mark = "RHP:RHPStereotype";
    std::string const element = "RhapsodyProfile:RhpModelElement RTF";
    auto const port = [](std::string const & number, std::string const & direction) {
        Applied row{
            "Port",
            number,
            {"RhapsodyProfile:RhpPort", "RhapsodyProfile:RhpModelElement base_Property=\"@1_" + number + "\" RTF"}};
        if (!direction.empty()) {
            row.elements.push_back("PredefinedTypes_profile:flowPort direction=\"" + direction + '"');
        }
        return row;
    };
    std::vector<Applied> const stereotypes{
        port("14", "Out"),
        port("37", "In"),
        port("38", "Both"),
        port("39", ""),
        {"Package", "3", {mark, element}},
        {"Class", "4", {mark, element}},
        {"DataType", "18", {mark, element, "RhapsodyProfile:RhpStruct"}},
        {"Operation", "15", {mark, element, R"(RhapsodyProfile:RhpOperation body="go();")"}},
        {"Operation", "16", {mark, element, "RhapsodyProfile:RhpOperation", "RhapsodyProfile:RhpConstructor"}},
        {"Operation", "15", {"RhapsodyProfile:RhpDestructor"}},
        {"Property", "13", {element, R"(RhapsodyProfile:RhpAttribute isReference="true")"}},
        {"Interface", "20", {mark, element, "PredefinedTypes_profile:Interface", R"(CG:Class UseAsExternal="True")"}},
        {"Class", "21", {mark, element, R"(CG:Class FileName="Gauge" UseAsExternal="True")"}},
        {"Dependency", "19", {element, "PredefinedTypes_profile:Usage"}},
        {"Dependency", "11", {element}},
    };
    std::string const whole =
        expected(kComponentsOfTheTool, 12,
                 R"( xmlns:RhapsodyPlatform="http://www.quillon.example/schemas/RhapsodyPlatform.xmi")",
                 instancesOf(stereotypes, 17));
    EXPECT_EQ(converted(kComponents, kInstancesOnComponents), whole);
    EXPECT_EQ(converted(kComponents, kInstancesOnComponents, std::make_shared<Transformer>()), whole)
        << "after a caller's Transformer";
}

// --- data types of components ------------------------------------------------------------------------------------------

/// `more` are its attributes.
std::string elementOf(std::string const & role, std::string const & type, std::string const & id,
                      std::string const & more, std::string const & content = {}) {
    return "<" + role + " xmi:type=\"uml:" + type + "\" xmi:id=\"@1_" + id + "\" " + more + ">" + content + "</" +
           role + ">";
}

std::string packaged(std::string const & type, std::string const & id, std::string const & content) {
    return elementOf("packagedElement", type, id, "", content);
}

std::string const kPort = elementOf("ownedAttribute", "Port", "8", R"(name="p" type="@1_9")");
std::string const kDataType = elementOf("packagedElement", "DataType", "9", R"(name="d")");

TEST_F(RhapsodyFile, KeepsDataTypesInTheirComponentsWithoutAPlaceForThem) {
    struct {
        char const * port;
        std::string besideType;
        std::string besideComponent;
    } const rows[] = {
        {"none", "", ""},
        {"without a type", elementOf("ownedAttribute", "Port", "8", ""), ""},
        {"in a component that is left out", "", packaged("Component", "4", kPort)},
        {"deeper in one", "", packaged("Component", "4", elementOf("nestedClassifier", "Component", "5", "", kPort))},
        {"in a behavior that is left out", elementOf("ownedBehavior", "OpaqueBehavior", "6", "", kPort), ""},
        {"in a type of a component", packaged("DataType", "7", kPort), ""},
    };
    for (auto const & row : rows) {
        std::string content = packaged("Component", "3", kDataType + row.besideType) + row.besideComponent;
        std::string instances;
        if (!row.besideComponent.empty()) {
            instances = R"(<GenericComponent:adapterComponent xmi:id="@1_10" base_Component="@1_4"/>)";
        }
        std::string const text = converted(packaged("Package", "2", content), instances);
        EXPECT_THAT(text, testing::HasSubstr(R"(xmi:type="uml:DataType" name="d"/>)")) << "port: " << row.port;
        EXPECT_EQ(text.find(R"(xmi:id="@1_9")"), text.rfind(R"(xmi:id="@1_9")")) << "port: " << row.port;
    }
}

TEST_F(RhapsodyFile, MovesDataTypesOfAllComponentsOnce) {
    // Also out of a component that is left out, and with elements that recur in each other. A stereotype instance is not
    // written with them.
    std::string const comment = elementOf("ownedComment", "Comment", "22", "") +
                                elementOf("ownedComment", "Comment", "23", R"(body="beside it")");
    std::string const last = packaged("DataType", "91", elementOf("ownedComment", "Comment", "21", "", comment));
    std::string const leftOut = packaged("DataType", "90", elementOf("ownedAttribute", "Property", "20", ""));
    std::string const content =
        packaged("Component", "3", last) + packaged("Component", "4", leftOut) +
        packaged("Component", "5", kDataType + kPort + elementOf("ownedAttribute", "Port", "7", R"(type="@1_9")"));
    std::string const text = converted(packaged("Package", "2", content), R"(
  <GenericComponent:softwareComponent xmi:id="@1_14" base_Component="@1_4"/>
  <GenericComponent:adapter xmi:id="@1_15" base_Property="@1_20"/>
)");
    EXPECT_THAT(text, testing::HasSubstr(R"("@1_5" xmi:type="uml:Component">
        <packagedElement xmi:id="@1_9" xmi:type="uml:DataType" name="d"></packagedElement>
        <packagedElement xmi:id="@1_90" xmi:type="uml:DataType">
          <ownedAttribute xmi:id="@1_20" xmi:type="uml:Property" isID="false"></ownedAttribute>
        </packagedElement>
        <packagedElement xmi:id="@1_91" xmi:type="uml:DataType">
          <ownedComment xmi:id="@1_21" xmi:type="uml:Comment">
            <ownedComment xmi:id="@1_22" xmi:type="uml:Comment"></ownedComment>
            <ownedComment xmi:id="@1_23" xmi:type="uml:Comment" body="beside it"></ownedComment>
          </ownedComment>
        </packagedElement>
        <ownedAttribute xmi:id="@1_8" xmi:type="uml:Port" name="p" isID="false" type="@1_9"/>
        <ownedAttribute xmi:id="@1_7" xmi:type="uml:Port" isID="false" type="@1_9"/>
      </packagedElement>
    </packagedElement>
)"));
}

TEST_F(RhapsodyFile, KeepsTheLinksOfALoneDataTypeInIt) {
    addLibrary();
    std::string const link = R"(<redefinedClassifier xmi:type="uml:PrimitiveType" href="@L_14"/>)";
    std::string const content = packaged("Component", "3", packaged("DataType", "9", link) + kPort);
    EXPECT_THAT(converted(packaged("Package", "2", content)),
                testing::HasSubstr(R"(        <packagedElement xmi:id="@1_9" xmi:type="uml:DataType">
          <redefinedClassifier xmi:type="uml:PrimitiveType" href="library.xmi##1_14"/>
        </packagedElement>
        <ownedAttribute)"));
}

} // namespace
} // namespace ZEL::Serializer
