#include "write/Fit.h"
#include "write/Printer.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zelgen::tests {
namespace {

TEST(Printer, AnUnknownNameAndAnUnusedValueAreMistakes) {
    Printer const print("app");
    EXPECT_THROW((void)print("$x$", {}), std::logic_error);
    EXPECT_THROW((void)print("x", {{"x", "1"}}), std::logic_error);
    EXPECT_THROW((void)print("100 $", {}), std::logic_error);
}

TEST(Printer, TheNamespacesOfTheFileAreDroppedAndNoOthers) {
    Printer const print("ZEL::NSInterface");
    EXPECT_EQ(
        print("ZEL::NSInterface::TypeIntf ZEL::String ::ZEL::Class myZEL::X \"ZEL::\" namespace ZEL::NSInterface {",
              {}),
        "TypeIntf String ::ZEL::Class myZEL::X \"ZEL::\" namespace ZEL::NSInterface {\n");
    EXPECT_EQ(Printer("uml")("ZEL::Class uml::Class", {}), "ZEL::Class Class\n");
}

TEST(Printer, TextsBecomeLiterals) { EXPECT_EQ(Printer::quoted("a \"b\" \\ \n"), R"("a \"b\" \\ \n")"); }

TEST(Printer, NoLineOfACommentRunsIntoTheNext) {
    EXPECT_EQ(Printer::comment("//", "a path C:\\dir\\", 4), "// a path C:\\dir\\.\n");
    std::string const word(100, 'w');
    EXPECT_EQ(Printer::comment("//", word + "\\ " + word, 4), "// " + word + "\\.\n// " + word + "\n");
    EXPECT_EQ(Printer::comment("//", " ", 4), "");
}

TEST(Fit, LongOneLineBodiesAndArgumentListsAreBroken) {
    std::string const name(60, 'f');
    EXPECT_EQ(fitted("    int " + name + "(int value) const { return " + name + "(value); }\n"),
              "    int " + name + "(int value) const {\n        return " + name + "(value);\n    }\n");
    EXPECT_EQ(fitted("void " + name + "(int first, std::string const & second, int third, int fourth);\n"),
              "void " + name + "(int first, std::string const & second, int third,\n    int fourth);\n");
    EXPECT_EQ(fitted("void " + name + "(std::string const & " + name + ");\n"),
              "void " + name + "(\n    std::string const & " + name + ");\n");
    EXPECT_EQ(fitted("    template <class R = List<" + name + ">> [[nodiscard]] R " + name + "() const {\n"),
              "    template <class R = List<" + name + ">>\n    [[nodiscard]] R " + name + "() const {\n");
    EXPECT_EQ(fitted("class " + name + " final : public Base<" + name + "> {\n"),
              "class " + name + " final\n    : public Base<" + name + "> {\n");
}

TEST(Fit, CommentsAndTextsStayWhole) {
    std::string const comment = "    // " + std::string(130, 'c') + ", d\n";
    std::string const text = "    .description = \"" + std::string(60, 'c') + ", " + std::string(60, 'd') + "\",\n";
    EXPECT_EQ(fitted(comment), comment);
    EXPECT_EQ(fitted(text), text);
}

} // namespace
} // namespace zelgen::tests
