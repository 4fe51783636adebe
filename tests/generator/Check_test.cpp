#include "Definitions.h"
#include "write/Write.h"

#include <gmock/gmock.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <utility>

namespace zelgen::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A definition that is right up to `types`; those of the case begin at line 7.
std::string withTypes(std::string const & types) {
    return applicationWith("  Base: {superclasses: [ZEL.Element]}\n" + types);
}

TEST(Check, TheExampleOfTheFormatIsRight) {
    std::ifstream stream(ZEL_SOURCE_DIR "/metamodel/FORMAT.md");
    std::string example;
    bool inside = false;
    for (std::string line; std::getline(stream, line) && line != "```";) {
        example += inside ? line + '\n' : "";
        inside = inside || line == "```yaml";
    }
    ASSERT_FALSE(example.empty());
    EXPECT_THAT(mistakesIn(example), IsEmpty());
}

TEST(Check, ADefinitionWithoutItsHeadIsTold) {
    EXPECT_THAT(mistakesIn("types: {}\n"),
                ElementsAre("app.yaml:1:1: found no 'prefix', expected the prefix of the metamodel, such as 'library'",
                            "app.yaml:1:1: found no 'uris', expected at least the URI of the metamodel"));
    EXPECT_THAT(
        mistakesIn("prefix: ZEL\nuris: [OMG_SCHEMA + /x]\n"),
        ElementsAre("app.yaml:1:9: found prefix 'ZEL' also in " + builtInFile() + ", expected a prefix of its own",
                    "app.yaml:2:8: found begin of a URI 'OMG_SCHEMA', expected OMG_SCHEMA_BASE, QUILLON_SCHEMA_BASE, "
                    "MAGICDRAW_SCHEMA_BASE, RHP_SCHEMA_BASE or EMF_SCHEMA_BASE"));
    EXPECT_THAT(mistakesIn("prefix: app\nuris: [x]\ntypes: {}\n"),
                ElementsAre("app.yaml:1:1: found no 'factory_class', expected the class that creates objects"));
}

TEST(Check, RolesAreForFittingClasses) {
    EXPECT_THAT(
        mistakesIn("prefix: app\nuris: [x]\nfactory_class: A\nmodel_class: ZEL.MetaModel\n"
                   "types: {A: {superclasses: [ZEL.Element]}}\n"),
        ElementsAre(
            "app.yaml:3:16: 'factory_class': found class 'A', expected a subclass of 'ZEL.FactoryObject'",
            "app.yaml:4:14: 'model_class': found 'ZEL.MetaModel' of another metamodel, expected a class of this one"));
    EXPECT_THAT(
        mistakesIn("prefix: app\nuris: [x]\nfactory_class: F\ntypes: {F: {superclasses: [ZEL.FactoryObject], abstract: "
                   "true}}\n"),
        ElementsAre("app.yaml:3:16: 'factory_class': found the abstract class 'F', expected one with instances"));
}

/// Rows of a text with a mistake, and of what is told of it after the name of the file.
using Cases = std::vector<std::pair<char const *, char const *>>;

void expectMistakes(Cases const & cases) {
    for (auto const & [text, mistake] : cases) {
        EXPECT_THAT(mistakesIn(withTypes(text)), ElementsAre(std::string("app.yaml:") + mistake)) << text;
    }
}

TEST(Check, NamesOfTypesAndLiteralsAreToldWithPlaceAndExpectation) {
    expectMistakes({
        {"  A-B: {superclasses: [Base]}\n", "7:3: found type 'A-B', expected letters, digits and underscores"},
        {"  class: {superclasses: [Base]}\n", "7:3: found type 'class', expected a name that is no word of C++"},
        {"  BodyInterface: {superclasses: [Base]}\n",
         "7:3: found class 'BodyInterface', expected a name that is not one of a member of all handles"},
        {"  A: {abstract: yes, superclasses: [Base]}\n", "7:17: found 'abstract' 'yes', expected true or false"},
        {"  E: {enumeration: []}\n", "7:3: found enumeration 'E' without literals, expected at least one"},
        {"  E: {enumeration: [a, A]}\n",
         "7:24: found literal 'A' of 'E' with the C++ name 'A' of another one, expected a different one"},
        {"  E: {enumeration: [open], enumerators: {opn: Open}}\n",
         "7:42: found literal 'opn', expected open, did you mean 'open'?"},
        {"  A: {superclasses: [Base], enumerators: {open: Open}}\n",
         "7:3: found enumerators on 'A', expected them on enumerations only"},
        {"  E: {enumeration: [open], enumerators: {open: auto}}\n",
         "7:48: found enumerator 'auto', expected a name that is no word of C++"},
        {"  Tables: {superclasses: [Base]}\n",
         "7:3: found type 'Tables', expected a name that generated code does not use by itself"},
        {"  app: {superclasses: [Base]}\n",
         "7:3: found type 'app', expected a name that generated code does not use by itself"},
        {"  BaseIntf: {superclasses: [Base]}\n",
         "7:3: found type 'BaseIntf', expected a name that is not one of those made for 'Base'"},
    });
}

