#include "DialectFixture.h"

#include <ZEL/tools/Comparator.h>

namespace ZEL::Serializer {
namespace {

class MagicDrawFile : public testsupport::DialectFixture {
protected:
    /// A file of the tool.
    std::string toolFile(std::string const & name, std::string const & content) const {
        return file(name, R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1"
    xmlns:NumericTypes="http://www.magicdraw.com/schemas/NumericTypes.xmi"
    xmlns:MagicDraw_Profile="http://www.magicdraw.com/schemas/MagicDraw_Profile.xmi"
    xmlns:UML_Standard_Profile="http://www.magicdraw.com/schemas/UML_Standard_Profile.xmi">
)" + content + "</xmi:XMI>\n");
    }
    /// The units stand on literals, the third on none, the one on which the first builds in another file. What is measured
    /// in a unit refers to its literal. The other unit of the first quantity is given by itself, that of the second,
    /// wrongly, by a literal.
    uml::Model readUnits() {
        toolFile("base.xml", R"(  <uml:Model xmi:id="b1" name="Base">
    <packagedElement xmi:type="uml:Enumeration" xmi:id="b2" name="Length">
      <ownedLiteral xmi:type="uml:EnumerationLiteral" xmi:id="b3" name="nm"/>
    </packagedElement>
  </uml:Model>
  <NumericTypes:unit xmi:id="b4" base_EnumerationLiteral="b3"/>
)");
        return read(toolFile("in.xml", R"(  <xmi:Documentation exporter="MagicDraw UML" exporterVersion="16.5"/>
  <xmi:Extension extender="MagicDraw UML 16.5"><plugin pluginName="UML" pluginVersion="1"/></xmi:Extension>
  <uml:Model xmi:id="eee_1045467100313_135436_1" name="Data" visibility="public">
    <packagedElement xmi:type="uml:Package" href="UML_Standard_Profile.xml#magicdraw_uml_standard_profile_v_0001">
      <ownedComment xmi:type="uml:Comment" xmi:id="_16_5_1_0" body="in the other file"/>
    </packagedElement>
    <packagedElement xmi:type="uml:Enumeration" xmi:id="_16_5_1_1" name="Length">
      <ownedLiteral xmi:type="uml:EnumerationLiteral" xmi:id="_16_5_1_2" name="m"/>
      <ownedLiteral xmi:type="uml:EnumerationLiteral" xmi:id="_16_5_1_3" name="km"/>
    </packagedElement>
    <packagedElement xmi:type="uml:DataType" xmi:id="_16_5_1_4" name="Distance"/>
    <packagedElement xmi:type="uml:DataType" xmi:id="_16_5_1_5" name="Mass"/>
  </uml:Model>
  <NumericTypes:unit xmi:id="_16_5_1_6" base_EnumerationLiteral="_16_5_1_2" symbol="m" baseUnit="base.xml#b3"/>
  <NumericTypes:unit xmi:id="_16_5_1_7" base_EnumerationLiteral="_16_5_1_3" conversionFactor="1000" baseUnit="_16_5_1_2"/>
  <NumericTypes:unit xmi:id="_16_5_1_8" symbol="kg"/>
  <NumericTypes:scalarQuantity xmi:id="_16_5_1_9" base_DataType="_16_5_1_4" unit="_16_5_1_3" otherUnit="_16_5_1_6"/>
  <NumericTypes:scalarQuantity xmi:id="_16_5_1_10" base_DataType="_16_5_1_5" unit="_16_5_1_8" otherUnit="_16_5_1_2"/>
  <MagicDraw_Profile:DiagramInfo xmi:id="_16_5_1_11" base_Diagram="_16_5_1_12" Author="a"/>
  <MagicDraw_Profile:HyperlinkOwner xmi:id="_16_5_1_13" base_Element="_16_5_1_4"/>
  <UML_Standard_Profile:modelLibrary xmi:id="_16_5_1_14" base_Package="_16_5_1_4"/>
)"),
                    XmiFormat::MagicDraw);
    }
    /// What is written of them, with what refers to the first unit and to the second. The third, on no literal, is no part
    /// of the file.
    static std::string units(std::string const & head, std::string const & first, std::string const & second) {
        return R"(<?xml version="1.0" encoding="iso8859-1"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1" xmlns:NumericTypes="http://www.quillon.example/schemas/NumericTypes.xmi">
)" + head + R"(  <uml:Model xmi:id="@1" name="Data" uri="@2">
    <packagedElement xmi:id="@1_2" xmi:type="uml:Enumeration" name="Length">
      <ownedLiteral xmi:id="@1_3" xmi:type="uml:EnumerationLiteral" name="m"></ownedLiteral>
      <ownedLiteral xmi:id="@1_4" xmi:type="uml:EnumerationLiteral" name="km"></ownedLiteral>
    </packagedElement>
    <packagedElement xmi:id="@1_5" xmi:type="uml:DataType" name="Distance"></packagedElement>
    <packagedElement xmi:id="@1_6" xmi:type="uml:DataType" name="Mass"></packagedElement>
  </uml:Model>
  <NumericTypes:unit xmi:id="@1_7" symbol="m" base_EnumerationLiteral="@1_3">
    <baseUnit xmi:type="NumericTypes:unit" href="base.xml##1_4"/>
  </NumericTypes:unit>
  <NumericTypes:unit xmi:id="@1_8" conversionFactor="1000" baseUnit=")" +
               first + R"(" base_EnumerationLiteral="@1_4"/>
  <NumericTypes:scalarQuantity xmi:id="@1_10" otherUnit="@1_7" unit=")" +
               second + R"(" base_DataType="@1_5"/>
  <NumericTypes:scalarQuantity xmi:id="@1_11" unit="@1_9" base_DataType="@1_6"/>
</xmi:XMI>
)";
    }
};

TEST_F(MagicDrawFile, IsReadWithUnitsInPlaceOfLiteralsAndWithoutWhatIsTheToolsOwn) {
    uml::Model const model = readUnits();
    EXPECT_EQ(reader.report().rejectedValues(), (ReadReport::Counts{{"scalarQuantity.otherUnit", 1}}));
    EXPECT_TRUE(reader.report().unresolvedReferences().empty());
    write(model, XmiFormat::Standard);
    EXPECT_EQ(written(model),
              units(R"(  <xmi:Extension extender="The Quillon Inc." persistentIds="true" nextIdValue="@1_12"/>
  <xmi:Documentation exporter="The Quillon Inc." exporterVersion="1.0"/>
)",
                    "@1_7", "@1_8"));
}

