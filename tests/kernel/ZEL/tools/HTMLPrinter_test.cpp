#include "host/TemporaryFolder.h"
#include "kernel/ZEL/logging/LogCapture.h"
#include "kernel/ZEL/metamodel/ModelFixture.h"
#include "kernel/ZEL/metamodel/StereotypeInstances.h"
#include "kernel/ZEL/tools/BareObjects.h"
#include "support/Texts.h"

#include <ZEL/logging/HTMLLogFormatter.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/PropertyStorageIntf.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/sequences/SequenceBuilder.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <tuple>

namespace ZEL::tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

using Values = ImmutableSequence<ImmutableObject>;

/// Returns what a test sets as the values of a property, for any object.
class SaidValues final : public PropertyStorageIntf, public ReferenceCountingImpl {
public:
    explicit SaidValues(std::function<Values()> values) : fValues(std::move(values)) {}

    [[nodiscard]] bool has(ImmutableClassObject const &) const override { return !fValues().empty(); }
    [[nodiscard]] Sequence<Object> get(ClassObject const &) override { raiseAnInternalError(); }
    [[nodiscard]] Values get(ImmutableClassObject const &) const override { return fValues(); }
    [[nodiscard]] Object getOne(ClassObject const &) override { raiseAnInternalError(); }
    [[nodiscard]] ImmutableObject getOne(ImmutableClassObject const &) const override { return fValues().front(); }
    void setOrAdd(ClassObject const &, Object const &) override { raiseAnInternalError(); }
    void setOrAddEndOnly(ClassObject const &, Object const &) override { raiseAnInternalError(); }
    void remove(ClassObject const &, Object const &) override { raiseAnInternalError(); }
    void removeEndOnly(ClassObject const &, Object const &) override { raiseAnInternalError(); }
    void removeOne(ClassObject const &) override { raiseAnInternalError(); }
    void removeOneEndOnly(ClassObject const &) override { raiseAnInternalError(); }

private:
    std::function<Values()> fValues;
};

Values sequenceOf(std::vector<ImmutableObject> const & elements) {
    Sequence<ImmutableObject> const made = Generic::SequenceBuilder{}.create<ImmutableObject>();
    for (ImmutableObject const & element : elements) {
        made.push_back(element);
    }
    return made;
}

/// The page without what is a matter of taste: which element carries a value's class, and what the first cell says.
std::string withoutTaste(std::string text) {
    for (std::size_t at = 0; (at = text.find(R"(<td class="metatype">)", at)) != std::string::npos; ++at) {
        std::size_t const from = text.find('>', at) + 1;
        text.replace(from, text.find('<', from) - from, "*");
    }
    return replaced(replaced(text, "<span ", "<* "), "</span>", "</*>");
}