TEST(Check, SuperclassesAreToldWithPlaceAndExpectation) {
    expectMistakes({
        {"  A: {superclasses: [Bse]}\n", "7:22: class 'A': type 'Bse' not found, did you mean 'Base'?"},
        {"  A: {superclasses: [ZEL.Elment]}\n",
         "7:22: class 'A': type 'ZEL.Elment' not found, did you mean 'ZEL.Element'?"},
        {"  A: {superclasses: [ZEL.String]}\n", "7:22: class 'A': found the data type 'ZEL.String', expected a class"},
        {"  A: {superclasses: [Base, Base]}\n", "7:28: class 'A': found superclass 'Base' twice, expected it once"},
        {"  A: {}\n", "7:3: class 'A': found no superclass, expected at least one, such as 'ZEL.ClassObject'"},
        {"  A: {superclasses: [A]}\n",
         "7:22: class 'A': found superclass 'A' that is a subclass of it, expected no cycle"},
        {"  A: {superclasses: [ZEL.Object]}\n",
         "7:22: class 'A': found superclass 'ZEL.Object', expected 'ZEL.ClassObject' or a subclass of it"},
    });
}

TEST(Check, ConstraintsAreToldWithPlaceAndExpectation) {
    expectMistakes({
        {"  A: {superclasses: [Base], constraints: {small: {severity: warn, text: t}}}\n",
         "7:61: found severity 'warn', expected error, warning or note"},
        {"  A: {superclasses: [Base], constraints: {small: {txt: t, text: t}}}\n",
         "7:51: found unknown entry 'txt' of a constraint, did you mean 'text'?"},
        {"  A: {superclasses: [Base], constraints: {small: {severity: note}}}\n",
         "7:43: constraint 'A.small': found no 'text', expected what holds of an object that satisfies it"},
        {"  A: {superclasses: [Base], constraints: {is-small: {text: t}}}\n",
         "7:43: found constraint 'is-small', expected letters, digits and underscores"},
        {"  A: {superclasses: [Base], constraints: {is_small: {text: t}, isSmall: {text: t}}}\n",
         "7:64: constraint 'A.isSmall': found the C++ name 'satisfiesIsSmall' of constraint 'is_small', expected a "
         "different one"},
        {"  A: {superclasses: [Base], constraints: {small: {text: t}, small: {text: t}}}\n",
         "7:61: found a second 'small' among the constraints, expected one; the first is at line 7"},
        {"  A: {superclasses: [Base], operations: {hand: [void satisfiesSmall()]}, constraints: {small: {text: t}}}\n",
         "7:88: constraint 'A.small': found the C++ name 'satisfiesSmall' of operation 'satisfiesSmall', expected a "
         "different one"},
        {"  E: {enumeration: [a], constraints: {small: {text: t}}}\n",
         "7:3: found properties or superclasses on the data type 'E', expected them on classes only"},
    });
    EXPECT_THAT(mistakesIn(withTypes("  A: {superclasses: [Base], constraints: {small: {text: t}}}\n"
                                     "  B: {superclasses: [A], constraints: {small: {text: t}}}\n")),
                IsEmpty())
        << "a subclass may say it in another way";
}

