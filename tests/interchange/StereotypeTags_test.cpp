#include "ForeignFile.h"

#include <ZEL/interchange/StereotypeTags.h>
#include <ZEL/tools/ObjectsIn.h>

#include <Foreign/StereotypeApplication.h>

namespace ZEL::Interchange {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using tests::linesOf;

/// Applications of profiles that nobody has registered.
class StereotypesOf : public tests::ForeignFileTest {
protected:
    static std::string document(std::string const & content) {
        return R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="20131001" xmlns:xmi="http://www.omg.org/spec/XMI/20131001" xmlns:uml="http://www.eclipse.org/uml2/5.0.0/UML"
    xmlns:a="http://example.org/lending" xmlns:Tests="http://www.magicdraw.com/schemas/Test_Profile.xmi"
    xmlns:Noted="http:///schemas/Noted/_Xy/3" xmlns:Shop="http://www.sparxsystems.com/profiles/Shop/1.0">
)" + content + "</xmi:XMI>\n";
    }
    static std::string profile(std::string const & attributes, std::string const & content) {
        return "<packagedElement xmi:type=\"uml:Profile\" " + attributes + ">" + content + "</packagedElement>\n";
    }
    static std::string stereotype(std::string const & name, std::string const & content = {}) {
        return "<packagedElement xmi:type=\"uml:Stereotype\" name=\"" + name + "\">" + content + "</packagedElement>";
    }
    static std::vector<Foreign::ImmutableStereotypeApplication> applications(Model const & model) {
        std::vector<Foreign::ImmutableStereotypeApplication> found;
        for (ImmutableClassObject const & object : objectsIn(model)) {
            if (Foreign::ImmutableStereotypeApplication const application(object); application.isValid()) {
                found.push_back(application);
            }
        }
        return found;
    }
    /// "prefix:Name = Profile.Stereotype", of each application.
    static std::vector<std::string> types(Model const & model) {
        std::vector<std::string> lines;
        for (auto const & application : applications(model)) {
            lines.push_back(application.getPrefix().str() + ":" + application.getStereotype().str() + " = " +
                            (application.hasType() ? application.getType().getQualifiedName().str() : "-"));
        }
        return lines;
    }
    /// "name: Property = text -> objects".
    static std::vector<std::string> tags(ImmutableClassObject const & application) {
        std::vector<std::string> lines;
        for (StereotypeTag const & tag : stereotypeTagsOf(application)) {
            std::string line =
                tag.name + ": " + (tag.property.isValid() ? tag.property.getName().str() : "-") + " = " + tag.text;
            for (ImmutableClassObject const & object : tag.objects) {
                line += " -> " + ImmutableNamedElement(object).getName().str();
            }
            lines.push_back(line);
        }
        return lines;
    }
};

