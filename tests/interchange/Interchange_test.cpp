#include "ForeignFile.h"

#include <ZEL/interchange/UmlReadTransforms.h>
#include <ZEL/interchange/UmlVersions.h>

#include <uml/PackageableElement.h>

#include <filesystem>

namespace ZEL::Interchange {
namespace {

using Serializer::XmiFormat;
using Serializer::XmiReader;
using Serializer::XmiReaderSettings;
using ::testing::ElementsAre;
using tests::linesOf;

/// Reads files of other tools, and shows what came of them in this system's own form.
class ForeignFile : public tests::ForeignFileTest {
protected:
    /// The model in standard form: what comes after the head, up to the end of the root.
    std::string standard(Model const & model) {
        EXPECT_TRUE(model.isValid());
        EXPECT_TRUE(Serializer::XmiWriter().write(folder.path("out.xmi"), model));
        std::string text = written(model);
        std::size_t const head = text.find("nextIdValue");
        std::size_t begin = text.find('\n', head) + 1;
        if (text.compare(begin, 21, "  <xmi:Documentation ") == 0) {
            begin = text.find('\n', begin) + 1;
        }
        return text.substr(begin, text.find("</xmi:XMI>") - begin);
    }
    /// Reads the standard form back, without help.
    bool readsBack(Model const & model) {
        XmiReader plain;
        Object const again = plain.read(folder.path("out.xmi"));
        return compare(model, again);
    }
};

TEST_F(ForeignFile, OfCmofIsTheTopPackageOfAMetaModel) {
    static_cast<void>(folder.file("other.cmof", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:cmof="http://schema.omg.org/spec/MOF/2.0/cmof.xml">
  <cmof:Package xmi:id="_0" name="Other">
    <ownedMember xmi:type="cmof:PrimitiveType" xmi:id="Real" name="Real"/>
  </cmof:Package>
</xmi:XMI>
)"));
    Model const model = readForeign(file("in.cmof", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:cmof="http://schema.omg.org/spec/MOF/2.0/cmof.xml">
  <cmof:Package xmi:id="_0" name="DC" uri="http://example.org/dc">
    <packageImport xmi:type="cmof:PackageImport" xmi:id="i" importingNamespace="_0">
      <importedPackage xmi:type="cmof:Package" href="other.cmof#_0"/>
    </packageImport>
    <ownedMember xmi:type="cmof:PrimitiveType" xmi:id="Text" name="Text"/>
    <ownedMember xmi:type="cmof:DataType" xmi:id="Font" name="Font">
      <ownedRule xmi:type="cmof:Constraint" xmi:id="rule" name="r" constrainedElement="Font" namespace="Font">
        <specification xmi:type="cmof:OpaqueExpression" xmi:id="spec"><body>size > 0</body></specification>
      </ownedRule>
      <ownedAttribute xmi:type="cmof:Property" xmi:id="Font-name" name="name" type="Text" lower="0" upper="*" datatype="Font"/>
      <ownedAttribute xmi:type="cmof:Property" xmi:id="Font-size" name="size">
        <type xmi:type="cmof:PrimitiveType" href="other.cmof#Real"/>
      </ownedAttribute>
      <ownedAttribute xmi:type="cmof:Property" xmi:id="Font-bold" name="bold">
        <type xmi:type="cmof:PrimitiveType" href="http://schema.omg.org/spec/MOF/2.0/cmof.xml#Boolean"/>
      </ownedAttribute>
    </ownedMember>
  </cmof:Package>
  <cmof:Tag xmi:id="_1" name="org.omg.xmi.nsPrefix" value="dc" element="_0 Font"/>
</xmi:XMI>
)"));
    EXPECT_THAT(linesOf(reader.report()), ElementsAre("ignored Constraint.namespace 1", "replaced Tag.base_Element 1"));
    ASSERT_EQ(reader.referredModelCount(), 1);

    EXPECT_EQ(standard(model), R"(  <ZEL:MetaModel xmi:id="@1" uri="@2">
    <topPackage xmi:id="@1_2" xmi:type="ZEL:Package" name="DC" uri="http://example.org/dc">
      <packagedElement xmi:id="@1_4" xmi:type="ZEL:PrimitiveType" name="Text"/>
      <packagedElement xmi:id="@1_5" xmi:type="ZEL:DataType" name="Font">
        <ownedAttribute xmi:id="@1_8" xmi:type="ZEL:Property" name="name" isID="false" lower="0" upper="*" type="@1_4"/>
        <ownedAttribute xmi:id="@1_9" xmi:type="ZEL:Property" name="size" isID="false">
          <type xmi:type="ZEL:PrimitiveType" href="other.cmof##1_3"/>
        </ownedAttribute>
        <ownedAttribute xmi:id="@1_10" xmi:type="ZEL:Property" name="bold" isID="false">
          <type xmi:type="ZEL:PrimitiveType" href="http://schema.omg.org/spec/MOF/2.0##2_687"/>
        </ownedAttribute>
        <ownedRule xmi:id="@1_6" xmi:type="ZEL:Constraint" name="r" namespace="Font" constrainedElement="@1_5">
          <specification xmi:id="@1_7" xmi:type="ZEL:OpaqueExpression">
            <body>size &gt; 0</body>
          </specification>
        </ownedRule>
      </packagedElement>
      <packageImport xmi:id="@1_3" xmi:type="ZEL:PackageImport" visibility="public">
        <importedPackage xmi:type="ZEL:Package" href="other.cmof##1_2"/>
      </packageImport>
    </topPackage>
  </ZEL:MetaModel>
  <Foreign:Tag xmi:id="@1_11" name="org.omg.xmi.nsPrefix" value="dc" base_Element="@1_2">
    <base_Element xmi:idref="Font"/>
  </Foreign:Tag>
)");
}

/// Eclipse leaves out the types of parts that the metamodel tells, and puts annotations on elements.
TEST_F(ForeignFile, OfEclipseHasTypesThatTheMetamodelTells) {
    Model const model = readForeign(file("in.uml", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://www.eclipse.org/uml2/3.0.0/UML"
    xmlns:ecore="http://www.eclipse.org/emf/2002/Ecore" xmlns:core="http:///schemas/core/_1/0">
  <uml:Model xmi:id="_1" name="Data">
    <ownedComment xmi:id="_2" body="c" annotatedElement="_1 _4"/>
    <packageImport xmi:id="_3">
      <importedPackage xmi:type="uml:Model" href="pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml#_0"/>
    </packageImport>
    <packagedElement xmi:type="uml:Class" xmi:id="_4" name="A">
      <eAnnotations xmi:id="_5" source="http://example.org/a">
        <references xmi:type="ecore:EPackage" href="p.uml#_0"/>
      </eAnnotations>
      <generalization xmi:id="_6" general="_10"/>
      <ownedAttribute xmi:id="_7" name="x" type="_10">
        <lowerValue xmi:type="uml:LiteralInteger" xmi:id="_8"/>
        <ownedComment xmi:id="_9" body="of x"/>
      </ownedAttribute>
      <ownedOperation xmi:id="_11" name="f"><ownedParameter xmi:id="_12" name="p" type="_10"/></ownedOperation>
    </packagedElement>
    <packagedElement xmi:type="uml:Class" xmi:id="_10" name="B"/>
  </uml:Model>
  <core:Entity xmi:id="_13" base_Class="_4" table="T" key="k"/>
</xmi:XMI>
)"));
    EXPECT_THAT(linesOf(reader.report()),
                ElementsAre("skipped eAnnotations 1", "inside references of type ecore:EPackage 1",
                            "unresolved PackageImport.importedPackage 1",
                            "unread pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml 1"));
    EXPECT_EQ(standard(model), R"(  <uml:Model xmi:id="@1" name="Data" uri="@2">
    <packagedElement xmi:id="@1_4" xmi:type="uml:Class" name="A">
      <generalization xmi:id="@1_5" xmi:type="uml:Generalization" general="@1_11"/>
      <ownedAttribute xmi:id="@1_6" xmi:type="uml:Property" name="x" isID="false" type="@1_11">
        <ownedComment xmi:id="@1_8" xmi:type="uml:Comment" body="of x"/>
        <lowerValue xmi:id="@1_7" xmi:type="uml:LiteralInteger"/>
      </ownedAttribute>
      <ownedOperation xmi:id="@1_9" xmi:type="uml:Operation" name="f">
        <ownedParameter xmi:id="@1_10" xmi:type="uml:Parameter" name="p" type="@1_11"/>
      </ownedOperation>
      <eAnnotations xmlns:ecore="http://www.eclipse.org/emf/2002/Ecore" xmi:id="_5" source="http://example.org/a">
        <references xmi:type="ecore:EPackage" href="p.uml#_0"/>
      </eAnnotations>
    </packagedElement>
    <packagedElement xmi:id="@1_11" xmi:type="uml:Class" name="B"/>
    <ownedComment xmi:id="@1_2" xmi:type="uml:Comment" body="c" annotatedElement="@1 @1_4"/>
    <packageImport xmi:id="@1_3" xmi:type="uml:PackageImport" visibility="public">
      <importedPackage xmi:type="uml:Model" href="pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml#_0"/>
    </packageImport>
  </uml:Model>
  <Foreign:StereotypeApplication xmi:id="@1_12" profile="http:///schemas/core/_1/0" prefix="core" stereotype="Entity" base="Class" values="table=T&#10;key=k" base_Element="@1_4"/>
)");
    EXPECT_TRUE(readsBack(model));
}

/// What other tools do: members of packages by another name, a model in a model, diagrams beside it, stereotypes in it,
/// an upper bound of -1.
TEST_F(ForeignFile, OfOtherToolsBecomesAModel) {
    Model const model = readForeign(file("in.xmi", R"(<?xml version="1.0" encoding="windows-1252"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.0"
    xmlns:Custom="http://example.org/profiles/Custom">
  <xmi:Documentation exporter="Another Tool" exporterVersion="7"><xmi:Extension extender="Another Tool"/></xmi:Documentation>
  <xmi:Extension extender="Another Tool"><settings><setting id="s"/></settings></xmi:Extension>
  <uml:Model xmi:id="E1" name="m">
    <ownedMember xmi:type="uml:Model" xmi:id="E2" name="inner">
      <ownedMember xmi:type="uml:Class" xmi:id="E3" name="A">
        <ownedAttribute xmi:type="uml:Property" xmi:id="E4" name="x">
          <type xmi:idref="E6"/>
          <xmi:Extension extender="Another Tool"><qualityScore value="-1"/></xmi:Extension>
          <upperValue xmi:type="uml:LiteralUnlimitedNatural" xmi:id="E5" value="-1"/>
          <defaultValue xmi:type="uml:LiteralBoolean" xmi:id="E7" value="1"/>
        </ownedAttribute>
      </ownedMember>
      <ownedMember xmi:type="uml:Enumeration" xmi:id="E6" name="B"/>
    </ownedMember>
    <Custom:Feature base_Class="E3" isAbstract="no"/>
  </uml:Model>
  <uml:Diagram xmi:id="D1" name="d"><uml:Diagram.element><uml:DiagramElement xmi:id="D2" subject="E3"/></uml:Diagram.element></uml:Diagram>
</xmi:XMI>
)"));
    EXPECT_THAT(linesOf(reader.report()), ElementsAre("skipped {http://schema.omg.org/spec/UML/2.1}Diagram 1",
                                                      "skipped {http://schema.omg.org/spec/XMI/2.1}Extension 2",
                                                      "inside qualityScore 1", "inside setting 1", "inside settings 1",
                                                      "inside {http://schema.omg.org/spec/UML/2.1}Diagram.element 1",
                                                      "inside {http://schema.omg.org/spec/UML/2.1}DiagramElement 1"));
    EXPECT_EQ(standard(model), R"(  <uml:Model xmi:id="@1" name="m" uri="@2">
    <packagedElement xmi:id="@1_2" xmi:type="uml:Package" name="inner">
      <packagedElement xmi:id="@1_3" xmi:type="uml:Class" name="A">
        <ownedAttribute xmi:id="@1_4" xmi:type="uml:Property" name="x" isID="false" type="@1_7">
          <defaultValue xmi:id="@1_6" xmi:type="uml:LiteralBoolean" value="true"/>
          <upperValue xmi:id="@1_5" xmi:type="uml:LiteralUnlimitedNatural" value="*"/>
          <xmi:Extension extender="Another Tool"><qualityScore value="-1"/></xmi:Extension>
        </ownedAttribute>
      </packagedElement>
      <packagedElement xmi:id="@1_7" xmi:type="uml:Enumeration" name="B"/>
    </packagedElement>
  </uml:Model>
  <Foreign:StereotypeApplication xmi:id="@1_8" profile="http://example.org/profiles/Custom" prefix="Custom" stereotype="Feature" base="Class" values="isAbstract=no" base_Element="@1_3"/>
  <xmi:Extension extender="Another Tool"><settings><setting id="s"/></settings></xmi:Extension>
  <uml:Diagram xmlns:uml="http://schema.omg.org/spec/UML/2.1" xmi:id="D1" name="d"><uml:Diagram.element><uml:DiagramElement xmi:id="D2" subject="E3"/></uml:Diagram.element></uml:Diagram>
)");
    EXPECT_TRUE(readsBack(model));

    // It is a model like any other: what is changed can be taken back.
    model.beginTransaction("rename");
    uml::Model(model).setName("other");
    uml::Model(model).getPackagedElements().clear();
    model.commitTransaction();
    EXPECT_FALSE(compare(model, XmiReader().read(folder.path("out.xmi"))));
    model.undo();
    EXPECT_TRUE(readsBack(model));
}

/// After a link into a file that breaks off, the names of other tools are still understood.
TEST_F(ForeignFile, IsReadOnAfterALinkIntoOneThatBreaks) {
    static_cast<void>(folder.file("broken.uml", R"(<uml:Model xmlns:uml="http://schema.omg.org/spec/UML/2.1"
    xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmi:id="B"><packagedElement xmi:type="uml:Class" xmi:id="T">)"));
    Model const model = readForeign(file("in.uml", R"(<uml:Model xmlns:uml="http://www.eclipse.org/uml2/3.0.0/UML"
    xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmi:version="2.1" xmi:id="@1">
  <packagedElement xmi:type="uml:Class" xmi:id="A" name="A">
    <generalization xmi:id="g"><general href="broken.uml#T"/><ownedComment xmi:id="c" body="of g"/></generalization>
    <ownedAttribute xmi:id="x" name="x"/>
  </packagedElement>
  <eAnnotations xmi:id="e" xmi:label="l"/>
</uml:Model>
)"));
    EXPECT_THAT(linesOf(reader.report()), ElementsAre("skipped eAnnotations 1", "unresolved Generalization.general 1",
                                                      "unread file://" + folder.path("broken.uml") + " 1"));
    EXPECT_EQ(reader.referredModelCount(), 0);
    EXPECT_THAT(standard(model),
                ::testing::AllOf(::testing::HasSubstr("<generalization xmi:id="), ::testing::HasSubstr("body=\"of g\""),
                                 ::testing::HasSubstr("<ownedAttribute xmi:id=")));
}

TEST_F(ForeignFile, OfMagicDrawObeysTheDialectFirst) {
    Model const model = readForeign(file("in.xml", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.2"
    xmlns:MagicDraw_Profile="http://www.magicdraw.com/schemas/MagicDraw_Profile.xmi"
    xmlns:NumericTypes="http://www.magicdraw.com/schemas/NumericTypes.xmi" xmlns:common="http://www.magicdraw.com/schemas/common.xmi">
  <uml:Model xmi:id="m" name="m">
    <packagedElement xmi:type="uml:Package" href="other.xml.zip#1"/>
    <packagedElement xmi:type="uml:Enumeration" xmi:id="e" name="e">
      <ownedLiteral xmi:type="uml:EnumerationLiteral" xmi:id="l" name="l"/>
    </packagedElement>
  </uml:Model>
  <MagicDraw_Profile:DiagramInfo xmi:id="i" base_Diagram="d"/>
  <NumericTypes:unit xmi:id="u" base_EnumerationLiteral="l"/>
  <common:Enumeration xmi:id="c" base_Class="e"/>
</xmi:XMI>
)"),
                                    XmiFormat::MagicDraw);
    EXPECT_THAT(linesOf(reader.report()),
                ElementsAre("skipped packagedElement of type uml:Package 1",
                            "skipped {http://www.magicdraw.com/schemas/MagicDraw_Profile.xmi}DiagramInfo 1"));
    EXPECT_EQ(standard(model), R"(  <uml:Model xmi:id="@1" name="m" uri="@2">
    <packagedElement xmi:id="@1_2" xmi:type="uml:Enumeration" name="e">
      <ownedLiteral xmi:id="@1_3" xmi:type="uml:EnumerationLiteral" name="l"></ownedLiteral>
    </packagedElement>
    <packagedElement xmlns:uml="http://schema.omg.org/spec/UML/2.1" xmi:type="uml:Package" href="other.xml.zip#1"/>
  </uml:Model>
  <Foreign:StereotypeApplication xmi:id="@1_5" profile="http://www.magicdraw.com/schemas/common.xmi" prefix="common" stereotype="Enumeration" base="Class" base_Element="@1_2"/>
  <NumericTypes:unit xmi:id="@1_4" base_EnumerationLiteral="@1_3"/>
  <MagicDraw_Profile:DiagramInfo xmlns:MagicDraw_Profile="http://www.magicdraw.com/schemas/MagicDraw_Profile.xmi" xmi:id="i" base_Diagram="d"/>
)");
}

TEST_F(ForeignFile, OfThisSystemIsReadAsWithoutHelp) {
    Model const model = read(file("in.xmi", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1"
    xmlns:Tessel="http://www.quillon.example/schemas/Tessel.xmi">
  <uml:Model xmi:id="@1" name="m">
    <packagedElement xmi:type="uml:Component" xmi:id="@1_2" name="c">
      <ownedComment xmi:type="uml:Comment" xmi:id="@1_3" annotatedElement="@1_2"/>
    </packagedElement>
  </uml:Model>
  <Tessel:algorithmicComponent xmi:id="@1_4" base_Component="@1_2"/>
</xmi:XMI>
)"));
    ASSERT_FALSE(standard(model).empty());
    EXPECT_TRUE(compare(model, readForeign(folder.path("out.xmi"))));
    EXPECT_TRUE(reader.report().isEmpty());
}

/// Other versions of UML call some things otherwise, keep them elsewhere or presume them. All of that is understood.
TEST_F(ForeignFile, OfAnyVersionOfUmlHasTheNamesOfThisOne) {
    std::map<std::string, std::vector<std::string>> const expected = {
        {"eclipse-1.uml2",
         {R"(<interfaceRealization xmi:id="_clerk-i" xmi:type="uml:InterfaceRealization")",
          R"(<ownedParameter xmi:id="_serve-p" xmi:type="uml:Parameter")",
          R"(<node xmi:id="_nod" xmi:type="uml:OpaqueAction")", R"(<node xmi:id="_all-s" xmi:type="uml:InitialNode")",
          R"(name="front" node="_nod")", R"(<subpartition xmi:id="_left" xmi:type="uml:ActivityPartition")",
          R"(<ownedBehavior xmi:id="_count" xmi:type="uml:FunctionBehavior" name="count"/>)",
          R"(<collaborationUse xmi:id="_role" xmi:type="uml:CollaborationUse")"}},
        {"eclipse-activities.uml",
         {R"(isFinalSpecialization="true")", R"(isConjugated="true")", R"(protocol="_manners")",
          R"(<ownedBehavior xmi:id="_lend" xmi:type="uml:Activity" name="lend" isReentrant="true" partition="_front">)",
          R"(<ownedBehavior xmi:id="_add" xmi:type="uml:FunctionBehavior" name="add"/>)",
          R"(<node xmi:id="_loop" xmi:type="uml:LoopNode" name="each book")", R"(isLocallyReentrant="true")",
          R"(<structuredNodeInput xmi:id="_loop-in" xmi:type="uml:InputPin")",
          R"(<endData xmi:id="_ask-e1" xmi:type="uml:LinkEndCreationData")", R"(value="_ask-i1")",
          R"(xmi:type="uml:InterruptibleActivityRegion" name="hurry")"}},
        {"eclipse-states.uml",
         {R"(<ownedRule xmi:id="_open-o" xmi:type="uml:Constraint" name="noted"/>)",
          R"(<guard xmi:id="_open-g" xmi:type="uml:Constraint" name="unlocked">)",
          R"(<ownedComment xmi:id="_open-gc" xmi:type="uml:Comment")",
          R"(<preCondition xmi:id="_open-b" xmi:type="uml:Constraint")",
          R"(<postCondition xmi:id="_open-a" xmi:type="uml:Constraint")",
          R"(<stateInvariant xmi:id="_shut-i" xmi:type="uml:Constraint")",
          R"(<when xmi:id="_nine-w" xmi:type="uml:TimeExpression">)"}},
        {"omg-2.5.1.xmi",
         {R"(<packagedElement xmi:id="_in" xmi:type="uml:Model" name="in" uri="http://example.org/in">)",
          R"(<ownedComment xmi:id="_in-c" xmi:type="uml:Comment" body="a part"/>)",
          R"(name="deep" uri="http://example.org/in/deep")",
          R"(<packagedElement xmi:id="_call" xmi:type="uml:Interaction" name="call">)",
          R"(xmi:type="uml:DestructionOccurrenceSpecification")", R"(<returnValue xmi:id="_u-r")",
          R"(<packagedElement xmi:id="_q" xmi:type="uml:StateMachine" name="q" isReentrant="true")",
          R"(<subvertex xmi:id="_q-s" xmi:type="uml:State" name="s" redefinedState="_p-s"/>)",
          R"(<subvertex xmi:id="_q-f" xmi:type="uml:FinalState" name="f" redefinedState="_p-s"/>)",
          R"(<firstEvent>true</firstEvent>)", R"(<firstEvent>false</firstEvent>)"}}};
    for (auto const & [shape, parts] : expected) {
        SCOPED_TRACE(shape);
        Model const model = readForeign(std::string(SHAPES_FOLDER) + "/" + shape);
        ASSERT_TRUE(model.isValid());
        EXPECT_THAT(linesOf(reader.report()), ::testing::IsEmpty());
        std::string const text = converted(model);
        for (std::string const & part : parts) {
            EXPECT_THAT(text, ::testing::HasSubstr(part));
        }
    }
}

/// An attribute that names what is no part of its element says something that nothing else does.
TEST_F(ForeignFile, KeepsAttributesThatNameOthersThanParts) {
    Model const model = readForeign(file("in.uml", R"(<uml:Model xmlns:uml="http://www.eclipse.org/uml2/4.0.0/UML"
    xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmi:version="2.1" xmi:id="m">
  <packagedElement xmi:type="uml:Activity" xmi:id="a" node="n gone">
    <node xmi:type="uml:InitialNode" xmi:id="n"/>
  </packagedElement>
  <packagedElement xmi:type="uml:StateMachine" xmi:id="s">
    <region xmi:id="r">
      <ownedRule xmi:id="g"/>
      <transition xmi:id="t" guard="g" source="v" target="v"/>
      <transition xmi:id="u" guard="h i" source="v" target="v"><ownedRule xmi:id="h"/><ownedRule xmi:id="i"/></transition>
      <subvertex xmi:type="uml:State" xmi:id="v"/>
    </region>
  </packagedElement>
</uml:Model>
)"));
    EXPECT_THAT(linesOf(reader.report()), ElementsAre("ignored Activity.node 1", "ignored Transition.guard 2"));
    std::string const text = converted(model);
    for (char const * const part :
         {R"(node="n gone")", R"(guard="g")", R"(guard="h i")", R"(<ownedRule xmi:id="g" xmi:type="uml:Constraint"/>)",
          R"(<ownedRule xmi:id="h" xmi:type="uml:Constraint"/>)"}) {
        EXPECT_THAT(text, ::testing::HasSubstr(part));
    }
}

/// What an element says where it says nothing that a property could hold.
TEST_F(ForeignFile, KeepsWhatIsHardlySaid) {
    Model const model = readForeign(file("in.uml", R"(<uml:Model xmlns:uml="http://www.eclipse.org/uml2/4.0.0/UML"
    xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmi:version="2.1" xmi:id="m" xmlns:q="urn:q">
  <packagedElement xmi:type="uml:Class" xmi:id="c">
    <ownedAttribute xmi:id="a"><type xmi:idref="c" redefinedProperty=""><xmi:Extension extender="q"><n/></xmi:Extension></type></ownedAttribute>
    <ownedAttribute xmi:id="b"><type xmi:type="q:Thing" href="gone.uml#x"/></ownedAttribute>
    <ownedRule xmi:type="uml:DurationConstraint" xmi:id="r" firstEvent="false"/>
  </packagedElement>
  <packagedElement xmi:type="uml:InformationFlow" xmi:id="f" informationSource="c" informationTarget="c"><conveyed/></packagedElement>
</uml:Model>
)"));
    std::string const text = converted(model);
    for (char const * const part :
         {R"( xmlns:q="urn:q")", R"(<type xmi:type="q:Thing" href="gone.uml#x"/>)", R"( firstEvent="false")",
          "<conveyed/>", R"(<xmi:Extension extender="q"><n/></xmi:Extension>)"}) {
        EXPECT_THAT(text, ::testing::HasSubstr(part));
    }
    expectStable(model);
}

/// References stand for characters in texts only, so that such a file has another encoding.
TEST_F(ForeignFile, KeepsNamesOfAllAlphabets) {
    std::string const contents[] = {"<eAnnotations xmi:id=\"_a\"><名 é=\"名\">名</名></eAnnotations>",
                                    "<q:名 xmlns:q=\"urn:q\" base_Model=\"m\" 值=\"1\"/>"};
    for (std::string const & content : contents) {
        SCOPED_TRACE(content);
        Model const model = readForeign(file("in.uml", R"(<uml:Model xmlns:uml="http://www.eclipse.org/uml2/4.0.0/UML"
    xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmi:version="2.1" xmi:id="m" name="店">)" +
                                                           content + "</uml:Model>\n"));
        std::string const text = converted(model);
        EXPECT_THAT(text, ::testing::StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
        EXPECT_THAT(text, ::testing::HasSubstr("名"));
        expectStable(model);
    }
}

/// The same prefix may stand for several namespaces, and one of this system's own for another one.
TEST_F(ForeignFile, HasOneNamespaceForEachPrefix) {
    Model const model =
        readForeign(file("in.xmi", R"(<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1">
  <uml:Model xmlns:uml="http://schema.omg.org/spec/UML/2.1" xmi:id="m">
    <packagedElement xmi:type="uml:Class" xmi:id="c" p:x="1" xmlns:p="urn:z"/>
    <packagedElement xmi:type="uml:Class" xmi:id="d"><ownedAttribute xmi:id="e"><type xmi:type="p:T" href="gone#x" xmlns:p="urn:y"/></ownedAttribute></packagedElement>
  </uml:Model>
  <p:Kept xmlns:p="http://example.org/p" base_Class="c"/>
  <uml:Kept xmlns:uml="http://example.org/u" base_Class="c"/>
  <Tessel:Kept xmlns:Tessel="http://example.org/t" base_Class="c"/>
</xmi:XMI>
)"));
    std::string const text = converted(model);
    for (char const * const part : {"<p:Kept ", "<uml2:Kept ", "<Tessel2:Kept ", "xmlns:p=\"http://example.org/p\"",
                                    "xmlns:uml=\"http://schema.omg.org/spec/UML/2.1\"", ":x=\"1\""}) {
        EXPECT_THAT(text, ::testing::HasSubstr(part));
    }
    Model const copy = readForeign(folder.path("out.xmi"));
    EXPECT_EQ(ImmutableClassObject(uml::Model(copy).getPackagedElements().at(0)).getAppliedStereotypeInstances().size(),
              3);
}

/// What other tools write in many ways is read whole, and written in one way that no further run changes.
TEST_F(ForeignFile, OfEachShapeIsTheSameAfterASecondConversion) {
    for (auto const & entry : std::filesystem::directory_iterator(SHAPES_FOLDER)) {
        std::string const shape = entry.path().filename().string();
        if (shape == "README.md" || shape == "xmi-1.2.xmi") {
            continue;
        }
        SCOPED_TRACE(shape);
        Model const first = readForeign(entry.path().string());
        ASSERT_TRUE(first.isValid());
        std::string const text = converted(first);
        std::filesystem::rename(folder.path("out.xmi"), folder.path("in.xmi"));
        Model const second = readForeign(folder.path("in.xmi"));
        EXPECT_EQ(converted(second), text);
    }
}

TEST_F(ForeignFile, IsWrittenWithWhatStoodAtItsTopThere) {
    // What the file has, and whether there is another model around it.
    std::string const tops[] = {
        R"(  <uml:Package xmi:id="p" name="people"/>
  <uml:Model xmi:id="m" name="second">
    <packagedElement xmi:id="n" xmi:type="uml:Model" name="inner" viewpoint="v"/>
  </uml:Model>
)",
        R"(  <uml:Model xmi:id="m">
    <packagedElement xmi:id="n" xmi:type="uml:Model"/>
  </uml:Model>
  <uml:Model xmi:id="o" name="third"/>
  <uml:Class xmi:id="c" name="C">
    <ownedComment xmi:id="d" xmi:type="uml:Comment" body="of c" annotatedElement="c"/>
  </uml:Class>
)",
        R"(  <uml:Enumeration xmi:id="e" name="alone"/>
)"};
    for (std::string const & top : tops) {
        SCOPED_TRACE(top);
        Model const model = readForeign(file("in.xmi", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.5.1" xmlns:xmi="http://www.omg.org/spec/XMI/20131001" xmlns:uml="http://www.omg.org/spec/UML/20131001">
)" + top + "</xmi:XMI>\n"));
        std::string const text = converted(model);
        EXPECT_THAT(text, ::testing::HasSubstr("exporterVersion=\"1.0\"/>\n" + top + "</xmi:XMI>"));
        // Files without what this library adds have no place for it.
        EXPECT_THAT(standard(model),
                    ::testing::MatchesRegex("  <uml:Model [^<]*>\n    <packagedElement (.|\n)*</uml:Model>\n"));
        EXPECT_TRUE(readsBack(model));
    }
}

TEST_F(ForeignFile, IsOfVersionsWhoseTablesNameWhatTheMetamodelHas) {
    ImmutablePackage const uml = uml::getMetaModel().getTopPackage();
    std::vector<std::pair<std::string_view, std::string_view>> names;
    for (UmlClassName const & row : umlClassNames()) {
        names.emplace_back(row.name, "");
    }
    for (UmlPropertyName const & row : umlPropertyNames()) {
        names.emplace_back(row.metaClass, row.name);
    }
    for (UmlSubset const & row : umlSubsets()) {
        names.emplace_back(row.metaClass, row.property);
        names.emplace_back(row.metaClass, row.container);
    }
    for (UmlImpliedType const & row : umlImpliedTypes()) {
        names.emplace_back(row.metaClass, row.property);
        names.emplace_back(row.type, "");
    }
    for (UmlDefault const & row : umlDefaults()) {
        names.emplace_back(row.metaClass, row.property);
    }
    for (auto const & [metaClass, property] : names) {
        ImmutableClass const found(uml.getOwnedTypeByName(String(metaClass)));
        ASSERT_TRUE(found.isValid()) << metaClass;
        EXPECT_TRUE(property.empty() || found.getProperty(String(property)).isValid()) << metaClass << "." << property;
    }
}

TEST(UmlNamespace, IsThatOfAnyVersionOfItsSecondGeneration) {
    std::map<std::string, bool> const expected = {
        {"http://schema.omg.org/spec/UML/2.0", true},
        {"http://schema.omg.org/spec/UML/2.1.1", true},
        {"http://www.omg.org/spec/UML/20131001", true},
        {"http://www.omg.org/spec/UML/20131001/StandardProfile", false},
        {"http://schema.omg.org/spec/UML/1.4", false},
        {"http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2", false},
        {"http://www.eclipse.org/uml2/3.0.0/UML", true},
        {"http://www.eclipse.org/uml2/schemas/Standard/1", false},
        {"http://www.eclipse.org/uml2/x/UML", false},
        {"http://schema.omg.org/spec/MOF/2.0", false},
        {"", false},
    };
    for (auto const & [uri, is] : expected) {
        EXPECT_EQ(isUmlNamespace(uri), is) << uri;
    }
}

} // namespace
} // namespace ZEL::Interchange
