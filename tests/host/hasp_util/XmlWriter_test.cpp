#include "host/TemporaryFolder.h"

#include <hasp_util/XmlReader.h>
#include <hasp_util/XmlWriter.h>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using HASP::XmlWriter;
using HASP::XmlWriterSettings;

XmlWriterSettings const indented(true, "iso8859-1", false);
XmlWriterSettings const flat(false, "iso8859-1", false);
XmlWriterSettings const flatUtf8(false, "utf-8", false);

std::string written(std::function<void(XmlWriter &)> const & write, XmlWriterSettings const & settings = flat) {
    TemporaryFolder const folder;
    XmlWriter writer(folder.path("x.xml"), settings);
    write(writer);
    writer.writeEndDocument();
    EXPECT_TRUE(writer.close());
    return folder.content("x.xml");
}

/// The text that an operation raises.
std::string raised(std::function<void()> const & operation) {
    try {
        operation();
    } catch (std::runtime_error const & error) {
        return error.what();
    }
    return "nothing raised";
}

TEST(XmlWriter, WritesADocumentLineByLine) {
    EXPECT_EQ(written(
                  [](XmlWriter & writer) {
                      writer.writeStartDocument("1.0");
                      writer.writeStartElement("xmi", "XMI", "urn:xmi");
                      writer.writeAttribute("version", "urn:xmi", "2.1");
                      writer.writeNamespace("xmi", "urn:xmi");
                      writer.writeNamespace("ZEL", "urn:zel");
                      writer.writeEmptyElement("Extension", "urn:xmi");
                      writer.writeAttribute("extender", "", "me");
                      writer.writeStartElement("Model", "urn:zel");
                      writer.writeAttribute("id", "urn:xmi", "_1");
                      writer.writeStartElement("nested", "");
                      writer.writeEndElement();
                      writer.writeStartElement("body", "");
                      writer.writeValue("a");
                      writer.writeValue("\nb");
                      writer.writeEndElement();
                      writer.writeStartElement("deep", "");
                      writer.writeEmptyElement("deeper", "");
                      writer.writeEndElement();
                      writer.writeEndElement();
                  },
                  indented),
              R"(<?xml version="1.0" encoding="iso8859-1"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="urn:xmi" xmlns:ZEL="urn:zel">
  <xmi:Extension extender="me"/>
  <ZEL:Model xmi:id="_1">
    <nested></nested>
    <body>a
b</body>
    <deep>
      <deeper/>
    </deep>
  </ZEL:Model>
</xmi:XMI>
)");
}

TEST(XmlWriter, AddsNoBlanksToMixedContent) {
    EXPECT_EQ(written(
                  [](XmlWriter & writer) {
                      writer.writeStartElement("p", "");
                      writer.writeValue("a");
                      writer.writeEmptyElement("b", "");
                      writer.writeValue("c");
                  },
                  indented),
              "<p>a<b/>c</p>\n");
}

TEST(XmlWriter, EscapesWhatAParserWouldChange) {
    std::string const text = "& < > \" ' \n \t \r \x7F";
    EXPECT_EQ(written([&](XmlWriter & writer) {
                  writer.writeStartElement("a", "");
                  writer.writeAttribute("k", "", text);
                  writer.writeValue(text);
              }),
              "<a k=\"&amp; &lt; &gt; &quot; ' &#10; &#9; &#13; \x7F\">&amp; &lt; &gt; \" ' \n \t &#13; \x7F</a>\n");
}

TEST(XmlWriter, WritesCharactersInTheEncoding) {
    auto const write = [](XmlWriter & writer) {
        writer.writeStartElement("\xC3\xA9l", "");
        writer.writeAttribute("\xC3\xA0", "", "\xC3\xBF\xC4\x80\xE2\x82\xAC\xF0\x9F\x98\x80");
    };
    EXPECT_EQ(written(write), "<\xE9l \xE0=\"\xFF&#x100;&#x20AC;&#x1F600;\"></\xE9l>\n");
    EXPECT_EQ(written(write, flatUtf8),
              "<\xC3\xA9l \xC3\xA0=\"\xC3\xBF\xC4\x80\xE2\x82\xAC\xF0\x9F\x98\x80\"></\xC3\xA9l>\n");
    EXPECT_THROW(XmlWriterSettings(true, "shift_jis", false), std::invalid_argument);
}

TEST(XmlWriter, RefusesWhatNoParserCouldReadAndCarriesOn) {
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
    for (XmlWriterSettings const & settings : {flat, flatUtf8}) {
        for (Row const & row : rows) {
            std::string const document = written(
                [&](XmlWriter & writer) {
                    writer.writeStartElement("e", "");
                    EXPECT_EQ(raised([&] { writer.writeAttribute("k", "", row.value); }),
                              "cannot write " + row.found + " in attribute 'k'");
                    EXPECT_NE(raised([&] { writer.writeNamespace("p", "u" + row.value); }), "nothing raised");
                    writer.writeAttribute("k", "", "v");
                    EXPECT_EQ(raised([&] { writer.writeValue(row.value); }),
                              "cannot write " + row.found + " in content of element 'e'");
                },
                settings);
            EXPECT_EQ(document, "<e k=\"v\"></e>\n");
        }
    }
}