TEST(Check, OperationsPropertiesAndViewsThatDoNotFitAreToldWithPlaceAndExpectation) {
    expectMistakes({
        {"  A: {superclasses: [Base], operations: {hand: [void f(Foo x)]}}\n",
         "7:49: operation 'f': type 'Foo' not found"},
        {"  A: {superclasses: [Base], operations: {hand: [void f]}}\n",
         "7:49: found operation 'void f', expected a form such as 'Boolean conformsTo(ImmutableType other) const'"},
        {"  A: {superclasses: [Base], views: {ownedComments: []}}\n",
         "7:37: class 'A': found a view of 'ownedComments', expected a multi-valued property of a superclass, did you "
         "mean 'ownedComment'?"},
        {"  A: {superclasses: [ZEL.Model, ZEL.Package, Base], properties: {}}\n"
         "  B: {superclasses: [ZEL.Property, ZEL.Parameter]}\n"
         "  C: {superclasses: [Base], properties: {direction: {type: ZEL.String}}}\n"
         "  D: {superclasses: [ZEL.Parameter, C]}\n",
         "10:3: class 'D': found two properties 'direction', of 'Parameter' and 'C', expected the same type and "
         "multiplicity"},
        {"  A: {superclasses: [ZEL.Classifier], properties: {c: {type: Base, multiplicity: 0..*}}, views: {feature: "
         "[c]}}\n",
         "7:108: class 'A': found property 'c' of type 'Base' in a view, expected 'ZEL.Feature' or a subclass of it"},
        {"  A: {superclasses: [ZEL.NamedElement], properties: {Name: {type: ZEL.String}}}\n",
         "7:54: property 'A.Name': found the C++ operation 'getName' of property 'NamedElement.name', expected another "
         "name"},
        {"  A: {superclasses: [Base], properties: {item: {type: A, multiplicity: 0..*}, items: {type: A}}}\n",
         "7:42: property 'A.item': found the C++ operation 'getItems' of property 'A.items', expected another name"},
        {"  A: {superclasses: [Base], properties: {item: {type: ZEL.String}, itemView: {type: A}}}\n",
         "7:42: property 'A.item': found the C++ operation 'getItemView' of property 'A.itemView', expected another "
         "name"},
        {"  A: {superclasses: [Base], properties: {x: {type: A}}}\n"
         "  B: {superclasses: [Base], properties: {X: {type: A}}}\n"
         "  C: {superclasses: [A, B]}\n"
         "  D: {superclasses: [C]}\n",
         "9:3: class 'C': found the C++ operation 'getX' of two properties, 'A.x' and 'B.X', expected it of one"},
        {"  A: {superclasses: [Base], properties: {x: {type: A}}, operations: {hand: [A getX() const]}}\n",
         "7:3: class 'A': found the operation 'getX' and one of the same name of property 'A.x', expected another name "
         "for one of them"},
        {"  A: {superclasses: [Base], operations: {hand: [void f(A x)]}}\n"
         "  B: {superclasses: [A], operations: {hand: [void f()]}}\n",
         "8:3: class 'B': found the operation 'f' with other parameters than in 'A', expected the same ones or another "
         "name"},
        {"  A: {superclasses: [Base], operations: {hand: [void f()]}}\n"
         "  B: {superclasses: [Base], operations: {hand: [void f()]}}\n"
         "  C: {superclasses: [A, B]}\n"
         "  D: {superclasses: [C]}\n",
         "9:3: class 'C': found the operation 'f' of 'A' and of 'B', expected one of its own"},
        {"  A: {superclasses: [ZEL.Class, ZEL.Association]}\n",
         "7:3: class 'A': found 'feature' made by 'Class' and by 'Association', expected one of its own among its "
         "'views'"},
        {"  A: {superclasses: [Base], properties: {isX: {type: ZEL.Boolean, multiplicity: 1..1}}}\n"
         "  B: {superclasses: [Base], properties: {isX: {type: ZEL.Boolean}}}\n"
         "  C: {superclasses: [A, B]}\n",
         "9:3: class 'C': found two properties 'isX', of 'A' and 'B', expected the same type and multiplicity"},
    });
}

TEST(Check, AClassMaySayItselfWhatItsSuperclassesSayDifferently) {
    EXPECT_THAT(mistakesIn(withTypes("  A: {superclasses: [ZEL.Class, ZEL.Association], views: {feature: "
                                     "[ownedAttribute, ownedEnd]}}\n"
                                     "  B: {superclasses: [Base], operations: {hand: [void f()]}}\n"
                                     "  C: {superclasses: [Base], operations: {hand: [void f()]}}\n"
                                     "  D: {superclasses: [B, C], operations: {hand: [void f()]}}\n")),
                IsEmpty());
}

