#include "host/TemporaryFolder.h"

#include <hasp_util/XmlReader.h>

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using HASP::XmlReader;
using HASP::XmlReaderSettings;
using testing::ElementsAre;
using testing::HasSubstr;

struct Outcome {
    std::vector<std::string> events;
    std::string error;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

std::string qualified(std::string const & uri, std::string const & name) {
    return uri.empty() ? name : "{" + uri + "}" + name;
}

/// Each event as one text: "<{uri}name [prefix=uri] {uri}attribute=value", ">{uri}name", "'text".
std::string describe(XmlReader const & reader, XmlReader::EventType type) {
    if (type == XmlReader::Characters) {
        return "'" + std::string(reader.getText());
    }
    std::string text =
        (type == XmlReader::StartElement ? "<" : ">") + qualified(reader.getNamespaceURI(), reader.getLocalName());
    for (std::size_t i = 0; i < reader.getNamespaceCount(); ++i) {
        text += " [" + reader.getNamespacePrefix(i) + "=" + reader.getNamespaceURI(i) + "]";
    }
    for (std::size_t i = 0; i < reader.getAttributeCount(); ++i) {
        text += " " + qualified(reader.getAttributeNamespace(i), reader.getAttributeLocalName(i)) + "=" +
                reader.getAttributeValue(i).toString();
    }
    return text;
}

Outcome readFile(std::string const & file, XmlReaderSettings const & settings = {}) {
    XmlReader reader(file, settings);
    Outcome outcome;
    while (reader.hasNext()) {
        EXPECT_FALSE(reader.hasError());
        XmlReader::EventType const type = reader.next();
        // Looking ahead must leave the current event alone.
        std::string const before = describe(reader, type);
        (void)reader.hasNext();
        EXPECT_EQ(describe(reader, type), before);
        outcome.events.push_back(before);
    }
    EXPECT_EQ(reader.hasError(), !reader.error().empty());
    outcome.error = reader.error();
    if (reader.hasError()) {
        outcome.line = reader.getLocation().getLineNumber();
        outcome.column = reader.getLocation().getColumnNumber();
    }
    return outcome;
}

Outcome read(std::string_view document, XmlReaderSettings const & settings = {}) {
    TemporaryFolder const folder;
    return readFile(folder.file("x.xml", document), settings);
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

TEST(XmlReader, ResolvesNamespacesAndTellsDeclarationsAsTheyStand) {
    Outcome const outcome = read(R"(<x:XMI a="1" x:v="2.1" xmlns:x="urn:x" xmlns="urn:d">)"
                                 R"(<e xmlns="" xml:lang="en"/><f xmlns:x="urn:y" x:k="v"/><x:g/></x:XMI>)");
    EXPECT_THAT(outcome.events, ElementsAre("<{urn:x}XMI [x=urn:x] [=urn:d] a=1 {urn:x}v=2.1",            //
                                            "<e [=] {http://www.w3.org/XML/1998/namespace}lang=en", ">e", //
                                            "<{urn:d}f [x=urn:y] {urn:y}k=v", ">{urn:d}f",                //
                                            "<{urn:x}g", ">{urn:x}g", ">{urn:x}XMI"));
    EXPECT_EQ(outcome.error, "");
}

TEST(XmlReader, RefusesNamesThatNamespacesForbid) {
    struct Row {
        char const * document;
        char const * error;
    };
    std::vector<Row> const rows{
        {"<p:a/>", "prefix 'p' is not declared"},
        {"<a p:b='1'/>", "prefix 'p' is not declared"},
        {"<a><b xmlns:p='u'/><p:c/></a>", "prefix 'p' is not declared"},
        {"<a:b:c xmlns:a='u'/>", "'a:b:c' is not a qualified name"},
        {"<a b:='1'/>", "'b:' is not a qualified name"},
        {"<xmlns:a/>", "'xmlns:a' is not a qualified name"},
        {"<a xmlns:p=''/>", "prefix 'p' must not be undeclared"},
        {"<a xmlns:xml='u'/>", "prefix 'xml' must not be bound to namespace 'u'"},
        {"<a xmlns:xmlns='u'/>", "prefix 'xmlns' must not be bound to namespace 'u'"},
        {"<a xmlns:p='http://www.w3.org/XML/1998/namespace'/>",
         "prefix 'p' must not be bound to namespace 'http://www.w3.org/XML/1998/namespace'"},
        {"<a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/>", "element 'a' has attribute 'b' of namespace 'u' twice"},
        {"<a b='1' b='2'/>", "duplicate attribute"},
    };
    for (Row const & row : rows) {
        EXPECT_EQ(read(row.document).error, row.error) << row.document;
    }
    std::string many = "<a xmlns:p='u' xmlns:q='u' q:k7='1'";
    for (int i = 0; i < 30; ++i) {
        many += " p:k" + std::to_string(i) + "='1'";
    }
    EXPECT_EQ(read(many + "/>").error, "element 'a' has attribute 'k7' of namespace 'u' twice");
}

TEST(XmlReader, JoinsCharacterDataUpToTheNextTag) {
    Outcome const outcome = read("<a>x<!-- c -->&lt;<![CDATA[<y>]]><?p i?>&#x4E;\r\n<b/> </a>");
    EXPECT_THAT(outcome.events, ElementsAre("<a", "'x<<y>N\n", "<b", ">b", "' ", ">a"));
    std::string const longText = repeated("0123456789abcde\n", 40'000);
    EXPECT_THAT(read("<a>y" + longText + "<b/>" + longText + "</a>").events,
                ElementsAre("<a", "'y" + longText, "<b", ">b", "'" + longText, ">a"));
}

TEST(XmlReader, AnswersForAttributesByName) {
    TemporaryFolder const folder;
    XmlReader reader(folder.file("x.xml", "<a xmlns:x='u' x:id='i' id='' n='&#10;v'/>"));
    ASSERT_EQ(reader.next(), XmlReader::StartElement);
    EXPECT_EQ(reader.getAttributeValue("id", "u").toString(), "i");
    EXPECT_FALSE(reader.getAttributeValue("id", "").isNull());
    EXPECT_EQ(reader.getAttributeValue("id", ""), "");
    EXPECT_EQ(reader.attributeValue(2), "\nv");
    EXPECT_TRUE(reader.getAttributeValue("n", "u").isNull());
    EXPECT_FALSE(reader.getAttributeValue("n", "u") == "");
    ASSERT_EQ(reader.next(), XmlReader::EndElement);
    EXPECT_EQ(reader.getAttributeCount(), 0u);
    EXPECT_FALSE(reader.hasNext());
    EXPECT_THROW(reader.next(), std::logic_error);
}

TEST(XmlReader, KeepsOneObjectPerName) {
    TemporaryFolder const folder;
    XmlReader reader(
        folder.file("x.xml", "<x:a xmlns:x='u' k='1'>" + repeated("<y k='2'/>", 20'000) + "<x:a k='3'/></x:a>"));
    std::string const & a = reader.intern("a");
    std::string const & k = reader.intern("k");
    int seen = 0;
    while (reader.hasNext()) {
        if (reader.next() == XmlReader::StartElement) {
            EXPECT_EQ(&reader.getLocalName() == &a, reader.getLocalName() == "a");
            EXPECT_EQ(reader.attributes()[0].localName, &k);
            ++seen;
        }
    }
    EXPECT_EQ(seen, 20'002);
}

TEST(XmlReader, TellsPlaces) {
    TemporaryFolder const folder;
    std::string const file = folder.file("x.xml", "<a>\n  <b>\xC3\xA8<c/></b>\n</a>");
    XmlReader reader(file);
    std::vector<std::string> places;
    while (reader.hasNext()) {
        reader.next();
        HASP::Location const place = reader.getLocation();
        EXPECT_EQ(place.getSystemId(), file);
        places.push_back(std::to_string(place.getLineNumber()) + ":" + std::to_string(place.getColumnNumber()));
    }
    EXPECT_THAT(places, ElementsAre("1:1", "1:4", "2:3", "2:6", "2:7", "2:11", "2:11", "2:15", "3:1"));
}

TEST(XmlReader, GivesTheEventsBeforeAnErrorAndThenItsPlace) {
    Outcome const outcome = read("<a>\n<b/>\n <c></d></a>");
    EXPECT_THAT(outcome.events, ElementsAre("<a", "'\n", "<b", ">b", "'\n ", "<c"));
    EXPECT_EQ(outcome.error, "mismatched tag");
    EXPECT_EQ(outcome.line, 3u);
    EXPECT_EQ(outcome.column, 7u);
}

TEST(XmlReader, RefusesEveryTruncation) {
    std::string const document =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!-- c --><!DOCTYPE x:a [<!ENTITY e \"t\">]>\n"
        "<x:a xmlns:x='u' k='&lt;&e;'>\n<b><![CDATA[d]]>\xC3\xA8&#233;</b></x:a>";
    EXPECT_EQ(read(document).error, "");
    TemporaryFolder const folder;
    for (std::size_t size = 0; size < document.size(); ++size) {
        Outcome const outcome = readFile(folder.file("x.xml", document.substr(0, size)));
        EXPECT_NE(outcome.error, "") << size;
        EXPECT_LT(outcome.events.size(), 7u);
    }
}

TEST(XmlReader, ReadsSingleByteEncodingsAndUtf16) {
    auto const document = [](std::string_view label, std::string_view bytes) {
        return "<?xml version='1.0' encoding='" + std::string(label) + "'?><a n='" + std::string(bytes) + "'/>";
    };
    struct Row {
        char const * label;
        char const * bytes;
        char const * utf8;
    };
    std::vector<Row> const rows{
        {"iso8859-1", "\xE9", "\xC3\xA9"},
        {"ISO8859-1", "\xE9", "\xC3\xA9"},
        {"ISO-8859-1", "\xE9", "\xC3\xA9"},
        {"latin1", "\xE9", "\xC3\xA9"},
        {"utf8", "\xC3\xA9", "\xC3\xA9"},
        {"windows-1252", "\x80", "\xE2\x82\xAC"},
        {"Windows-1251", "\xC6", "\xD0\x96"},
        {"iso-8859-15", "\xA4", "\xE2\x82\xAC"},
        {"koi8-r", "\xC1", "\xD0\xB0"},
        {"windows-1258", "\xE9", "\xC3\xA9"},
        {"us-ascii", "e", "e"},
    };
    for (Row const & row : rows) {
        EXPECT_THAT(read(document(row.label, row.bytes)).events, ElementsAre("<a n=" + std::string(row.utf8), ">a"))
            << row.label;
    }
    EXPECT_THAT(read("\xEF\xBB\xBF" + document("utf-8", "\xC3\xA9")).events, ElementsAre("<a n=\xC3\xA9", ">a"));
    for (bool const littleEndian : {true, false}) {
        std::string utf16 = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
        for (char const c : document("utf-16", "x")) {
            utf16 += littleEndian ? std::string{c, '\0'} : std::string{'\0', c};
        }
        EXPECT_THAT(read(utf16).events, ElementsAre("<a n=x", ">a"));
    }
}

TEST(XmlReader, RefusesOtherEncodingsAndBrokenBytes) {
    auto const error = [](std::string_view label, std::string_view bytes) {
        return read("<?xml version='1.0' encoding='" + std::string(label) + "'?>\n<a>" + std::string(bytes) + "</a>");
    };
    for (char const * label : {"shift_jis", "euc-jp", "gb18030", "big5", "utf-7", "iso-2022-jp", "utf-32"}) {
        EXPECT_THAT(error(label, "x").error,
                    HasSubstr("encoding '" + std::string(label) + "' needs more than one byte"));
    }
    EXPECT_EQ(error("no-such", "x").error, "unknown encoding 'no-such'");
    Outcome const broken = error("utf-8", "\xE9");
    EXPECT_EQ(broken.error, "not well-formed (invalid token)");
    EXPECT_EQ(broken.line, 2u);
    EXPECT_NE(error("windows-1252", "\x81").error, "") << "a byte that stands for nothing";
    EXPECT_NE(error("us-ascii", "\xE9").error, "");
}

TEST(XmlReader, ReadsNestingUpToTheLimit) {
    std::size_t const depth = 100'000;
    Outcome const deep = read(repeated("<a>", depth) + repeated("</a>", depth));
    EXPECT_EQ(deep.error, "");
    EXPECT_EQ(deep.events.size(), 2 * depth);

    XmlReaderSettings settings;
    EXPECT_EQ(settings.getDepthLimit(), 1'000'000u);
    settings.setDepthLimit(3);
    EXPECT_EQ(read("<a><b><c/></b><b><c/></b></a>", settings).error, "");
    Outcome const tooDeep = read("<a>\n<b><c><d/></c></b></a>", settings);
    EXPECT_EQ(tooDeep.error, "more than 3 elements are open");
    EXPECT_THAT(tooDeep.events, ElementsAre("<a", "'\n", "<b", "<c"));
    EXPECT_EQ(tooDeep.line, 2u);
    EXPECT_EQ(tooDeep.column, 7u);
}

} // namespace