TEST_F(MagicDrawFile, IsWrittenWithLiteralsInPlaceOfUnits) {
    uml::Model const model = readUnits();
    write(model, XmiFormat::MagicDraw);
    EXPECT_EQ(written(model), units("", "@1_3", "@1_4"));
}

TEST_F(MagicDrawFile, WithoutUnitsReadsBackAsItWas) {
    uml::Model const model = read(file("in.xmi", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1"
    xmlns:Tessel="http://www.quillon.example/schemas/Tessel.xmi">
  <uml:Model xmi:id="@1" name="Data">
    <packagedElement xmi:type="uml:Package" xmi:id="@1_2" name="p">
      <packagedElement xmi:type="uml:Component" xmi:id="@1_3" name="c">
        <ownedAttribute xmi:type="uml:Port" xmi:id="@1_4" name="in" type="@1_5"/>
      </packagedElement>
      <packagedElement xmi:type="uml:Interface" xmi:id="@1_5" name="i"/>
    </packagedElement>
  </uml:Model>
  <Tessel:algorithmicComponent xmi:id="@1_6" base_Component="@1_3" model="@1_5"/>
</xmi:XMI>
)"));
    ASSERT_TRUE(model.isValid());
    write(model, XmiFormat::MagicDraw);
    uml::Model const readBack = read(folder.path("out.xmi"), XmiFormat::MagicDraw);
    EXPECT_TRUE(reader.report().isEmpty());
    EXPECT_TRUE(compare(model, readBack));
    EXPECT_EQ(readBack.getUuidBase().str(), model.getUuidBase().str());
}

} // namespace
} // namespace ZEL::Serializer