std::string cells(std::string const & type, std::string const & value) {
    return R"(<tr><td class="metatype">*</td><td class="type">)" + type + R"(</td><td class="value">)" + value +
           "</td></tr>";
}
std::string primitive(std::string const & type, std::string const & text) {
    return cells(type, R"(<* class="primitive">)" + text + "</*>");
}
std::string link(std::string const & type, std::string const & id, std::string const & name) {
    return cells(type, R"(<* class="classobj"><a href="#)" + id + R"(">)" + name + "</a></*>");
}
std::string row(std::string const & rowClass, std::string const & name, std::string const & values) {
    bool const isEmpty = values.empty();
    return R"(<tr class="property)" + rowClass + (isEmpty ? " empty" : "") + R"("><td class="name">)" + name +
           R"(</td><td class="value)" + (isEmpty ? " empty" : "") + R"("><table>)" + values + "</table></td></tr>";
}
std::string errorRow(std::string const & rowClass, std::string const & name, std::string const & text) {
    return R"(<tr class="property)" + rowClass + R"( error"><td class="name">)" + name +
           R"(</td><td class="value error">)" + text + "</td></tr>";
}

/// Overrides what the library cannot know of, so that each part of its pages goes through its operations.
struct DerivedPrinter : util::HTMLPrinter {};

struct EscapingPrinter : util::HTMLPrinter {
    explicit EscapingPrinter(bool saysSo) : HTMLPrinter(saysSo ? Overrides::MarkupAlone : Overrides::Anything) {}
    std::string markupOf(std::string text) override { return replaced(replaced(text, "&", "&amp;"), "<", "&lt;"); }
};

struct HTMLPrinterTest : OpenModelFixture {
    HTMLPrinterTest() { model.setUuidBase("u"); }

    template <class Printer> std::string printedBy(Printer && printer, ImmutableClassObject const & object) {
        printer.print(object, folder.path("page"));
        return folder.content("page.html");
    }
    std::string printed(ImmutableClassObject const & object) {
        std::string const page = printedBy(util::HTMLPrinter(), object);
        EXPECT_EQ(page, printedBy(DerivedPrinter(), object));
        return page;
    }
    /// The headings of a page, in their order.
    static std::vector<std::string> headings(std::string const & page) {
        std::vector<std::string> found;
        std::string const begin = R"(<h1 class="head">)";
        for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
            found.push_back(page.substr(at + begin.size(), page.find("</h1>", at) - at - begin.size()));
        }
        return found;
    }
    Class classNamed(std::string const & name) const {
        Class const made = factory.createClass();
        made.setName(name);
        return made;
    }
    /// An instance of a stereotype whose properties a test adds by `say`.
    StereotypeObject mark(std::string const & name = "Mark") {
        stereotype = factory.createStereotype();
        stereotype.setName(name);
        return createMark<1>(stereotype);
    }
    void say(std::string const & name, std::function<Values()> values, bool isComposite = false,
             bool isDerived = false) {
        Property const property = factory.createProperty();
        property.setName(name);
        property.setIsComposite(Boolean(isComposite));
        property.setIsDerived(Boolean(isDerived));
        property.setStorage(PropertyStorage(std::make_unique<SaidValues>(std::move(values)).release()));
        stereotype.getOwnedAttributes().push_back(property);
    }

    TemporaryFolder folder;
    LogCapture log;
    MarksOfATest marks;
    Stereotype stereotype;
};

constexpr char kStyleSheet[] = R"html(<style type="text/css">
body {width:800px; font-size:10pt; font-family:Arial, Helvetica, Geneva, sans-serif;}
div.uml {}
div.uml h1.head {background-color:powderblue;}
div.uml table {width:100%; margin-top:1px; margin-bottom:20px; border:1px lightgrey solid; border-collapse:collapse;}
div.uml tr.property {}
div.uml tr.empty {background-color:lightgrey; display:none;}
div.uml tr.derived {background-color:ghostwhite; display:none; font-style:italic;}
div.uml tr.error {display:none;}
div.uml td {vertical-align:top; border-width:0px 0px 1px 0px; border-bottom:1px lightgrey dotted; padding:2px 0px 2px 4px;}
div.uml td.name {color:black; width:25%;}
div.uml td.metatype {color:SlateGrey; width:25%;}
div.uml td.type {color:green; width:25%;}
div.uml td.value {color:blue; width:100%;}
div.uml td.error {color:red;}
div.uml td.value table {margin:0px; border:0px;}
div.uml td.value table td {border-bottom:0px; padding:0px;}
</style>
)html";

constexpr char kBodyStart[] = R"html(</head>
<body  onload="initialize()">
<div class="uml">
<p>Display control:
<input type="checkbox" onclick="toggleCssDisplayNum(7);"> error@
<input type="checkbox" onclick="toggleCssDisplayNum(6);"> derived@
<input type="checkbox" onclick="toggleCssDisplayNum(5);"> empty@
</p>
)html";

