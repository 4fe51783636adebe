#include "ForeignFile.h"

#include <ZEL/metamodel/Remainder.h>
#include <ZEL/tools/ObjectsIn.h>

#include <uml/PackageableElement.h>

#include <filesystem>

namespace ZEL::Interchange {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using tests::linesOf;

/// Models of which parts stand in files of their own.
class SplitModel : public tests::ForeignFileTest {
protected:
    static std::string document(std::string const & content) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmi:XMI xmi:version=\"20131001\" "
               "xmlns:xmi=\"http://www.omg.org/spec/XMI/20131001\" "
               "xmlns:uml=\"http://www.eclipse.org/uml2/5.0.0/UML\" xmlns:T=\"http://example.org/T/1\">\n" +
               content + "</xmi:XMI>\n";
    }
    static std::string modelFile(std::string const & content) {
        return document("<uml:Model xmi:id=\"m\" name=\"m\">" + content + "</uml:Model>");
    }
    static std::string package(std::string const & name, std::string const & content = {}) {
        return "<uml:Package xmi:id=\"" + name + "\" name=\"" + name + "\">" + content + "</uml:Package>";
    }
    static std::string link(std::string const & target, std::string const & content = {}) {
        return "<packagedElement xmi:type=\"uml:Package\" href=\"" + target + "\">" + content + "</packagedElement>";
    }
    static std::string klass(std::string const & name, std::string const & type = {}) {
        return "<packagedElement xmi:type=\"uml:Class\" xmi:id=\"" + name + "\" name=\"" + name + "\">" +
               (type.empty()
                    ? ""
                    : "<generalization xmi:id=\"g-" + name + "\"><general href=\"" + type + "\"/></generalization>") +
               "</packagedElement>";
    }
    /// The named elements of the model with their parts, in order: "a(b c)".
    static std::string tree(ImmutableClassObject const & root) {
        std::string text;
        for (ImmutableClassObject const & part : root.getContaineeZELs()) {
            ImmutableNamedElement const element(part);
            if (element.isValid() && element.hasName()) {
                std::string const inside = tree(part);
                text +=
                    (text.empty() ? "" : " ") + element.getName().str() + (inside.empty() ? "" : "(" + inside + ")");
            }
        }
        return text;
    }
    static std::vector<std::string> generals(Model const & model) {
        std::vector<std::string> lines;
        for (ImmutableClassObject const & object : objectsIn(model)) {
            if (ImmutableClass const found(object); found.isValid()) {
                for (ImmutableClass const & general : found.getSuperClasses()) {
                    lines.push_back(found.getName().str() + ": " + general.getName().str());
                }
            }
        }
        return lines;
    }
};