TEST(XmlWriter, RefusesNamesThatAreNone) {
    std::string const document = written([](XmlWriter & writer) {
        writer.writeStartElement("e", "");
        EXPECT_EQ(raised([&] { writer.writeAttribute("\xC4\x80k", "", "v"); }),
                  "cannot write U+0100 in name of attribute '\xC4\x80k'");
        EXPECT_EQ(raised([&] { writer.writeAttribute("1a", "", "v"); }),
                  "cannot write U+0031 in name of attribute '1a'");
        EXPECT_EQ(raised([&] { writer.writeAttribute("a:b", "", "v"); }),
                  "cannot write U+003A in name of attribute 'a:b'");
        EXPECT_EQ(raised([&] { writer.writeAttribute("", "", "v"); }), "cannot write nothing in name of attribute ''");
        EXPECT_EQ(raised([&] { writer.writeAttribute("p q", "a", "urn:a", "v"); }),
                  "cannot write U+0020 in prefix 'p q'");
        EXPECT_EQ(raised([&] { writer.writeStartElement("a b", ""); }), "cannot write U+0020 in name of element 'a b'");
        writer.writeEmptyElement("a.b-c_1", "");
    });
    EXPECT_EQ(document, "<e><a.b-c_1/></e>\n");
}

TEST(XmlWriter, FindsAndMakesPrefixes) {
    EXPECT_EQ(written([](XmlWriter & writer) {
                  writer.writeStartElement("p", "a", "urn:1"); // not declared by hand: the tag does it
                  writer.writeAttribute("q", "k", "urn:2", "v");
                  writer.writeStartElement("b", "urn:2");
                  writer.writeNamespace("p", "urn:3");    // hides the outer one
                  writer.writeEmptyElement("c", "urn:1"); // which therefore needs another
                  writer.writeEmptyElement("d", "urn:3");
                  writer.writeEndElement();
                  writer.writeEmptyElement("e", "urn:1");
                  writer.writeAttribute("lang", "http://www.w3.org/XML/1998/namespace", "en");
              }),
              "<p:a q:k=\"v\" xmlns:q=\"urn:2\" xmlns:p=\"urn:1\">"
              "<q:b xmlns:p=\"urn:3\"><ns1:c xmlns:ns1=\"urn:1\"/><p:d/></q:b>"
              "<p:e xml:lang=\"en\"/></p:a>\n");
    EXPECT_EQ(written([](XmlWriter & writer) {
                  writer.writeStartElement("", "a", "urn:1");
                  writer.writeNamespace("", "urn:1");
                  writer.writeEmptyElement("b", "urn:1");
                  writer.writeAttribute("k", "urn:1", "v"); // a default namespace does not reach attributes
                  writer.writeEmptyElement("c", "");
              }),
              "<a xmlns=\"urn:1\"><b ns1:k=\"v\" xmlns:ns1=\"urn:1\"/><c/></a>\n");
    EXPECT_EQ(written([](XmlWriter & writer) {
                  writer.writeStartElement("p", "a", "urn:1");
                  writer.writeStartElement("p", "b", "urn:2");
                  writer.writeAttribute("p", "k", "urn:1", "v"); // the wish would change the element's name
              }),
              "<p:a xmlns:p=\"urn:1\"><p:b ns1:k=\"v\" xmlns:ns1=\"urn:1\" xmlns:p=\"urn:2\"></p:b></p:a>\n");
}

TEST(XmlWriter, RefusesDeclarationsThatContradict) {
    std::string const document = written([](XmlWriter & writer) {
        writer.writeStartElement("p", "a", "urn:1");
        writer.writeNamespace("", "urn:d");
        EXPECT_EQ(raised([&] { writer.writeNamespace("", "urn:e"); }),
                  "default namespace 'urn:e' is declared beside 'urn:d'");
        EXPECT_NE(raised([&] { writer.writeNamespace("", "urn:d"); }), "nothing raised");
        EXPECT_EQ(raised([&] { writer.writeNamespace("p", "urn:2"); }),
                  "prefix 'p' stands for namespace 'urn:1' already, it cannot be declared for 'urn:2'");
        writer.writeNamespace("q", "urn:2");
        writer.writeNamespace("q", "urn:2");
        EXPECT_NE(raised([&] { writer.writeNamespace("q", ""); }), "nothing raised");
        EXPECT_NE(raised([&] { writer.writeNamespace("xmlns", "urn:x"); }), "nothing raised");
        EXPECT_NE(raised([&] { writer.writeNamespace("x", "http://www.w3.org/2000/xmlns/"); }), "nothing raised");
        writer.writeStartElement("p", "b", "urn:1");
        EXPECT_NE(raised([&] { writer.writeNamespace("p", "urn:2"); }), "nothing raised")
            << "the name uses the outer one";
        writer.writeAttribute("k", "", "1");
        EXPECT_EQ(raised([&] { writer.writeAttribute("k", "", "2"); }), "attribute 'k' is written twice");
    });
    EXPECT_EQ(document, "<p:a xmlns=\"urn:d\" xmlns:q=\"urn:2\" xmlns:p=\"urn:1\"><p:b k=\"1\"></p:b></p:a>\n");
}