TEST_F(HTMLPrinterTest, WritesAnObjectAndWhatItContainsAsOnePage) {
    Comment const outer = factory.createComment();
    Comment const inner = factory.createComment();
    outer.setBody("to be <b>read</b>");
    outer.getOwnedComments().push_back(inner);
    outer.getAnnotatedElements().push_back(classNamed("C"));
    ASSERT_EQ("u_2", outer.getSiid());

    std::string const name = folder.path("page");
    util::HTMLPrinter printer;
    EXPECT_EQ(name + ".html", printer.print(outer, name));
    EXPECT_THAT(log.texts(LogLevel::info),
                ElementsAre("Start of HTML pretty-print of model -- to: " + name, "End of HTML pretty-print"));
    EXPECT_THAT(log.texts(), testing::IsEmpty());

    // Both pages of the library have one script.
    std::string const logPage = HTMLLogFormatter::getHead();
    std::string const script = between(logPage, "<script", "</head>");
    ASSERT_FALSE(script.empty());
    std::string const head = kPageStart + ("RV2FEN UML Generation Report " + name) + "</title>\n" + kStyleSheet +
                             script + replaced(kBodyStart, "@", " ");

    std::string const model = link("MetaModel", "IDu", "unnamed");
    auto const comment = [&model](std::string const & id, std::string const & body, std::string const & annotated,
                                  std::string const & contained, std::string const & owner) {
        std::tuple<char const *, char const *, std::string> const rows[] = {
            {"", "body", body},
            {"", "annotatedElement", annotated},
            {"", "persistence", ""},
            {" derived composite", "ownedElement", contained},
            {" derived", "owner", owner},
            {" composite", "ownedComment", contained},
            {" composite", "appliedStereotypeInstance", ""},
            {"", "modelZEL", model},
            {" derived", "containerZEL", owner},
            {" derived composite", "containeeZEL", contained},
            {" derived", "rootModel", model},
            {"", "id", primitive("Integer", id)},
            {" derived", "siid", primitive("String", "u_" + id)},
        };
        std::string text = R"(<div id="IDu_)" + id + R"("><h1 class="head">Comment unnamed</h1><table>)";
        for (auto const & [rowClass, name, values] : rows) {
            text += row(rowClass, name, values);
        }
        return text + "</table></div>";
    };
    std::string const body = comment("2", primitive("String", "to be <b>read</b>"), link("Class", "IDu_4", "C"),
                                     link("Comment", "IDu_3", "unnamed"), "") +
                             comment("3", "", "", "", link("Comment", "IDu_2", "unnamed"));
    EXPECT_EQ(head + body + "</div>\n</body>\n</html>\n", withoutTaste(folder.content("page.html")));
}

TEST_F(HTMLPrinterTest, PutsWhatIsContainedAfterItsOwnerInOrder) {
    Package const top = factory.createPackage(String("top"));
    model.setTopPackage(top);
    for (std::string const name : {"a", "b"}) {
        Package const package = factory.createPackage(name);
        top.getPackagedElements().push_back(package);
        for (char const * const inner : {"1", "2"}) {
            package.getPackagedElements().push_back(factory.createPackage(name + inner));
        }
    }
    top.getOwnedComments().push_back(factory.createComment());
    EXPECT_THAT(headings(printed(top)), ElementsAre("Package top", "Package a", "Package a1", "Package a2", "Package b",
                                                    "Package b1", "Package b2", "Comment unnamed"));
    EXPECT_THAT(headings(printed(model)).front(), "MetaModel unnamed");
    // Said of every namespace by the library itself.
    EXPECT_THAT(printed(top), HasSubstr(errorRow(" derived", "importedMember",
                                                 "The Namespace.importedMember derived property is not yet "
                                                 "implemented!")));
}

TEST_F(HTMLPrinterTest, NamesWhatHasNoName) {
    EXPECT_THAT(headings(printed(factory.createClass())), ElementsAre("Class unnamed"));
    EXPECT_THAT(headings(printed(classNamed("a<b&c"))), ElementsAre("Class a<b&c"));
    StereotypeObject const object = mark("Seal");
    EXPECT_THAT(headings(printed(object)), ElementsAre("&laquo;Seal&raquo; unnamed"));
    std::string name;
    say("name", [&name] { return sequenceOf({Object(String(name))}); });
    EXPECT_THAT(headings(printed(object)), ElementsAre("&laquo;Seal&raquo; anonymous"));
    name = "red";
    EXPECT_THAT(headings(printed(object)), ElementsAre("&laquo;Seal&raquo; red"));
}

