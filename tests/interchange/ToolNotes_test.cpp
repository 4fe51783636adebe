#include "ForeignFile.h"

#include <ZEL/metamodel/Remainder.h>
#include <ZEL/tools/ObjectsIn.h>

namespace ZEL::Interchange {
namespace {

using Serializer::Merger;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

/// Files in which tools keep more of a model than its elements say.
class ToolNotesOf : public tests::ForeignFileTest {
protected:
    /// By the reader as it is.
    Model readForeign(std::string const & path) {
        addReadTransforms(reader);
        return Model(reader.read(path));
    }
    static std::string document(std::string const & tool, std::string const & model, std::string const & beside = "") {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmi:XMI xmi:version=\"2.1\" "
               "xmlns:xmi=\"http://schema.omg.org/spec/XMI/2.1\" xmlns:uml=\"http://schema.omg.org/spec/UML/2.1\">\n"
               "<xmi:Documentation exporter=\"" +
               tool + "\"/>\n<uml:Model xmi:type=\"uml:Model\" name=\"m\">\n" + model + "</uml:Model>\n" + beside +
               "</xmi:XMI>\n";
    }
    static std::string block(std::string const & content) {
        return "<xmi:Extension extender=\"Enterprise Architect\" extenderID=\"6.5\">" + content + "</xmi:Extension>\n";
    }
    /// The comments of the model: "owner: text".
    static std::vector<std::string> comments(Model const & model) {
        std::vector<std::string> lines;
        for (ImmutableClassObject const & object : objectsIn(model)) {
            if (ImmutableComment const comment(object); comment.isValid()) {
                ImmutableNamedElement const owner(object.getContainerZEL());
                EXPECT_EQ(comment.getAnnotatedElements().at(0), owner);
                lines.push_back(owner.getName().str() + ": " + comment.getBody().str());
            }
        }
        return lines;
    }
    /// The typed elements with names: "name: type".
    static std::vector<std::string> types(Model const & model) {
        std::vector<std::string> lines;
        for (ImmutableClassObject const & object : objectsIn(model)) {
            if (ImmutableTypedElement const element(object); element.isValid() && element.hasName()) {
                lines.push_back(element.getName().str() + ": " +
                                (element.hasType() ? element.getType().getName().str() : "-"));
            }
        }
        return lines;
    }
};

TEST_F(ToolNotesOf, EnterpriseArchitectAreCommentsOfWhatTheyAreAbout) {
    Model const model = readForeign(file("in.xml", document("Enterprise Architect", R"(
      <packagedElement xmi:type="uml:Package" xmi:id="EAPK_1" name="p">
        <packagedElement xmi:type="uml:Class" xmi:id="EAID_A" name="A">
          <ownedComment xmi:type="uml:Comment" xmi:id="EAID_K" body="Known" annotatedElement="EAID_A"/>
          <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_a" name="a"/>
          <ownedOperation xmi:id="EAID_f" name="f"><ownedParameter xmi:id="EAID_q" name="q"/></ownedOperation>
        </packagedElement>
        <packagedElement xmi:type="uml:Association" xmi:id="EAID_AB123456_7" name="l">
          <ownedEnd xmi:type="uml:Property" xmi:id="EAID_src123456_7" name="from" type="EAID_A"/>
          <ownedEnd xmi:type="uml:Property" xmi:id="EAID_dst123456_7" name="to" type="EAID_A"/>
        </packagedElement>
        <ownedComment xmi:type="uml:Comment" xmi:id="EAID_N" body="n" annotatedElement="EAPK_1"/>
      </packagedElement>
)",
                                                            block(R"(
      <elements>
        <element xmi:idref="EAPK_1"><properties documentation="Of p" sType="Package"/></element>
        <element xmi:idref="EAID_A"><model tpos="0"/><properties documentation="Of A,&#xA;in &lt;b&gt;two&lt;/b&gt; lines"/>
          <attributes><attribute xmi:idref="EAID_a"><documentation value="Of a"/></attribute></attributes>
          <operations><operation xmi:idref="EAID_f"><documentation value="Of f"/>
            <parameters><parameter xmi:idref="EAID_q"><documentation value="Of q"/></parameter></parameters>
          </operation></operations>
        </element>
        <element xmi:idref="EAID_A"><properties documentation="Known"/></element>
        <element xmi:idref="EAID_N"><properties documentation="other"/></element>
        <element xmi:idref="EAID_A"><properties documentation=" "/><constraints><constraint><properties
          documentation="of a constraint"/></constraint></constraints></element>
        <element xmi:idref="EAID_gone"><properties documentation="Of nothing"/></element>
      </elements>
      <connectors><connector xmi:idref="EAID_AB123456_7">
        <source xmi:idref="EAID_A"><documentation value="Of from"/></source>
        <target xmi:idref="EAID_A"><documentation value="Of to"/></target>
        <documentation value="Of l"/>
      </connector></connectors>
)") + "<xmi:Extension extender=\"Another Tool\"><elements><element xmi:idref=\"EAID_A\"><properties "
      "documentation=\"no\"/></element></elements></xmi:Extension>\n")));
    EXPECT_THAT(comments(model),
                UnorderedElementsAre("p: n", "p: Of p", "A: Known", "A: Of A,\nin <b>two</b> lines", "a: Of a",
                                     "f: Of f", "q: Of q", "l: Of l", "from: Of from", "to: Of to"));
    EXPECT_EQ(remainderOf(model).elements.size(), 2U);
    expectStable(model);

