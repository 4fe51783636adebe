#include "host/TemporaryFolder.h"
#include "load/Definition.h"
#include "load/Signature.h"

#include <gmock/gmock.h>

#include <utility>

namespace zelgen::tests {
namespace {

using testing::ElementsAre;

std::vector<std::string> messagesOf(std::string const & text) {
    Diagnostics diagnostics;
    (void)parseDefinition(text, "m.yaml", diagnostics);
    return diagnostics.messages();
}

TEST(Load, KeepsTheOrderOfTypesAndProperties) {
    Diagnostics diagnostics;
    Definition const d = parseDefinition("prefix: p\n"
                                         "types:\n"
                                         "  Z: {enumeration: [b, a]}\n"
                                         "  A:\n"
                                         "    properties:\n"
                                         "      q: {type: Z}\n"
                                         "      p: {type: A, flags: [composite]}\n",
                                         "m.yaml", diagnostics);
    ASSERT_TRUE(diagnostics.empty());
    ASSERT_EQ(d.types.size(), 2u);
    EXPECT_EQ(d.types[0].kind, TypeKind::Enumeration);
    EXPECT_EQ(d.types[0].literals[0].text, "b");
    ASSERT_EQ(d.types[1].properties.size(), 2u);
    EXPECT_EQ(d.types[1].properties[0].name.text, "q");
    EXPECT_EQ(d.types[1].properties[1].type.mark.line, 7);
    EXPECT_EQ(d.types[1].properties[1].type.mark.column, 17);
}

TEST(Load, PartsHaveTheirTypesAfterThoseOfTheHead) {
    TemporaryFolder const folder;
    std::string const first = folder.file("first.yaml", "types:\n  B: {superclasses: [A]}\n  C: {superclasses: [B]}\n");
    std::string const second = folder.file("second.yaml", "types: {D: {superclasses: [X]}}\n");
    std::string const head = folder.file("head.yaml", "parts: [first.yaml, second.yaml]\ntypes: {A: {}}\n");
    Diagnostics diagnostics;
    Definition const d = loadDefinition(head, diagnostics);
    ASSERT_TRUE(diagnostics.empty());
    ASSERT_EQ(d.types.size(), 4u);
    EXPECT_EQ(d.types[2].name.text, "C");
    EXPECT_EQ(d.fileOf(d.types[0].name.mark), head);
    EXPECT_EQ(d.fileOf(d.types[2].name.mark), first);
    EXPECT_EQ(d.types[2].name.mark.line, 3);
    EXPECT_EQ(d.fileOf(d.types[3].superclasses[0].mark), second);
}

TEST(Load, PartsAreToldOfByTheirOwnNames) {
    TemporaryFolder const folder;
    std::string const part = folder.file("wrong.yaml", "prefix: p\ntypes:\n  A: {}\n  B: {abstrct: true}\n");
    std::string const broken = folder.file("broken.yaml", "types: {\n");
    std::string const head = folder.file("told.yaml", "types: {A: {}}\n"
                                                      "parts: [wrong.yaml, none.yaml, broken.yaml]\n");
    Diagnostics diagnostics;
    (void)loadDefinition(head, diagnostics);
    std::vector<std::string> const messages = diagnostics.messages();
    ASSERT_EQ(messages.size(), 5u);
    EXPECT_EQ(messages[0].rfind(broken + ":2:1: found text that is not YAML", 0), 0u) << messages[0];
    EXPECT_EQ(messages[1], head + ":2:21: found part 'none.yaml', expected a file that can be read");
    EXPECT_EQ(messages[2], part + ":1:1: found unknown entry 'prefix' of a part");
    EXPECT_EQ(messages[3],
              part + ":3:3: found a second 'A' among the types, expected one; the first is at " + head + ":1");
    EXPECT_EQ(messages[4], part + ":4:7: found unknown entry 'abstrct' of a type, did you mean 'abstract'?");
}

TEST(Load, SaysWhatItFoundInTheWrongPlace) {
    std::pair<char const *, char const *> const rows[] = {
        {"- a\n", "m.yaml:1:1: found a list, expected a map of entries of a metamodel"},
        {"prefix: [a]\n", "m.yaml:1:9: found a list, expected a name"},
        {"prefx: a\n", "m.yaml:1:1: found unknown entry 'prefx' of a metamodel, did you mean 'prefix'?"},
        {"types:\n  A:\n    superclases: [B]\n",
         "m.yaml:3:5: found unknown entry 'superclases' of a type, did you mean 'superclasses'?"},
        {"types:\n  A: {}\n  A: {}\n",
         "m.yaml:3:3: found a second 'A' among the types, expected one; the first is at line 2"},
        {"types:\n  A: {properties: {p: {flags: derived}}}\n",
         "m.yaml:2:31: found 'derived', expected a list of flags"},
        {"types:\n  A: {properties: [p]}\n", "m.yaml:2:19: found a list, expected a map of properties"},
        {"types: {A: {operations: {raise: [void f()]}}}\n",
         "m.yaml:1:26: found unknown entry 'raise' of the operations of a class"},
        {"types: {A: \n", "m.yaml:2:1: found text that is not YAML (end of map flow not found)"},
    };
    for (auto const & [text, message] : rows) {
        EXPECT_THAT(messagesOf(text), ElementsAre(message)) << text;
    }
}

TEST(Load, TellsAllMistakesOfAFileInOrder) {
    EXPECT_THAT(messagesOf("types: {A: {abstrakt: true, properties: {p: {typ: A}}}}\nfoo: 1\n"),
                ElementsAre("m.yaml:1:13: found unknown entry 'abstrakt' of a type, did you mean 'abstract'?",
                            "m.yaml:1:46: found unknown entry 'typ' of a property, did you mean 'type'?",
                            "m.yaml:2:1: found unknown entry 'foo' of a metamodel"));
}

TEST(Load, AFileThatIsNotThereIsAMessage) {
    Diagnostics diagnostics;
    (void)loadDefinition("/nowhere/m.yaml", diagnostics);
    EXPECT_THAT(diagnostics.messages(),
                ElementsAre("/nowhere/m.yaml: cannot be read, expected a metamodel definition"));
}

TEST(Signature, IsTakenApart) {
    Signature const s =
        *parseSignature("ImmutableSequence<uml.ImmutableClass> find(String name, ImmutableType type) const");
    EXPECT_EQ(s.result, (SignatureType{"uml.Class", true, true}));
    EXPECT_EQ(s.name, "find");
    ASSERT_EQ(s.parameters.size(), 2u);
    EXPECT_EQ(s.parameters[1].type, (SignatureType{"Type", true, false}));
    EXPECT_TRUE(s.isConst);
}

TEST(Signature, OtherTextsAreRefused) {
    for (char const * text :
         {"", "void", "void f", "void f(", "void f(String)", "void f() cons", "Vector<A> f()", "void 1f()", "f()"}) {
        EXPECT_FALSE(parseSignature(text)) << text;
    }
}

} // namespace
} // namespace zelgen::tests