TEST_F(HTMLPrinterTest, MakesRowsOfWhatCannotBeRead) {
    StereotypeObject const object = mark();
    Class const dead = classNamed("dead");
    dead.destroy();
    Object const untyped = ValueObject(std::make_unique<NSImplementation::ValueObjectImpl>(
                                           String::getTypeInfo(), ImmutableObject(), HASP::any(String("text")))
                                           .release(),
                                       Deviant());
    ClassObject const classless = BareObject::make(Comment::MetaClass());
    say("none", [] { return Values(); });
    say(
        "broken", []() -> Values { raiseInternalError("no luck"); }, true);
    say(
        "strange", []() -> Values { throw 7; }, true, true);
    say("empty", [] { return sequenceOf({}); });
    say(
        "mixed",
        [&] {
            return sequenceOf({Object(Integer(1)), dead, untyped, classless, Object(Integer(2))});
        },
        true);
    std::string const valueError = R"(<tr class="error"><td colspan='3' class="error">)";
    std::string const valueEnd = "</td colspan='3'></tr>";
    std::string const page = withoutTaste(printed(object));
    EXPECT_EQ(
        between(page, "<table>", "</div>"),
        "<table>" + errorRow("", "none", "Bug!!! No valid values for property:") +
            errorRow(" composite", "broken", "no luck") +
            errorRow(" derived composite", "strange", "Unknown exception on property: strange") + row("", "empty", "") +
            row(" composite", "mixed",
                primitive("Integer", "1") + valueError +
                    "navigation::getMetaTypeClassName:error Not a valid zel object" + valueEnd + valueError +
                    "navigation::getMetaTypeName:error zel-object has not a valid meta-type" + valueEnd + valueError +
                    "Expects element to have a valid meta-class" + valueEnd + primitive("Integer", "2")) +
            "</table>");
    EXPECT_THAT(log.texts(LogLevel::debug),
                testing::Contains("htmlprinter:error:printSequenceValue: typeName=?? typeMetaClassName=?? "
                                  "value=?? (navigation::getMetaTypeClassName:error Not a valid zel object)"));
    EXPECT_THAT(headings(page), testing::SizeIs(1)) << "a dead child is not printed";
}

TEST_F(HTMLPrinterTest, EscapesTheSameWithAndWithoutItsOperations) {
    StereotypeObject const object = mark("S<T>");
    Class const linked = classNamed("a<b&c");
    say(
        "v & w",
        [&] {
            return sequenceOf({linked, Object(String("<i>"))});
        },
        true);
    say("n < o", []() -> Values { raiseInternalError("<no luck>"); });
    say("none", [] { return Values(); });
    std::string const page = printedBy(EscapingPrinter(true), object);
    EXPECT_EQ(page, printedBy(EscapingPrinter(false), object));
    std::pair<char const *, char const *> const texts[] = {
        {"S<T>", "S&lt;T>"},    {"a<b&c", "a&lt;b&amp;c"}, {"<i>", "&lt;i>"},
        {"v & w", "v &amp; w"}, {"n < o", "n &lt; o"},     {"<no luck>", "&lt;no luck>"},
    };
    for (auto const & [text, markup] : texts) {
        EXPECT_THAT(page, AllOf(HasSubstr(markup), Not(HasSubstr(text))));
    }
}

TEST_F(HTMLPrinterTest, ShowsWhatIsKeptOfAFile) {
    Class const object = classNamed("A");
    EXPECT_THAT(printed(object), Not(HasSubstr("not understood")));
    Remainder kept;
    kept.attributes = {{"urn:t", "t", "colour", "r&d"}, {"", "", "size", "1"}};
    kept.links = {{"superClass", "other.xmi#x", "", "", ""}};
    kept.elements = {{"<note>n</note>"}};
    setRemainder(object, kept);
    std::string const page = printedBy(EscapingPrinter(true), object);
    EXPECT_EQ(page, printedBy(EscapingPrinter(false), object));
    EXPECT_THAT(page,
                HasSubstr(R"(<tr class="property"><td class="name">kept, not understood</td><td class="value"><table>)"
                          R"(<tr><td class="value">t:colour="r&amp;d"</td></tr>)"
                          R"(<tr><td class="value">size="1"</td></tr>)"
                          R"(<tr><td class="value">superClass -> other.xmi#x</td></tr>)"
                          R"(<tr><td class="value">&lt;note>n&lt;/note></td></tr>)"
                          R"(</table></td></tr></table></div>)"));
}

TEST_F(HTMLPrinterTest, MakesLargePagesOfTheSameParts) {
    constexpr int count = 300;
    Package const top = factory.createPackage(String("top"));
    Class const base = classNamed("base");
    for (int i = 0; i < count; ++i) {
        Class const inner = classNamed("C" + std::to_string(i));
        inner.getSuperClasses().push_back(base);
        top.getPackagedElements().push_back(inner);
    }
    EXPECT_THAT(headings(printed(top)), testing::SizeIs(count + 1));
}

