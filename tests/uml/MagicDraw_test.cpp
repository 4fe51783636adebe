#include "DialectFixture.h"

namespace ZEL::Serializer {
namespace {

class MagicDrawFile : public tests::DialectFixture {
protected:
    std::string toolFile(std::string const & name, std::string const & content) const {
        return file(name, R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1"
    xmlns:NumericTypes="http://www.magicdraw.com/schemas/NumericTypes.xmi">
)" + content + "</xmi:XMI>\n");
    }
};

TEST_F(MagicDrawFile, IsReadWithUnitsInPlaceOfLiteralsAndWrittenTheOtherWayRound) {
    // Two units stand on literals, the others on none, the one on which the first builds in another file. What is
    // measured in a unit refers to its literal, so a unit may have no id. The other unit of the first quantity is given
    // by itself, that of the second, wrongly, by a literal.
    static_cast<void>(toolFile("base.xml", R"(  <uml:Model xmi:id="b1" name="Base">
    <packagedElement xmi:type="uml:Enumeration" xmi:id="b2" name="Length">
      <ownedLiteral xmi:type="uml:EnumerationLiteral" xmi:id="b3" name="nm"/>
    </packagedElement>
  </uml:Model>
  <NumericTypes:unit xmi:id="b4" base_EnumerationLiteral="b3"/>
)"));
    std::string const path =
        toolFile("in.xml", R"(  <xmi:Documentation exporter="MagicDraw UML" exporterVersion="16.5"/>
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
  <NumericTypes:unit base_EnumerationLiteral="_16_5_1_3" conversionFactor="1000" baseUnit="_16_5_1_2"/>
  <NumericTypes:unit xmi:id="_16_5_1_8" symbol="kg"/>
  <NumericTypes:unit symbol="s"/>
  <NumericTypes:scalarQuantity xmi:id="_16_5_1_9" base_DataType="_16_5_1_4" unit="_16_5_1_3" otherUnit="_16_5_1_6"/>
  <NumericTypes:scalarQuantity xmi:id="_16_5_1_10" base_DataType="_16_5_1_5" unit="_16_5_1_8" otherUnit="_16_5_1_2"/>
)");
    uml::Model const model = read(path, XmiFormat::MagicDraw);
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ(reader.report().rejectedValues(), (ReadReport::Counts{{"scalarQuantity.otherUnit", 1}}));
    EXPECT_TRUE(reader.report().unresolvedReferences().empty());

    // With what refers to the first unit and to the second. Those on no literal are no part of a file.
    auto const expected = [](std::string const & head, std::string const & first, std::string const & second) {
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
  <NumericTypes:scalarQuantity xmi:id="@1_11" otherUnit="@1_7" unit=")" +
               second + R"(" base_DataType="@1_5"/>
  <NumericTypes:scalarQuantity xmi:id="@1_12" unit="@1_9" base_DataType="@1_6"/>
</xmi:XMI>
)";
    };
    write(model, XmiFormat::Standard);
    std::string const head = R"(  <xmi:Extension extender="The Quillon Inc." persistentIds="true" nextIdValue="@1_13"/>
  <xmi:Documentation exporter="The Quillon Inc." exporterVersion="1.0"/>
)";
    EXPECT_EQ(written(model), expected(head, "@1_7", "@1_8"));
    write(model, XmiFormat::MagicDraw);
    EXPECT_EQ(written(model), expected("", "@1_3", "@1_4"));
}

TEST_F(MagicDrawFile, WithoutUnitsReadsBackAsItWas) {
    uml::Model const model = read(file("in.xmi", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1"
    xmlns:Tessel="http://www.quillon.example/schemas/Tessel.xmi">
  <uml:Model xmi:id="@1" name="Data">
    <packagedElement xmi:type="uml:Component" xmi:id="@1_2" name="c"/>
  </uml:Model>
  <Tessel:algorithmicComponent xmi:id="@1_3" base_Component="@1_2" model="@1_2"/>
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
