#include "host/TemporaryFolder.h"
#include "support/ExpectRaises.h"

#include <hasp_util/XmlWriter.h>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <map>
#include <optional>
#include <vector>

namespace HASP::tests {
namespace {

using ZEL::tests::raisedText;

/// Writes documents, one after the other.
class XmlWriterTest : public testing::Test {
protected:
    enum class Form { Flat, Indented };

    void start(char const * encoding = "iso8859-1", Form form = Form::Flat) {
        writer.emplace(folder.path("x.xml"), XmlWriterSettings(form == Form::Indented, encoding, false));
    }
    /// The document.
    std::string finished() {
        writer->writeEndDocument();
        EXPECT_TRUE(writer->close());
        std::string const document = folder.content("x.xml");
        start();
        return document;
    }
    // Without namespaces.
    void open(char const * name) { writer->writeStartElement(name, ""); }
    void empty(char const * name) { writer->writeEmptyElement(name, ""); }
    void attribute(std::string const & name, std::string const & value) { writer->writeAttribute(name, "", value); }

    XmlWriterTest() { start(); }

    TemporaryFolder folder;
    std::optional<XmlWriter> writer;
};

TEST_F(XmlWriterTest, WritesADocumentLineByLine) {
    start("iso8859-1", Form::Indented);
    writer->writeStartDocument("1.0");
    writer->writeStartElement("xmi", "XMI", "urn:xmi");
    writer->writeAttribute("version", "urn:xmi", "2.1");
    writer->writeNamespace("xmi", "urn:xmi");
    writer->writeNamespace("ZEL", "urn:zel");
    writer->writeEmptyElement("Extension", "urn:xmi");
    attribute("extender", "me");
    writer->writeStartElement("Model", "urn:zel");
    writer->writeAttribute("id", "urn:xmi", "_1");
    open("nested");
    writer->writeEndElement();
    open("body");
    writer->writeValue("a");
    writer->writeValue("\nb");
    writer->writeEndElement();
    open("deep");
    empty("deeper");
    writer->writeEndElement();
    open("mixed"); // gets no blanks
    writer->writeValue("a");
    empty("b");
    writer->writeValue("c");
    EXPECT_EQ(finished(), R"(<?xml version="1.0" encoding="iso8859-1"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="urn:xmi" xmlns:ZEL="urn:zel">
  <xmi:Extension extender="me"/>
  <ZEL:Model xmi:id="_1">
    <nested></nested>
    <body>a
b</body>
    <deep>
      <deeper/>
    </deep>
    <mixed>a<b/>c</mixed>
  </ZEL:Model>
</xmi:XMI>
)");
}

TEST_F(XmlWriterTest, EscapesWhatAParserWouldChange) {
    std::string const text = "& < > \" ' \n \t \r \x7F";
    open("a");
    attribute("k", text);
    writer->writeValue(text);
    EXPECT_EQ(finished(),
              "<a k=\"&amp; &lt; &gt; &quot; ' &#10; &#9; &#13; \x7F\">&amp; &lt; &gt; \" ' \n \t &#13; \x7F</a>\n");
}

TEST_F(XmlWriterTest, EscapesAtEachPlaceOfATextOfAnyLength) {
    std::map<std::string, std::string> const replacements{{"&", "&amp;"},       {"\"", "&quot;"}, {"\n", "&#10;"},
                                                          {"\xC3\xA9", "\xE9"}, {"\x7F", "\x7F"}, {" ", " "}};
    std::string expected;
    open("a");
    for (auto const & [character, written] : replacements) {
        for (std::size_t length = 1; length <= 50; ++length) {
            for (std::size_t place = 0; place < length; ++place) {
                std::string const before(place, 'b');
                std::string const after(length - place - 1, 'e');
                empty("t");
                attribute("k", before + character + after);
                expected += "<t k=\"" + before + written + after + "\"/>";
            }
        }
    }
    EXPECT_EQ(finished(), "<a>" + expected + "</a>\n");
}

TEST_F(XmlWriterTest, WritesCharactersInTheEncoding) {
    // The first and last ones of each length in UTF-8.
    std::string const text = "\xC3\xBF\xC4\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD"
                             "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    auto const write = [&] {
        open("\xC3\xA9l");
        attribute("\xC3\xA0", text);
        writer->writeValue(text);
    };
    std::string const escaped = "\xFF&#x100;&#x7FF;&#x800;&#xD7FF;&#xE000;&#xFFFD;&#x10000;&#x10FFFF;";
    write();
    EXPECT_EQ(finished(), "<\xE9l \xE0=\"" + escaped + "\">" + escaped + "</\xE9l>\n");
    start("utf-8");
    write();
    EXPECT_EQ(finished(), "<\xC3\xA9l \xC3\xA0=\"" + text + "\">" + text + "</\xC3\xA9l>\n");
    EXPECT_THROW(start("shift_jis"), std::invalid_argument);
}

TEST_F(XmlWriterTest, RefusesWhatNoParserCouldReadAndCarriesOn) {
    struct Row {
        std::string value;
        std::string found;
    };
    std::vector<Row> const rows{
        {"a\x01", "U+0001"},
        {std::string("\0", 1), "U+0000"},
        {"\x1F", "U+001F"},
        {"\xEF\xBF\xBE", "U+FFFE"},
        {"x\xEF\xBF\xBF", "U+FFFF"},
        {"\xE9", "byte 0xE9 (not UTF-8)"},
        {"\xC3", "byte 0xC3 (not UTF-8)"},
        {"\xED\xA0\x80", "byte 0xED (not UTF-8)"},
        {"\xC0\x80", "byte 0xC0 (not UTF-8)"},
        {"\xF5\x80\x80\x80", "byte 0xF5 (not UTF-8)"},
        {"\x80", "byte 0x80 (not UTF-8)"},
    };
    for (char const * encoding : {"iso8859-1", "utf-8"}) {
        for (Row const & row : rows) {
            start(encoding);
            open("e");
            EXPECT_EQ(raisedText([&] { attribute("k", row.value); }),
                      "cannot write " + row.found + " in attribute 'k'");
            EXPECT_NE(raisedText([&] { writer->writeNamespace("p", "u" + row.value); }), "(nothing)");
            attribute("k", "v");
            EXPECT_EQ(raisedText([&] { writer->writeValue(row.value); }),
                      "cannot write " + row.found + " in content of element 'e'");
            EXPECT_EQ(finished(), "<e k=\"v\"></e>\n");
        }
    }
}

TEST_F(XmlWriterTest, RefusesNamesThatAreNone) {
    open("e");
    for (auto const & [name, found] : std::map<std::string, std::string>{
             {"\xC4\x80k", "U+0100"}, {"1a", "U+0031"}, {"a:b", "U+003A"}, {"", "nothing"}}) {
        EXPECT_EQ(raisedText([&, name = name] { attribute(name, "v"); }),
                  "cannot write " + found + " in name of attribute '" + name + "'");
    }
    EXPECT_EQ(raisedText([&] { writer->writeAttribute("p q", "a", "urn:a", "v"); }),
              "cannot write U+0020 in prefix 'p q'");
    EXPECT_EQ(raisedText([&] { open("a b"); }), "cannot write U+0020 in name of element 'a b'");
    empty("a.b-c_1");
    EXPECT_EQ(finished(), "<e><a.b-c_1/></e>\n");
}

/// More than are looked through one by one.
TEST_F(XmlWriterTest, KnowsNamesAmongVeryMany) {
    constexpr int count = 300;
    auto const numbered = [](char const * text, int i) { return text + std::to_string(i); };
    std::string document = "<e";
    open("e");
    for (int i = 0; i < count; ++i) {
        attribute(numbered("k", i), "v");
        document += numbered(" k", i) + "=\"v\"";
    }
    for (int const i : {0, 64, 65, count - 1}) {
        EXPECT_EQ(raisedText([&] { attribute(numbered("k", i), "w"); }),
                  numbered("attribute 'k", i) + "' is written twice");
    }
    empty("e");
    attribute("k7", "v");
    EXPECT_EQ(finished(), document + "><e k7=\"v\"/></e>\n");
    open("e");
    for (int i = 0; i < count; ++i) {
        writer->writeNamespace(numbered("p", i), numbered("urn:", i));
    }
    writer->writeEmptyElement("a", "urn:7");
    writer->writeStartElement("b", "urn:new"); // a prefix that is not among them
    writer->writeNamespace("p7", "urn:other");
    writer->writeEmptyElement("c", "urn:7");
    writer->writeEndElement();
    writer->writeEmptyElement("d", "urn:7");
    std::string const text = finished();
    EXPECT_THAT(text, testing::HasSubstr("><p7:a/>"));
    EXPECT_THAT(text, testing::ContainsRegex("<ns[0-9]+:b xmlns:p7=\"urn:other\" xmlns:ns[0-9]+=\"urn:new\">"
                                             "<ns[0-9]+:c xmlns:ns[0-9]+=\"urn:7\"/></ns[0-9]+:b><p7:d/></e>"));
}

TEST_F(XmlWriterTest, FindsAndMakesPrefixes) {
    writer->writeStartElement("p", "a", "urn:1"); // not declared by hand: the tag does it
    writer->writeAttribute("q", "k", "urn:2", "v");
    writer->writeStartElement("b", "urn:2");
    writer->writeNamespace("p", "urn:3");    // hides the outer one
    writer->writeEmptyElement("c", "urn:1"); // which therefore needs another
    writer->writeEmptyElement("d", "urn:3");
    writer->writeEndElement();
    writer->writeEmptyElement("e", "urn:1");
    writer->writeAttribute("lang", "http://www.w3.org/XML/1998/namespace", "en");
    EXPECT_EQ(finished(), "<p:a q:k=\"v\" xmlns:q=\"urn:2\" xmlns:p=\"urn:1\">"
                          "<q:b xmlns:p=\"urn:3\"><ns1:c xmlns:ns1=\"urn:1\"/><p:d/></q:b>"
                          "<p:e xml:lang=\"en\"/></p:a>\n");
    writer->writeStartElement("", "a", "urn:1");
    writer->writeNamespace("", "urn:1");
    writer->writeEmptyElement("b", "urn:1");
    writer->writeAttribute("k", "urn:1", "v"); // a default namespace does not reach attributes
    empty("c");
    EXPECT_EQ(finished(), "<a xmlns=\"urn:1\"><b ns1:k=\"v\" xmlns:ns1=\"urn:1\"/><c/></a>\n");
    writer->writeStartElement("p", "a", "urn:1");
    writer->writeStartElement("p", "b", "urn:2");
    writer->writeAttribute("p", "k", "urn:1", "v"); // the wish would change the element's name
    EXPECT_EQ(finished(),
              "<p:a xmlns:p=\"urn:1\"><p:b ns1:k=\"v\" xmlns:ns1=\"urn:1\" xmlns:p=\"urn:2\"></p:b></p:a>\n");
}

TEST_F(XmlWriterTest, WritesElementsThatAreMarkupAlready) {
    start("iso8859-1", Form::Indented);
    open("a");
    attribute("k", "v");
    EXPECT_TRUE(writer->hasAttribute("k", ""));
    EXPECT_FALSE(writer->hasAttribute("k", "urn:1"));
    EXPECT_FALSE(writer->hasAttribute("l", ""));
    writer->writeMarkup("<b k=\"&lt;\">\n\t\u00E9\u0416 &amp;</b>");
    empty("c");
    EXPECT_EQ(finished(), "<a k=\"v\">\n  <b k=\"&lt;\">\n\t\xE9&#x416; &amp;</b>\n  <c/>\n</a>\n");
    EXPECT_THROW(writer->writeMarkup("<b/>"), std::logic_error);
    open("a");
    EXPECT_EQ("cannot write U+0001 in markup '<b'", raisedText([&] { writer->writeMarkup("<b>\x01</b>"); }));
    EXPECT_EQ(finished(), "<a></a>\n");
}

TEST_F(XmlWriterTest, WritesPreparedNamesAsItWritesOthers) {
    EXPECT_THROW(static_cast<void>(writer->makeName("k", "urn:1")), std::logic_error) << "not declared";
    writer->writeStartElement("p", "a", "urn:1");
    XmlName const qualified = writer->makeName("k", "urn:1");
    XmlName const local = writer->makeName("\xC3\xA9l", "");
    XmlName const longOne = writer->makeName("aNameOfMoreThanSixteenLetters", "");
    EXPECT_EQ(raisedText([&] { static_cast<void>(writer->makeName("a b", "")); }),
              "cannot write U+0020 in name of attribute 'a b'");
    writer->writeAttribute(local, "1");
    EXPECT_EQ(raisedText([&] { writer->writeAttribute(local, "2"); }), "attribute '\xE9l' is written twice");
    EXPECT_EQ(raisedText([&] { attribute("\xC3\xA9l", "2"); }), "attribute '\xE9l' is written twice");
    EXPECT_EQ(raisedText([&] { writer->writeAttribute(qualified, "\x01"); }), "cannot write U+0001 in attribute 'k'");
    writer->writeAttribute(qualified, "<>");
    writer->writeStartElement(longOne);
    writer->writeEmptyElement(local);
    writer->writeAttribute(longOne, "");
    writer->writeEndElement();
    EXPECT_EQ(finished(), "<p:a \xE9l=\"1\" p:k=\"&lt;&gt;\" xmlns:p=\"urn:1\"><aNameOfMoreThanSixteenLetters>"
                          "<\xE9l aNameOfMoreThanSixteenLetters=\"\"/></aNameOfMoreThanSixteenLetters></p:a>\n");
}

TEST_F(XmlWriterTest, RefusesDeclarationsThatContradict) {
    auto const declare = [this](char const * prefix, char const * uri) {
        return raisedText([&] { writer->writeNamespace(prefix, uri); });
    };
    writer->writeStartElement("p", "a", "urn:1");
    EXPECT_EQ(declare("", "urn:d"), "(nothing)");
    EXPECT_EQ(declare("", "urn:e"), "default namespace 'urn:e' is declared beside 'urn:d'");
    EXPECT_NE(declare("", "urn:d"), "(nothing)");
    EXPECT_EQ(declare("p", "urn:2"),
              "prefix 'p' stands for namespace 'urn:1' already, it cannot be declared for 'urn:2'");
    EXPECT_EQ(declare("q", "urn:2"), "(nothing)");
    EXPECT_EQ(declare("q", "urn:2"), "(nothing)");
    EXPECT_NE(declare("q", ""), "(nothing)");
    EXPECT_NE(declare("xmlns", "urn:x"), "(nothing)");
    EXPECT_NE(declare("x", "http://www.w3.org/2000/xmlns/"), "(nothing)");
    writer->writeStartElement("p", "b", "urn:1");
    EXPECT_NE(declare("p", "urn:2"), "(nothing)") << "the name uses the outer one";
    attribute("k", "1");
    EXPECT_EQ(raisedText([&] { attribute("k", "2"); }), "attribute 'k' is written twice");
    EXPECT_EQ(finished(), "<p:a xmlns=\"urn:d\" xmlns:q=\"urn:2\" xmlns:p=\"urn:1\"><p:b k=\"1\"></p:b></p:a>\n");
}

TEST_F(XmlWriterTest, RefusesOperationsOutOfPlace) {
    EXPECT_THROW(writer->writeValue("x"), std::logic_error);
    EXPECT_THROW(writer->writeEndElement(), std::logic_error);
    EXPECT_THROW(attribute("k", "v"), std::logic_error);
    open("a");
    writer->writeValue("x");
    EXPECT_THROW(attribute("k", "v"), std::logic_error);
    EXPECT_THROW(writer->writeStartDocument("1.0"), std::logic_error);
    writer->writeEndDocument();
    EXPECT_THROW(open("b"), std::logic_error);
    EXPECT_EQ(finished(), "<a>x</a>\n");
}

TEST_F(XmlWriterTest, RemembersTroubleWithTheFileAndRaisesNothing) {
    XmlWriterSettings const settings(false, "utf-8", false);
    auto const writeMuch = [](XmlWriter & broken) {
        broken.writeStartElement("a", "");
        for (int i = 0; i < 1000; ++i) {
            broken.writeEmptyElement("b", "");
            broken.writeAttribute("k", "", std::string(1000, 'x'));
        }
        broken.writeEndDocument();
    };
    std::string const target = folder.file("target", "old");
    std::filesystem::create_symlink(target, folder.path("link"));
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    for (char const * name : {"none/x", "", "link", "pipe"}) {
        XmlWriter broken(folder.path(name), settings);
        EXPECT_FALSE(broken.good()) << name;
        writeMuch(broken);
        EXPECT_FALSE(broken.close()) << name;
        EXPECT_NE(broken.errorText(), "");
    }
    EXPECT_EQ(folder.content("target"), "old");

    XmlWriter full("/dev/full", settings);
    full.writeEmptyElement("a", "");
    full.writeEndDocument();
    EXPECT_TRUE(full.good()) << "nothing was handed over yet";
    EXPECT_FALSE(full.close());
    EXPECT_EQ(full.errorText(), "No space left on device");
    XmlWriter big("/dev/full", settings);
    writeMuch(big);
    EXPECT_FALSE(big.good());
}

TEST_F(XmlWriterTest, FlushesEachElementIfAsked) {
    writer.emplace(folder.path("x.xml"), XmlWriterSettings(false, "utf-8", true));
    open("a");
    empty("b");
    empty("c");
    EXPECT_EQ(folder.content("x.xml"), "<a><b/>");
}

} // namespace
} // namespace HASP::tests