/// One property `p` of a class `A`, in line 8; its entries begin at column 10.
TEST(Check, MistakesInPropertiesAreToldWithPlaceAndExpectation) {
    Cases const cases{
        {"", "5: property 'A.p': found no 'type', expected the name of one"},
        {"type: ZEL.Strin", "15: property 'A.p': type 'ZEL.Strin' not found, did you mean 'ZEL.String'?"},
        {"type: A, multiplicity: 1", "32: found multiplicity '1', expected a form such as 0..1, 1..1 or 0..*"},
        {"type: A, multiplicity: 3..2",
         "32: found multiplicity '3..2', expected a lower bound that is not above the upper"},
        {"type: A, flags: [composit]", "26: found flag 'composit', expected read_only, derived, composite, ordered, "
                                       "nonunique or seldom, did you mean 'composite'?"},
        {"type: ZEL.Boolean, flags: [seldom]", "36: property 'A.p': found flag 'seldom', expected it on a stored "
                                               "property that is no flag or literal"},
        {"type: A, persistence: none", "31: found 'persistence' 'none', expected default, transient or extension"},
        {"type: ZEL.Boolean, default: yes", "37: found default 'yes', expected true or false"},
        {"type: ZEL.Integer, default: x1", "37: found default 'x1', expected a whole number"},
        {"type: ZEL.UnlimitedNatural, default: -1",
         "46: found default '-1', expected a whole number that is not negative, or *"},
        {"type: ZEL.VisibilityKind, default: pubic",
         "44: found default 'pubic', expected public, private, protected or package, did you mean 'public'?"},
        {"type: ZEL.Integer, default: 010", "37: found default '010', expected a whole number"},
        {"type: ZEL.Single, default: 1e39", "36: found default '1e39', expected a number"},
        {"type: ZEL.Real, default: nan", "34: found default 'nan', expected a number"},
        {"type: ZEL.String, multiplicity: 0..*, default: x",
         "56: property 'A.p': found default 'x' of many values, expected it on a single one"},
        {"type: A, default: x", "27: found default 'x' of a class, expected none"},
        {"type: A, association: A_x",
         "31: property 'A.p': found no other end of association 'A_x', expected one of 'opposite' and 'owned_end'"},
        {"type: A, owned_end: x",
         "29: property 'A.p': found the other end 'x' without 'association', expected its name"},
        {"type: A, association: A_x, opposite: A.othr",
         "46: property 'A.p': opposite 'A.othr' not found, did you mean 'other'?"},
        {"type: A, association: A_p, opposite: A.other",
         "46: property 'A.p': found opposite 'A.other' whose own opposite is 'A.q', expected 'A.p'"},
        {"type: A, redefines: Base.x",
         "29: property 'A.p': found redefined property 'Base.x', expected a property of a superclass"},
        {"type: A, redefines: ZEL.Classifier.general",
         "29: property 'A.p': found redefined property 'ZEL.Classifier.general' of another multiplicity, expected both "
         "single or both many"},
        {"type: A, multiplicity: 0..*, flags: [derived], view: ownedAttribut",
         "62: class 'A': property 'ownedAttribut' of a view not found, did you mean 'ownedAttribute'?"},
        {"type: A, multiplicity: 0..*, view: subClass",
         "44: property 'A.p': found 'view' on a stored property, expected the flag 'derived' with it"},
        {"type: ZEL.Integer, fixed: 1", "35: property 'A.p': found 'fixed', expected 'body: unimplemented' with it"},
        {"type: ZEL.Integer, flags: [derived]",
         "5: property 'A.p': found a derived single value without 'body', expected hand or unimplemented"},
        {"type: A, flags: [derived], body: hand, view: [subClass]",
         "55: property 'A.p': found 'view' on a single value, expected it on many"},
        {"type: ZEL.Integer, multiplicity: 0..*",
         "15: property 'A.p': found many values of 'ZEL.Integer', expected a class or ZEL.String"},
        {"type: ZEL.PropertyStorage", "15: property 'A.p': found type 'ZEL.PropertyStorage', which the metamodel keeps "
                                      "for itself, expected another one"},
        {"type: ZEL.Integer, flags: [derived], body: unimplemented, fixed: abc",
         "74: found 'fixed' 'abc', expected a whole number"},
        {"type: A, multiplicity: 0..*, flags: [derived], view: association",
         "62: class 'A': property 'association' of a view not found"},
        {"type: A, multiplicity: 0..*, flags: [derived], view: other",
         "62: property 'A.p': found a view of the single value 'other', expected one of many, or a list of properties"},
        {"type: ZEL.Comment, redefines: ZEL.Type.package",
         "15: property 'A.p': found type 'ZEL.Comment', expected 'ZEL.Package' or a subclass of it, as "
         "'ZEL.Type.package' has, which it redefines"},
        {"type: A}, name: {type: ZEL.String, multiplicity: 0..*",
         "19: property 'A.name': found another multiplicity than that of 'ZEL.NamedElement.name', which it redefines, "
         "expected both single or both many"},
        {"type: A, base_element: true", "32: property 'A.p': found 'base_element', expected it on a single reference "
                                        "of a subclass of 'ZEL.StereotypeObject'"},
    };
    for (auto const & [text, mistake] : cases) {
        std::string const types = "  A: {superclasses: [ZEL.Class], properties: {\n    p: {" + std::string(text) +
                                  "},\n    other: {type: A, association: A_p, opposite: A.q},\n"
                                  "    q: {type: A, association: A_p, opposite: A.other}}}\n";
        EXPECT_THAT(mistakesIn(withTypes(types)), ElementsAre(std::string("app.yaml:8:") + mistake)) << text;
    }
}