TEST(XmlWriter, RefusesOperationsOutOfPlace) {
    std::string const document = written([](XmlWriter & writer) {
        EXPECT_THROW(writer.writeValue("x"), std::logic_error);
        EXPECT_THROW(writer.writeEndElement(), std::logic_error);
        EXPECT_THROW(writer.writeAttribute("k", "", "v"), std::logic_error);
        writer.writeStartElement("a", "");
        writer.writeValue("x");
        EXPECT_THROW(writer.writeAttribute("k", "", "v"), std::logic_error);
        EXPECT_THROW(writer.writeStartDocument("1.0"), std::logic_error);
        writer.writeEndDocument();
        EXPECT_THROW(writer.writeStartElement("b", ""), std::logic_error);
    });
    EXPECT_EQ(document, "<a>x</a>\n");
}

TEST(XmlWriter, RemembersTroubleWithTheFileAndRaisesNothing) {
    auto const writeMuch = [](XmlWriter & writer) {
        writer.writeStartElement("a", "");
        for (int i = 0; i < 1000; ++i) {
            writer.writeEmptyElement("b", "");
            writer.writeAttribute("k", "", std::string(1000, 'x'));
        }
        writer.writeEndDocument();
    };
    TemporaryFolder const folder;
    std::string const target = folder.file("target", "old");
    std::filesystem::create_symlink(target, folder.path("link"));
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    for (std::string const & name :
         {folder.path("none/x"), folder.path(""), folder.path("link"), folder.path("pipe")}) {
        XmlWriter writer(name, flat);
        EXPECT_FALSE(writer.good()) << name;
        writeMuch(writer);
        EXPECT_FALSE(writer.flushAndSync());
        EXPECT_FALSE(writer.close()) << name;
        EXPECT_NE(writer.errorText(), "");
    }
    EXPECT_EQ(folder.content("target"), "old");

    XmlWriter full("/dev/full", flat);
    EXPECT_TRUE(full.good());
    full.writeEmptyElement("a", "");
    full.writeEndDocument();
    EXPECT_TRUE(full.good()) << "nothing was handed over yet";
    EXPECT_FALSE(full.flushAndSync());
    EXPECT_FALSE(full.close());
    EXPECT_EQ(full.errorText(), "No space left on device");
    XmlWriter big("/dev/full", flat);
    writeMuch(big);
    EXPECT_FALSE(big.good());
}

TEST(XmlWriter, FlushesEachElementIfAsked) {
    TemporaryFolder const folder;
    XmlWriter writer(folder.path("x"), XmlWriterSettings(false, "utf-8", true));
    writer.writeStartElement("a", "");
    writer.writeEmptyElement("b", "");
    writer.writeEmptyElement("c", "");
    EXPECT_EQ(folder.content("x"), "<a><b/>");
    EXPECT_TRUE(writer.flushAndSync());
}

TEST(XmlWriter, WritesWhatTheReaderReads) {
    std::string value;
    for (char32_t const c : {0x9,  0xA,  0xD,   0x20,  0x26,  0x3C,   0x3E,   0x22,   0x7F,    0x85,
                             0xA0, 0xFF, 0x100, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFD, 0x10000, 0x10FFFF}) {
        if (c < 0x80) {
            value += static_cast<char>(c);
        } else if (c < 0x800) {
            value += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 63))};
        } else if (c < 0x10000) {
            value += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 63)),
                      static_cast<char>(0x80 | (c & 63))};
        } else {
            value += {static_cast<char>(0xF0 | c >> 18), static_cast<char>(0x80 | (c >> 12 & 63)),
                      static_cast<char>(0x80 | (c >> 6 & 63)), static_cast<char>(0x80 | (c & 63))};
        }
    }
    std::string big;
    while (big.size() < 300'000) {
        big += value;
    }
    for (char const * encoding : {"iso8859-1", "utf-8"}) {
        TemporaryFolder const folder;
        XmlWriter writer(folder.path("x.xml"), XmlWriterSettings(true, encoding, false));
        writer.writeStartDocument("1.0");
        writer.writeStartElement("p", "a", "urn:1");
        writer.writeAttribute("k", "urn:1", big);
        writer.writeValue(big);
        writer.writeEndDocument();
        ASSERT_TRUE(writer.close());

        HASP::XmlReader reader(folder.path("x.xml"));
        ASSERT_TRUE(reader.hasNext()) << reader.error();
        reader.next();
        EXPECT_EQ(reader.getNamespaceURI(), "urn:1");
        EXPECT_TRUE(reader.getAttributeValue("k", "urn:1") == big);
        reader.next();
        EXPECT_TRUE(reader.getText() == big);
        reader.next();
        EXPECT_FALSE(reader.hasNext());
        EXPECT_FALSE(reader.hasError());
    }
}

} // namespace