    // What is there already does not come twice where a file is read into the model.
    reader.setMerger(new Merger(model));
    EXPECT_EQ(readForeign(folder.path("first.xmi")), model);
    EXPECT_EQ(comments(model).size(), 10U);
}

TEST_F(ToolNotesOf, EnterpriseArchitectGiveTypesByName) {
    Model const model = readForeign(file("in.xml", document("Enterprise Architect", R"(
      <packagedElement xmi:type="uml:Class" xmi:id="EAID_A" name="A">
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_1" name="listed"><type xmi:idref="EAJava_unsigned_int"/></ownedAttribute>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_2" name="known"><type xmi:idref="EAJava_float"/></ownedAttribute>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_3" name="class"><type xmi:idref="EAnone_A"/></ownedAttribute>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_4" name="beside"/>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_5" name="again"/>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_6" name="two"/>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_7" name="unknown"><type xmi:idref="EAJava_CharacterString"/></ownedAttribute>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_8" name="elsewhere"><type xmi:idref="EAID_gone"/></ownedAttribute>
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_9" name="own" type="EAID_B"/>
        <ownedOperation xmi:id="EAID_f" name="f"><ownedParameter xmi:id="EAID_r" name="r" direction="return"/></ownedOperation>
      </packagedElement>
      <packagedElement xmi:type="uml:Class" xmi:id="EAID_B" name="Two"/>
      <packagedElement xmi:type="uml:Class" xmi:id="EAID_C" name="Two"/>
)",
                                                            block(R"(
      <elements><element xmi:idref="EAID_A"><attributes>
        <attribute xmi:idref="EAID_4"><properties type="A"/></attribute>
        <attribute xmi:idref="EAID_5"><properties type="unsigned int"/></attribute>
        <attribute xmi:idref="EAID_6"><properties type="Two"/></attribute>
        <attribute xmi:idref="EAID_8"><properties type="A"/></attribute>
        <attribute xmi:idref="EAID_9"><properties type="A"/></attribute>
      </attributes><operations><operation xmi:idref="EAID_f"><type type="int"/>
        <parameters><parameter xmi:idref="EAID_r"><properties type="float"/></parameter></parameters>
      </operation></operations></element></elements>
      <primitivetypes><packagedElement xmi:type="uml:Package" xmi:id="EAPrimitiveTypesPackage" name="x">
        <packagedElement xmi:type="uml:PrimitiveType" xmi:id="EAJava_unsigned_int" name="unsigned int"/>
        <packagedElement xmi:type="uml:PrimitiveType" xmi:id="EAJava_unused" name="unused"/>
      </packagedElement></primitivetypes>
)"))));
    EXPECT_THAT(types(model), UnorderedElementsAre("listed: unsigned int", "known: float", "class: A", "beside: A",
                                                   "again: unsigned int", "two: -", "unknown: -", "elsewhere: -",
                                                   "own: Two", "f: float", "r: float"));
    std::vector<std::string> made;
    uml::Model(model).getPackagedElements().forEach([&](ImmutableNamedElement const & element) {
        if (ImmutablePackage const package(element); package.isValid()) {
            package.getOwnedTypes().forEach([&](ImmutableType const & type) {
                made.push_back(package.getName().str() + "::" + type.getName().str() + " " +
                               type.getMetaClass().getName().str());
            });
        }
    });
    EXPECT_THAT(made, UnorderedElementsAre("EA_PrimitiveTypes_Package::unsigned int PrimitiveType",
                                           "EA_PrimitiveTypes_Package::float PrimitiveType"));
    EXPECT_EQ(reader.report().unresolvedReferences().at("Property.type"), 2U) << "unknown, elsewhere";
    EXPECT_THAT(converted(model, "out.xmi"),
                ::testing::HasSubstr("name=\"listed\" isID=\"false\" type=\"EAJava_unsigned_int\""));
    expectStable(model);
}

TEST_F(ToolNotesOf, EnterpriseArchitectNeedNoBlockForTypesOfTheModel) {
    Model const model = readForeign(file("in.xml", document("Enterprise Architect", R"(
      <packagedElement xmi:type="uml:Class" xmi:id="EAID_A" name="A">
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_1" name="a"><type xmi:idref="EAJava_A"/></ownedAttribute>
      </packagedElement>
)")));
    EXPECT_THAT(types(model), ElementsAre("a: A"));
    EXPECT_TRUE(reader.report().isEmpty());
    Model const other = readForeign(file("in.xml", document("Another Tool", R"(
      <packagedElement xmi:type="uml:Class" xmi:id="EAID_A" name="A">
        <ownedAttribute xmi:type="uml:Property" xmi:id="EAID_1" name="a"><type xmi:idref="EAJava_A"/></ownedAttribute>
      </packagedElement>
)")));
    EXPECT_THAT(types(other), ElementsAre("a: -"));
}

TEST_F(ToolNotesOf, VisualParadigmAreCommentsOfTheElementsThatTheyStandIn) {
    auto const block = [](std::string const & content) {
        return "<xmi:Extension extender=\"Visual Paradigm\"><isRoot xmi:value=\"false\"/>" + content +
               "<qualityScore value=\"-1\"/></xmi:Extension>";
    };
    Model const model = readForeign(
        file("in.xml", document("Visual Paradigm",
                                "<ownedMember xmi:type=\"uml:Class\" xmi:id=\"a\" name=\"A\">" +
                                    block("<documentation plainText=\"Of A\">&lt;p&gt;Of A&lt;/p&gt;</documentation>") +
                                    "<ownedAttribute xmi:id=\"x\" name=\"x\">" +
                                    block("<documentation>Of <b>bold</b>x</documentation>") +
                                    "</ownedAttribute><ownedAttribute xmi:id=\"y\" name=\"y\">" +
                                    block("<documentation xmi:value=\"Of y\"/><documentation value=\"\"/>") +
                                    "</ownedAttribute><ownedAttribute xmi:id=\"z\" name=\"z\">" +
                                    block("<other><documentation value=\"not of z\"/></other><documentation/>") +
                                    "</ownedAttribute></ownedMember>\n")));
    EXPECT_THAT(comments(model), UnorderedElementsAre("A: Of A", "x: Of boldx", "y: Of y"));
    expectStable(model);
}

/// Blocks of any size and shape cost no more than their reading.
TEST_F(ToolNotesOf, EnterpriseArchitectOfAnyNumberAreReadInLinearTime) {
    std::string many;
    for (int i = 0; i < 20'000; ++i) {
        std::string const number = std::to_string(i);
        many += "<element xmi:idref=\"EAID_A\"><properties documentation=\"" + number +
                "\"/></element><element xmi:idref=\"EAID_gone" + number +
                "\"><properties documentation=\"x\"/></element>";
    }
    std::string deep;
    for (int i = 0; i < 20'000; ++i) {
        deep += "<element xmi:idref=\"EAID_A\">";
    }
    for (int i = 0; i < 20'000; ++i) {
        deep += "</element>";
    }
    Model const model =
        readForeign(file("in.xml", document("Enterprise Architect",
                                            "<packagedElement xmi:type=\"uml:Class\" xmi:id=\"EAID_A\" name=\"A\"/>",
                                            block(many + deep))));
    EXPECT_EQ(comments(model).size(), 20'000U);
}

} // namespace
} // namespace ZEL::Interchange