/// What is told once is not told again, and no check stumbles over it.
TEST(Check, APropertyWithoutAKnownTypeIsToldOnce) {
    char const * const rows[] = {
        "    p: {type: Strng, multiplicity: 0..*}}}\n"
        "  B: {superclasses: [A], properties: {p: {type: ZEL.String, multiplicity: 0..*}}}\n",
        "    p: {type: Strng, multiplicity: 0..*},\n"
        "    q: {type: A, multiplicity: 0..*, flags: [derived], view: [p]}}}\n",
        "    p: {type: Strng, multiplicity: 0..*},\n"
        "    q: {type: A, multiplicity: 0..*, flags: [derived], view: p}}}\n",
        "    p: {type: Strng, multiplicity: 0..*, flags: [derived]}}}\n"
        "  B: {superclasses: [A], views: {p: [subClass]}}\n",
        "    p: {type: Strng, association: A_p, opposite: A.q},\n"
        "    q: {type: A, association: A_p, opposite: A.p}}}\n",
    };
    for (char const * const row : rows) {
        EXPECT_THAT(mistakesIn(withTypes("  A: {superclasses: [ZEL.Class], properties: {\n" + std::string(row))),
                    ElementsAre("app.yaml:8:15: property 'A.p': type 'Strng' not found"))
            << row;
    }
}

TEST(Check, WhatADefinitionBuildsOnIsCheckedToo) {
    Diagnostics diagnostics;
    Definition const app = parseDefinition(withTypes("  A: {superclasses: [other.B]}\n"), "app.yaml", diagnostics);
    Definition const other = parseDefinition("prefix: other\nuris: [x]\nfactory_class: F\ntypes:\n"
                                             "  F: {superclasses: [ZEL.FactoryObject]}\n"
                                             "  B: {superclasses: [ZEL.Element], properties: {p: {type: Strng}}}\n",
                                             "other.yaml", diagnostics);
    check({&app, &builtIn(), &other}, diagnostics);
    EXPECT_THAT(diagnostics.messages(), ElementsAre("other.yaml:6:59: property 'B.p': type 'Strng' not found"));
}

/// Each word of a definition with everything in it, mistyped in turn: what is not refused can be written.
TEST(Check, AnyWordMayBeMistyped) {
    std::ifstream stream(ZEL_SOURCE_DIR "/tests/golden/machine.metamodel.yaml");
    std::string const text{std::istreambuf_iterator<char>(stream), {}};
    auto const isWord = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    std::size_t refused = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (!isWord(text[i - 1]) || isWord(text[i]) || text[text.find_last_of("#\n", i - 1)] == '#') {
            continue;
        }
        std::string mistyped = text;
        mistyped[i - 1] = 'x';
        try {
            (void)emitFiles(Application(mistyped).family(), {});
        } catch (std::runtime_error const & mistake) { // only mistakes of definitions are of this class
            ++refused;
            EXPECT_THAT(mistake.what(), testing::StartsWith("app.yaml:")) << mistyped.substr(i - 10, 10);
        }
    }
    EXPECT_GT(refused, 100U);
}