TEST_F(HTMLPrinterTest, PrintsNoObjectTwice) {
    StereotypeObject const object = mark();
    Comment const child = factory.createComment();
    auto const twice = [&] { return sequenceOf({child, child}); };
    say("seen again", twice, true, true);
    say("linked", twice);
    EXPECT_THAT(headings(printed(object)), ElementsAre("&laquo;Mark&raquo; unnamed"));
    say("contained", twice, true);
    std::string const error = "Expects unique ID but ID" + child.getSiid().str() + " is not";
    EXPECT_RAISES(error, printed(object));
    std::string const page = folder.content("page.html");
    EXPECT_THAT(headings(page), ElementsAre("&laquo;Mark&raquo; unnamed", "Comment unnamed"));
    EXPECT_THAT(page, testing::EndsWith("</table></div>")) << "as far as it was written";

    util::HTMLPrinter printer;
    printer.print(child, folder.path("page"));
    EXPECT_RAISES(error, printer.print(child, folder.path("page")));
    EXPECT_RAISES(error, printer.print(object, folder.path("page")));
    printer.print(stereotype, folder.path("page"));
    EXPECT_THAT(folder.content("page.html"), testing::EndsWith("</html>\n")) << "what went wrong is forgotten";
}

TEST_F(HTMLPrinterTest, SaysWhatCannotBeWritten) {
    util::HTMLPrinter printer;
    Comment const dead = factory.createComment();
    dead.destroy();
    for (ImmutableClassObject const & invalid : {ImmutableClassObject(), ImmutableClassObject(dead)}) {
        EXPECT_RAISES("Expects a valid Element", printer.print(invalid, folder.path("page")));
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("page.html")));
    EXPECT_THAT(log.texts(LogLevel::info),
                testing::Contains("Start of HTML pretty-print of model -- to: " + folder.path("page")));

    Comment const element = factory.createComment();
    EXPECT_RAISES("Cannot create output file: " + folder.path("none/page.html"),
                  printer.print(element, folder.path("none/page")));
    std::filesystem::create_symlink("/dev/full", folder.path("full.html"));
    EXPECT_RAISES("Cannot write output file: " + folder.path("full.html"), printer.print(element, folder.path("full")));
    EXPECT_THAT(log.texts(LogLevel::info), Not(testing::Contains("End of HTML pretty-print")));
    EXPECT_NO_THROW(printer.print(factory.createComment(), folder.path("page")));
}

struct CountingPrinter : util::HTMLPrinter {
    void printElement(ImmutableClassObject object) override {
        ++count;
        HTMLPrinter::printElement(object);
    }
    int count = 0;
};

TEST_F(HTMLPrinterTest, PrintsManyLevelsAndNeedsNoStackForThem) {
    constexpr int levels = 100000;
    Comment const outermost = factory.createComment();
    Comment innermost = outermost;
    for (int level = 1; level < levels; ++level) {
        Comment const inner = factory.createComment();
        innermost.getOwnedComments().push_back(inner);
        innermost = inner;
    }
    std::filesystem::create_symlink("/dev/null", folder.path("deep.html"));
    CountingPrinter printer;
    printer.print(outermost, folder.path("deep"));
    EXPECT_EQ(levels, printer.count);
}

/// Calls each operation that makes a tag, in the place of the style sheet.
struct TagPrinter : util::HTMLPrinter {
    using HTMLPrinter::helperGetID;
    using HTMLPrinter::helperGetName;

    void writeCss() override {
        writeStartTagWithID("a", "i", "c");
        writeStartTagWithID("a", "i", "");
        writeStartTag("b", "c");
        writeStartTag("b", "");
        writeEndTag("b");
        writeElementWithID("e", "i", "c", "<t>");
        writeElement("e", "c", "<t>");
        output << hyperLinkElement("#t", "text");
    }
};

TEST_F(HTMLPrinterTest, CanBeDerivedFrom) {
    TagPrinter printer;
    printer.print(factory.createComment(), folder.path("page"));
    EXPECT_THAT(folder.content("page.html"), HasSubstr(R"(</title>
<a id="i" class="c"><a id="i"><b class="c"><b></b><e id="i" class="c"><t></e><e class="c"><t></e><a href="#t">text</a><script )"));
    ClassObject const classless = BareObject::make();
    for (auto const & helper : {&TagPrinter::helperGetID, &TagPrinter::helperGetName}) {
        EXPECT_RAISES("Expects a valid element", (printer.*helper)(ImmutableClassObject()));
        EXPECT_RAISES("Expects element to have a valid meta-class", (printer.*helper)(classless));
    }
}

} // namespace
} // namespace ZEL::tests