/// By the namespace that a tool makes of its profile: the URI, the name, or one that it notes beside the profile.
TEST_F(StereotypesOf, ProfilesInTheFileAreOfTheirTypes) {
    Model const model = readForeign(file(
        "in.uml",
        document(
            "<uml:Model xmi:id=\"m\" name=\"m\"><packagedElement xmi:type=\"uml:Class\" xmi:id=\"c\" name=\"C\"/>\n" +
            profile("name=\"Lending\" URI=\"http://example.org/lending\"",
                    stereotype("Lent") + stereotype("Twice") + stereotype("Twice")) +
            profile("name=\"Test Profile\"", stereotype("key point") + stereotype("Lent")) +
            profile("name=\"Renamed\"", "<eAnnotations source=\"e\"><contents nsURI=\"http:///schemas/Noted/_Xy/2\"/>"
                                        "<contents nsURI=\"http:///schemas/Noted/_Xy/3\"/></eAnnotations>" +
                                            stereotype("N")) +
            profile("name=\"Shop\"", "<packagedElement xmi:type=\"uml:Package\" name=\"inner\">" + stereotype("Sold") +
                                         "</packagedElement>") +
            R"(</uml:Model>
<a:Lent base_Class="c"/><a:Twice base_Class="c"/><a:key_point base_Class="c"/><Tests:key_point base_Class="c"/>
<Noted:N base_Class="c"/><Shop:Sold base_Class="c"/><b:Lent xmlns:b="http://example.org/other" base_Class="c"/>
)")));
    EXPECT_THAT(types(model), ElementsAre("a:Lent = m.Lending.Lent", "a:Twice = -", "a:key_point = -",
                                          "Tests:key_point = m.Test Profile.key point", "Noted:N = m.Renamed.N",
                                          "Shop:Sold = m.Shop.inner.Sold", "b:Lent = -"));
    std::string const text = converted(model);
    for (char const * const part :
         {R"(xmlns:a="http://example.org/lending")", "<a:Lent ", "<Tests:key_point ", "<b:Lent "}) {
        EXPECT_THAT(text, HasSubstr(part));
    }
    expectStable(model);
}

TEST_F(StereotypesOf, ElementsThatAreNowhereNameThese) {
    Model const model = readForeign(
        file("in.uml", document(R"(<uml:Model xmi:id="m" name="m"/><a:Lent base_Class="gone" days="2"/>)")));
    EXPECT_THAT(converted(model),
                ::testing::ContainsRegex("<a:Lent xmi:id=\"[^\"]*\" days=\"2\" base_Class=\"gone\"/>"));
    expectStable(model);
}

TEST_F(StereotypesOf, ProfilesInLinkedFilesAreOfTheirTypes) {
    static_cast<void>(folder.file("l.profile.uml", document("<uml:Profile xmi:id=\"p\" name=\"lending\">" +
                                                            stereotype("Lent") + "</uml:Profile>")));
    Model const model = readForeign(file("in.uml", document(R"(<uml:Model xmi:id="m" name="m">
<profileApplication xmi:id="pa"><appliedProfile href="l.profile.uml#p"/></profileApplication>
</uml:Model><a:Lent base_Model="m"/>
)")));
    EXPECT_THAT(types(model), ElementsAre("a:Lent = .lending.Lent"));
    EXPECT_THAT(converted(model), HasSubstr("base_Model=\"m\"/>"));
}

/// Values are texts; those of properties of a class, and those that are links, name objects besides.
TEST_F(StereotypesOf, ProfilesInTheFileNameObjects) {
    std::string const types =
        R"(<packagedElement xmi:type="uml:Enumeration" xmi:id="e" name="E"><ownedLiteral name="on"/></packagedElement>
<packagedElement xmi:type="uml:PrimitiveType" xmi:id="i" name="Integer"/><packagedElement xmi:type="uml:PrimitiveType" xmi:id="b" name="Boolean"/>
)";
    auto const attribute = [](std::string const & name, std::string const & type) {
        return "<ownedAttribute name=\"" + name + "\"" + (type.empty() ? "" : " type=\"" + type + "\"") + "/>";
    };
    Model const model = readForeign(file(
        "in.uml",
        document(
            "<uml:Model xmi:id=\"m\" name=\"m\"><packagedElement xmi:type=\"uml:Class\" xmi:id=\"c\" name=\"C\"/>\n"
            "<packagedElement xmi:type=\"uml:Class\" xmi:id=\"d\" name=\"D\"/>\n" +
            types +
            profile("name=\"lending\"", "<packagedElement xmi:type=\"uml:Stereotype\" xmi:id=\"base\" name=\"Base\">" +
                                            attribute("inherited", "c") + "</packagedElement>" +
                                            stereotype("Lent", "<generalization general=\"base\"/>" +
                                                                   attribute("of", "c") + attribute("days", "i") +
                                                                   attribute("is on", "b") + attribute("state", "e") +
                                                                   attribute("note", "") + attribute("type", "c"))) +
            R"(</uml:Model>
<a:Lent base_Class="c" of="d c gone" inherited="d" days="c" is_on="maybe" state="off" note="c" more="c">
  <days>14</days><type xmi:idref="d"/><values>x</values><profile href="#c"/><stereotype href="none.uml#c"/>
</a:Lent>
<a:Lent base_Class="d" days="-3" is_on="true" state="on"/>
<a:Unknown base_Class="d" of="d"><of href="#d"/></a:Unknown>
)")));
    auto const all = applications(model);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_THAT(tags(all[0]), ElementsAre("of: of = d c gone -> D -> C", "inherited: inherited = d -> D",
                                          "days: days = c", "is_on: is on = maybe", "state: state = off",
                                          "note: note = c", "more: - = c", "days: days = 14", "type: type = d -> D",
                                          "values: - = x", "profile: - = #c -> C", "stereotype: - = none.uml#c"));
    EXPECT_THAT(tags(all[2]), ElementsAre("of: - = d", "of: - = #d -> D"));
    EXPECT_EQ(all[0].getTargets().size(), 2);
    EXPECT_EQ(all[0].getProfile(), String("http://example.org/lending"));
    EXPECT_THAT(linesOf(reader.report()),
                ElementsAre("skipped days 1", "skipped of 1", "skipped profile 1", "skipped stereotype 1",
                            "skipped type 1", "skipped values 1", "rejected Lent.days 1", "rejected Lent.is_on 1",
                            "rejected Lent.state 1"));
    EXPECT_THAT(converted(model),
                HasSubstr(R"( of="d c gone" inherited="d" days="c" is_on="maybe" state="off" note="c" more="c")"));
    expectStable(model);

    // A link goes with its target, and comes back with it.
    model.beginTransaction("destroy");
    model.getObjectById(all[2].getTargets().at(0).getId()).destroy();
    model.commitTransaction();
    EXPECT_THAT(tags(all[0]), ::testing::Contains("of: of = d c gone -> C"));
    model.undo();
    EXPECT_THAT(tags(all[0]), ::testing::Contains("of: of = d c gone -> D -> C"));
}

} // namespace
} // namespace ZEL::Interchange