TEST(Check, FilesStayBelowTheFolderOfTheOutput) {
    for (char const * const folder : {"../../evil", "/evil", "a/../../b", "a//b", "a/", ".", "a\\b", "a b", "'a\"b'"}) {
        EXPECT_THAT(mistakesIn(std::string("include_directory: ") + folder + '\n' + withTypes("")),
                    ElementsAre(testing::StartsWith("app.yaml:1:20: found 'include_directory' '")))
            << folder;
    }
    EXPECT_THAT(mistakesIn("include_directory: a-1/b.c_d\n" + withTypes("")), IsEmpty());
    EXPECT_THAT(mistakesIn("namespace: a::..::b\n" + withTypes("")),
                ElementsAre("app.yaml:1:12: found namespace 'a::..::b', expected C++ names with '::' between them"));
    EXPECT_THAT(mistakesIn("prefix: class\n" + withTypes("").substr(withTypes("").find('\n') + 1)),
                ElementsAre("app.yaml:1:9: found prefix 'class', expected a name that is no word of C++, or a "
                            "'namespace'"));
}

TEST(Check, ManyTextsInFilesAreWarnedOf) {
    Diagnostics diagnostics;
    Definition const app =
        parseDefinition(withTypes("  A: {superclasses: [Base], properties: {\n"
                                  "    p: {type: ZEL.String, multiplicity: 0..*},\n"
                                  "    q: {type: ZEL.String, multiplicity: 0..*, persistence: transient},\n"
                                  "    r: {type: ZEL.String, multiplicity: 0..*, flags: [derived], body: hand},\n"
                                  "    s: {type: Base, multiplicity: 0..*}}}\n"),
                        "app.yaml", diagnostics);
    check({&app, &builtIn()}, diagnostics);
    EXPECT_THAT(diagnostics.messages(), IsEmpty());
    EXPECT_THAT(diagnostics.warnings(),
                ElementsAre("app.yaml:8:5: warning: property 'A.p': found many texts, which a file holds as one unless "
                            "it is written with XmiWriterSettings::setElementPerValue"));
}

TEST(Check, AnAssociationHasOneNameAtBothEnds) {
    EXPECT_THAT(
        mistakesIn(withTypes("  A: {superclasses: [Base], properties: {\n"
                             "    p: {type: A, association: A_1, opposite: A.q},\n"
                             "    q: {type: A, association: A_2, opposite: A.p}}}\n")),
        ElementsAre("app.yaml:8:31: property 'A.p': found association 'A_1', expected 'A_2' as at its opposite",
                    "app.yaml:9:31: property 'A.q': found association 'A_2', expected 'A_1' as at its opposite"));
}

TEST(Check, TheOppositeOfACompositionIsTheContainer) {
    EXPECT_THAT(
        mistakesIn(withTypes("  A: {superclasses: [Base], properties: {\n"
                             "    p: {type: A, flags: [composite], association: A_1, opposite: A.q},\n"
                             "    q: {type: A, multiplicity: 0..*, association: A_1, opposite: A.p},\n"
                             "    r: {type: Base, association: A_2, opposite: A.s},\n"
                             "    s: {type: Maker, association: A_2, opposite: A.r}}}\n")),
        ElementsAre(
            "app.yaml:9:5: property 'A.q': found many values, expected a single value that is not composite: it "
            "is the container",
            "app.yaml:11:15: property 'A.s': found type 'Maker', expected 'A', which has the opposite"));
}

TEST(Check, PropertiesLeaveTheOperationsOfHandlesAlone) {
    EXPECT_THAT(
        mistakesIn(withTypes("  A: {superclasses: [Base], properties: {\n"
                             "    isValid: {type: ZEL.Boolean, multiplicity: 1..1},\n"
                             "    metaClass: {type: A}, Name: {type: ZEL.String}, name: {type: ZEL.String}}}\n")),
        ElementsAre(
            "app.yaml:8:5: property 'A.isValid': found the name of the operation 'isValid' that all handles have, "
            "expected another name",
            "app.yaml:9:5: property 'A.metaClass': found the name of the operation 'getMetaClass' that all handles "
            "have, expected another name",
            "app.yaml:9:53: property 'A.name': found the same C++ name as of 'Name', expected a different one"));
}

} // namespace
} // namespace zelgen::tests
