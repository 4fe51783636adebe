#include "ForeignFile.h"

#include <ZEL/interchange/ToolForm.h>

#include <filesystem>

namespace ZEL::Interchange {
namespace {

using Serializer::XmiReader;
using Serializer::XmiReaderSettings;
using ::testing::HasSubstr;

class WrittenForm : public tests::ForeignFileTest {
protected:
    std::string writtenAs(ToolForm form, Model const & model) {
        Serializer::XmiWriterSettings settings;
        settings.setKeepFileIds(true);
        settings.setElementPerValue(true);
        settings.setFileForm(fileFormOf(form));
        Serializer::XmiWriter writer(settings);
        addWriteTransforms(writer, model);
        EXPECT_TRUE(writer.write(folder.path("out.uml"), model)) << writer.failureReason();
        return folder.content("out.uml");
    }
    Model readText(std::string const & text) { return readForeign(file("in.uml", text)); }
};

constexpr char kShop[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://www.eclipse.org/uml2/3.0.0/UML" xmlns:Till="http://example.org/schemas/Till/1">
  <uml:Model xmi:id="m" name="Größe €">
    <packagedElement xmi:type="uml:Class" xmi:id="b" name="Basket" colour="red">
      <ownedAttribute xmi:id="s" name="sum" type="d"/>
      <ownedAttribute xmi:id="o" name="of"><type href="other.uml#x"/></ownedAttribute>
      <xmi:Extension extender="Shop"><p:place xmlns:p="urn:p" xmi:type="p:Spot" p:x="1">  </p:place></xmi:Extension>
    </packagedElement>
    <packagedElement xmi:type="uml:DataType" xmi:id="d" name="Sum"/>
    <packagedElement xmi:type="uml:Association" xmi:id="a" memberEnd="e f">
      <ownedEnd xmi:id="e" type="b" association="a"/>
      <ownedEnd xmi:id="f" type="b" association="a"/>
    </packagedElement>
  </uml:Model>
  <Till:Printed xmi:id="t" base_Class="b" width="40"/>
</xmi:XMI>
)";

TEST_F(WrittenForm, IsThatOfTheOtherTool) {
    Model const model = readText(kShop);
    EXPECT_EQ(writtenAs(ToolForm::EclipseUml2, model), R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmlns:Till="http://example.org/schemas/Till/1" xmlns:uml="http://www.eclipse.org/uml2/5.0.0/UML" xmlns:xmi="http://www.omg.org/spec/XMI/20131001" xmi:version="20131001">
  <uml:Model xmi:id="m" name="Größe €">
    <packagedElement xmi:type="uml:Class" xmi:id="b" name="Basket" colour="red">
      <ownedAttribute xmi:type="uml:Property" xmi:id="s" name="sum" isID="false" type="d"/>
      <ownedAttribute xmi:type="uml:Property" xmi:id="o" name="of" isID="false">
        <type href="other.uml#x"/>
      </ownedAttribute>
      <xmi:Extension xmlns:p="urn:p" extender="Shop">
        <p:place xmi:type="p:Spot" p:x="1">  </p:place>
      </xmi:Extension>
    </packagedElement>
    <packagedElement xmi:type="uml:DataType" xmi:id="d" name="Sum"/>
    <packagedElement xmi:type="uml:Association" xmi:id="a" memberEnd="e f">
      <ownedEnd xmi:type="uml:Property" xmi:id="e" isID="false" type="b" association="a"/>
      <ownedEnd xmi:type="uml:Property" xmi:id="f" isID="false" type="b" association="a"/>
    </packagedElement>
  </uml:Model>
  <Till:Printed xmi:id="t" width="40" base_Class="b"/>
</xmi:XMI>
)");
    EXPECT_TRUE(compare(model, readForeign(folder.path("out.uml"))));
    std::string const text = writtenAs(ToolForm::Xmi251, model);
    EXPECT_THAT(text, HasSubstr(R"(
<xmi:XMI xmlns:Till="http://example.org/schemas/Till/1" xmlns:uml="http://www.omg.org/spec/UML/20161101" xmlns:xmi="http://www.omg.org/spec/XMI/20131001">
)"));
    EXPECT_THAT(text, HasSubstr(R"(
      <ownedAttribute xmi:type="uml:Property" xmi:id="s" name="sum" isID="false">
        <type xmi:idref="d"/>
      </ownedAttribute>
)"));
    EXPECT_THAT(text, HasSubstr(R"(
    <packagedElement xmi:type="uml:Association" xmi:id="a">
      <memberEnd xmi:idref="e"/>
      <memberEnd xmi:idref="f"/>
)"));
    EXPECT_TRUE(compare(model, readForeign(folder.path("out.uml"))));
    // What this system writes of it later still has everything.
    EXPECT_EQ(writtenAs(ToolForm::Xmi251, readForeign(folder.path("out.uml"))), text);
}

TEST_F(WrittenForm, OfEclipseHasNoEnvelopeAroundASingleElement) {
    std::string const text = writtenAs(ToolForm::EclipseUml2, readText(R"(<?xml version="1.0" encoding="UTF-8"?>
<uml:Package xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://www.eclipse.org/uml2/3.0.0/UML" xmi:id="p" name="alone"/>
)"));
    EXPECT_EQ(text, R"(<?xml version="1.0" encoding="UTF-8"?>
<uml:Package xmlns:uml="http://www.eclipse.org/uml2/5.0.0/UML" xmlns:xmi="http://www.omg.org/spec/XMI/20131001" xmi:version="20131001" xmi:id="p" name="alone"/>
)");
}

TEST_F(WrittenForm, HasTheNamesThatTheToolHas) {
    Model const model = readForeign(SHAPES_FOLDER "/eclipse-states.uml");
    std::string const text = writtenAs(ToolForm::EclipseUml2, model);
    EXPECT_THAT(text, HasSubstr(R"(guard="_open-g" postCondition="_open-a" preCondition="_open-b">)"));
    EXPECT_THAT(text, HasSubstr(R"(<ownedRule xmi:type="uml:Constraint" xmi:id="_open-g" name="unlocked">)"));
    EXPECT_THAT(writtenAs(ToolForm::Xmi251, model),
                HasSubstr(R"(<guard xmi:type="uml:Constraint" xmi:id="_open-g" name="unlocked">)"));
}

TEST_F(WrittenForm, HoldsEachShapeWhole) {
    for (auto const & entry : std::filesystem::directory_iterator(SHAPES_FOLDER)) {
        std::string const shape = entry.path().filename().string();
        if (shape == "README.md" || shape == "xmi-1.2.xmi" || shape.ends_with("mof")) {
            continue;
        }
        for (ToolForm const form : {ToolForm::EclipseUml2, ToolForm::Xmi251}) {
            SCOPED_TRACE(shape + (form == ToolForm::Xmi251 ? " as XMI 2.5.1" : " as Eclipse"));
            Model const model = readForeign(entry.path().string());
            bool const hasOtherFile = reader.referredModelCount() != 0; // of which each reading has its own objects
            std::string const text = writtenAs(form, model);
            Model const again = readForeign(folder.path("out.uml"));
            EXPECT_TRUE(hasOtherFile || compare(model, again));
            EXPECT_EQ(writtenAs(form, again), text);
        }
    }
}

TEST_F(WrittenForm, LeavesNothingBesideTheFile) {
    Model const model = readText(kShop);
    static_cast<void>(writtenAs(ToolForm::Xmi251, model));
    for (auto const & entry : std::filesystem::directory_iterator(folder.path(""))) {
        std::string const name = entry.path().filename().string();
        EXPECT_TRUE(name == "in.uml" || name == "out.uml") << name;
    }
    Serializer::XmiWriterSettings settings;
    settings.setFileForm(fileFormOf(ToolForm::EclipseUml2));
    Serializer::XmiWriter writer(settings);
    EXPECT_FALSE(writer.write(folder.path("none/out.uml"), model));
    EXPECT_EQ(writer.failureReason(), "No such file or directory");
}

} // namespace
} // namespace ZEL::Interchange