TEST_F(SplitModel, IsReadAndWrittenAsAWhole) {
    Model const model = readForeign(std::string(SHAPES_FOLDER) + "/eclipse-split.uml");
    EXPECT_EQ(tree(model), "Loan(by) people(Reader(loans)) rest Reading(Keen(of hours))");
    EXPECT_EQ(reader.referredModelCount(), 0);
    EXPECT_THAT(linesOf(reader.report()),
                ElementsAre("skipped eAnnotations 1", "skipped packagedElement of type uml:Package 1",
                            "inside references of type uml:Model 1", "unresolved Property.type 1",
                            HasSubstr("eclipse-split-gone.uml 1"), HasSubstr("UMLPrimitiveTypes.library.uml 1")));
    std::string const text = converted(model);
    for (char const * const part :
         {R"(<ownedAttribute xmi:id="_loan-by" xmi:type="uml:Property" name="by" isID="false" type="_reader"/>)",
          R"(<packagedElement xmi:id="_people" xmi:type="uml:Package" name="people">)",
          R"( xmi:type="uml:Package" href="eclipse-split-gone.uml#_gone"/>)",
          R"(<Reading:Keen xmi:id="_keen-1" hours="3" base_Class="_reader"/>)"}) {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(text, Not(HasSubstr("eclipse-split-people.uml")));
    expectStable(model);

    // On its own it is what it was: a file with several elements at the top.
    Model const alone = readForeign(std::string(SHAPES_FOLDER) + "/eclipse-split-people.uml");
    EXPECT_EQ(tree(alone), "people(Reader(loans))");
    EXPECT_EQ(reader.referredModelCount(), 1);
}

/// Parts of parts, several parts in a file, and links before the place of the part, between the parts and into the whole.
TEST_F(SplitModel, HasItsPartsInTheirPlacesAndAllLinks) {
    static_cast<void>(folder.file("a.uml", document(package("a", klass("A", "b.uml#B") + link("inner.uml#inner")))));
    static_cast<void>(folder.file("b.uml", document(package("b", klass("B", "in.uml#C")) + package("other"))));
    static_cast<void>(folder.file("inner.uml", document(package("inner", klass("I", "a.uml#A")))));
    Model const model = readForeign(file(
        "in.uml", modelFile(klass("C", "inner.uml#I") +
                            link("a.uml#a", "<xmi:Extension extender=\"q\"><note/></xmi:Extension>") + klass("D") +
                            link("b.uml#other") + "<packagedElement xmi:type=\"uml:Package\" xmi:id=\"F\" name=\"F\">" +
                            link("b.uml#b") + "</packagedElement>" + klass("E", "b.uml#B"))));
    EXPECT_EQ(tree(model), "C a(A inner(I)) D other F(b(B)) E");
    EXPECT_THAT(generals(model), ElementsAre("C: I", "A: B", "I: A", "B: C", "E: B"));
    EXPECT_EQ(reader.referredModelCount(), 0);
    EXPECT_THAT(converted(model), Not(HasSubstr("href")));
    ImmutableClassObject const a(uml::Model(model).getPackagedElements().at(1));
    ASSERT_EQ(remainderOf(a).elements.size(), 1U) << "what stands in the link";
    EXPECT_THAT(remainderOf(a).elements.front().xml, HasSubstr("<note/>"));
    expectStable(model);
}

/// Ids need to be different within a file only.
TEST_F(SplitModel, MayHaveTheSameIdsInEachFile) {
    static_cast<void>(folder.file("a.uml", document(package("a", klass("C") + klass("A", "C") + klass("_zel_x_3")))));
    Model const model = readForeign(file("in.uml", modelFile(klass("C") + link("a.uml#a") + klass("D", "C") +
                                                             klass("A", "a.uml#C") + klass("_zel_x_3"))));
    EXPECT_EQ(tree(model), "C a(C A _zel_x_3) D A _zel_x_3");
    std::vector<std::string> lines;
    for (ImmutableClassObject const & object : objectsIn(model)) {
        if (ImmutableClass const found(object); found.isValid() && !found.getSuperClasses().empty()) {
            lines.push_back(found.getQualifiedName().str() + ": " +
                            ImmutableClass(found.getSuperClasses().at(0)).getQualifiedName().str());
        }
    }
    EXPECT_THAT(lines, ElementsAre("m.a.A: m.a.C", "m.D: m.C", "m.A: m.a.C"));
    expectStable(model);
}

/// What cannot be joined is kept as the link that it is, and no file is read for ever.
TEST_F(SplitModel, KeepsLinksToWhatIsNoPart) {
    static_cast<void>(folder.file("circle.uml", document(package("c", klass("K") + link("back.uml#b") +
                                                                          link("in.uml#p") + link("circle.uml#c")))));
    static_cast<void>(folder.file("back.uml", document(package("b", link("circle.uml#c")))));
    static_cast<void>(folder.file("broken.uml",
                                  "<uml:Package xmlns:uml=\"http://www.eclipse.org/uml2/5.0.0/UML\" "
                                  "xmlns:xmi=\"http://www.omg.org/spec/XMI/20131001\" xmi:id=\"x\"><packagedElement"));
    static_cast<void>(folder.file("deep.uml", document(package("d", klass("deep")))));
    static_cast<void>(folder.file("wrong.uml", document("<uml:Comment xmi:id=\"w\" body=\"no package\"/>")));
    static_cast<void>(folder.file("linked.uml", modelFile(klass("L"))));
    std::vector<std::pair<std::string, bool>> const links = {
        {"circle.uml#c", true}, {"broken.uml#x", false}, {"deep.uml#deep", false}, {"wrong.uml#w", false},
        {"in.uml#m", false},    {"none.uml#x", false},   {"deep.uml#", false},     {"%zz#x", false}};
    for (auto const & [target, isJoined] : links) {
        SCOPED_TRACE(target);
        Model const model =
            readForeign(file("in.uml", modelFile(klass("P", "linked.uml#L") + link(target) + klass("Q"))));
        EXPECT_EQ(tree(model), isJoined ? "P c(K b) Q" : "P Q");
        EXPECT_EQ(reader.referredModelCount(), 1);
        EXPECT_EQ(reader.report().uncontainedObjects().size(), 0U);
        std::string const text = converted(model);
        EXPECT_THAT(text, HasSubstr(isJoined ? "href=\"in.uml#p\"" : "href=\"" + target + "\""));
        EXPECT_THAT(text, Not(HasSubstr("no package")));
    }
    // A link into such a file finds it as without the other.
    Model const model = readForeign(file("in.uml", modelFile(klass("P", "deep.uml#deep") + link("deep.uml#deep"))));
    EXPECT_THAT(generals(model), ElementsAre("P: deep"));
    EXPECT_EQ(reader.referredModelCount(), 1);
}

TEST_F(SplitModel, IsJoinedAsFarAsFilesMayBeOpen) {
    constexpr int count = 300; // more than the settings allow
    for (int i = 0; i < count; ++i) {
        std::string const name = "n" + std::to_string(i);
        std::string const next = "n" + std::to_string(i + 1);
        static_cast<void>(folder.file(name + ".uml", document(package(name, link(next + ".uml#" + next)))));
    }
    Model const model = readForeign(file("in.uml", modelFile(link("n0.uml#n0"))));
    EXPECT_THAT(tree(model), ::testing::StartsWith("n0(n1(n2(n3("));
    EXPECT_THAT(converted(model), HasSubstr("href=\"n255.uml#n255\""));
}

/// Nobody writes the files that a model refers to: what their parts are called in links does not change.
TEST_F(SplitModel, RefersToThePartsOfAnotherWhereTheyStand) {
    static_cast<void>(folder.file("part.uml", document(package("p", klass("A")))));
    static_cast<void>(folder.file("whole.uml", modelFile(klass("W") + link("part.uml#p"))));
    Model const model = readForeign(file("in.uml", modelFile(klass("Q", "whole.uml#W") + klass("P", "part.uml#A"))));
    EXPECT_EQ(reader.referredModelCount(), 2);
    EXPECT_THAT(generals(model), ElementsAre("Q: W", "P: A"));
    EXPECT_THAT(converted(model), HasSubstr("href=\"part.uml#A\""));
}

} // namespace
} // namespace ZEL::Interchange
