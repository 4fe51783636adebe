#include "host/TemporaryFolder.h"

#include <hasp_util/XmlReader.h>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace HASP::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Rows of two texts.
using Pairs = std::vector<std::pair<std::string, std::string>>;

struct Outcome {
    std::vector<std::string> events;
    std::string error;
    Location place{"", 0, 0};
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
    outcome.place = reader.getLocation();
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

TEST(XmlReader, ReportsNamesByTheNamespacesThatTheyAreTranslatedTo) {
    TemporaryFolder const folder;
    XmlReaderSettings settings;
    settings.setNamespaceTranslation([](std::string const & uri) { return uri == "urn:old" ? "urn:new" : uri; });
    std::string const text = R"(<o:a xmlns:o="urn:old" o:k="v"><b xmlns="urn:old" xmlns:x="urn:x" xml:lang="en"/>)"
                             R"(<c xmlns:n="urn:new" n:k="v"/><d xmlns=""/></o:a>)";
    Outcome const outcome = readFile(folder.file("a.xml", text), settings);
    EXPECT_EQ(outcome.error, "");
    EXPECT_THAT(outcome.events,
                ElementsAre("<{urn:new}a [o=urn:new] {urn:new}k=v",
                            "<{urn:new}b [=urn:new] [x=urn:x] {http://www.w3.org/XML/1998/namespace}lang=en",
                            ">{urn:new}b", "<c [n=urn:new] {urn:new}k=v", ">c", "<d [=]", ">d", ">{urn:new}a"));
}

TEST(XmlReader, ReadsTextsAsOneDocument) {
    std::string const longText = repeated("0123456789abcde\n", 40'000);
    XmlReader reader(std::vector<std::string_view>{"<a>", "", "<b k='", "v'/>", longText, "</a", ">"});
    std::vector<std::string> events;
    while (reader.hasNext()) {
        auto const type = reader.next();
        events.push_back(describe(reader, type));
    }
    EXPECT_THAT(events, ElementsAre("<a", "<b k=v", ">b", "'" + longText, ">a"));
    EXPECT_EQ(reader.error(), "");
    XmlReader broken(std::vector<std::string_view>{"<a>", "</b>"});
    while (broken.hasNext()) {
        (void)broken.next();
    }
    EXPECT_TRUE(broken.hasError());
    XmlReader none(std::vector<std::string_view>{});
    EXPECT_FALSE(none.hasNext());
    EXPECT_TRUE(none.hasError());
}

TEST(XmlReader, RefusesNamesThatNamespacesForbid) {
    std::string many = "<a xmlns:p='u' xmlns:q='u' q:k7='1'";
    for (int i = 0; i < 30; ++i) {
        many += " p:k" + std::to_string(i) + "='1'";
    }
    for (auto const & [document, error] : Pairs{
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
             {many + "/>", "element 'a' has attribute 'k7' of namespace 'u' twice"},
         }) {
        EXPECT_EQ(read(document).error, error) << document;
    }
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
        Location const place = reader.getLocation();
        EXPECT_EQ(place.getSystemId(), file);
        places.push_back(std::to_string(place.getLineNumber()) + ":" + std::to_string(place.getColumnNumber()));
    }
    EXPECT_THAT(places, ElementsAre("1:1", "1:4", "2:3", "2:6", "2:7", "2:11", "2:11", "2:15", "3:1"));
}

TEST(XmlReader, GivesTheEventsBeforeAnErrorAndThenItsPlace) {
    Outcome const outcome = read("<a>\n<b/>\n <c></d></a>");
    EXPECT_THAT(outcome.events, ElementsAre("<a", "'\n", "<b", ">b", "'\n ", "<c"));
    EXPECT_EQ(outcome.error, "mismatched tag");
    EXPECT_EQ(outcome.place.getLineNumber(), 3u);
    EXPECT_EQ(outcome.place.getColumnNumber(), 7u);
}

TEST(XmlReader, ReadsSingleByteEncodingsAndUtf16) {
    auto const document = [](std::string_view label, std::string_view bytes) {
        return "<?xml version='1.0' encoding='" + std::string(label) + "'?><a n='" + std::string(bytes) + "'/>";
    };
    using Row = std::array<std::string, 3>;
    for (auto const & [label, bytes, utf8] : std::vector<Row>{{"iso8859-1", "\xE9", "\xC3\xA9"},
                                                              {"ISO8859-1", "\xE9", "\xC3\xA9"},
                                                              {"ISO-8859-1", "\xE9", "\xC3\xA9"},
                                                              {"latin1", "\xE9", "\xC3\xA9"},
                                                              {"utf8", "\xC3\xA9", "\xC3\xA9"},
                                                              {"windows-1252", "\x80", "\xE2\x82\xAC"},
                                                              {"Windows-1251", "\xC6", "\xD0\x96"},
                                                              {"windows-1258", "\xE9", "\xC3\xA9"}}) {
        EXPECT_THAT(read(document(label, bytes)).events, ElementsAre("<a n=" + utf8, ">a")) << label;
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

TEST(XmlReader, ReadsLongTextsOfSingleByteEncodings) {
    // More than a piece of the file, all or none of it beyond ASCII, and each end of a piece.
    for (std::size_t const size : {65'536u - 60, 65'536u, 131'072u, 300'001u}) {
        for (char const * label : {"iso8859-1", "iso-8859-1"}) {
            std::string const head = "<?xml version='1.0' encoding='" + std::string(label) + "'?>\n<a>";
            Outcome const outcome = read(head + repeated("\xE9", size) + "<b/>" + repeated("x", size) + "\xFC\x80</c>");
            EXPECT_THAT(outcome.events, ElementsAre("<a", "'" + repeated("\xC3\xA9", size), "<b", ">b",
                                                    "'" + repeated("x", size) + "\xC3\xBC\xC2\x80"));
            EXPECT_EQ(outcome.error, "mismatched tag");
            EXPECT_EQ(outcome.place.getColumnNumber(), 2 * size + 12) << label;
        }
    }
}

TEST(XmlReader, RefusesOtherEncodingsAndBrokenBytes) {
    auto const error = [](std::string_view label, std::string_view bytes) {
        return read("<?xml version='1.0' encoding='" + std::string(label) + "'?>\n<a>" + std::string(bytes) + "</a>");
    };
    for (char const * label : {"shift_jis", "gb18030", "utf-7", "iso-2022-jp", "utf-32"}) {
        EXPECT_THAT(error(label, "x").error,
                    HasSubstr("encoding '" + std::string(label) + "' needs more than one byte"));
    }
    EXPECT_EQ(error("no-such", "x").error, "unknown encoding 'no-such'");
    Outcome const broken = error("utf-8", "\xE9");
    EXPECT_EQ(broken.error, "not well-formed (invalid token)");
    EXPECT_EQ(broken.place.getLineNumber(), 2u);
    EXPECT_NE(error("windows-1252", "\x81").error, "") << "a byte that stands for nothing";
    EXPECT_NE(error("us-ascii", "\xE9").error, "");
}

TEST(XmlReader, ReadsNestingUpToTheLimit) {
    XmlReaderSettings settings;
    EXPECT_EQ(settings.getDepthLimit(), 1'000'000u);
    settings.setDepthLimit(3);
    EXPECT_EQ(read("<a><b><c/></b><b><c/></b></a>", settings).error, "");
    Outcome const tooDeep = read("<a>\n<b><c><d/></c></b></a>", settings);
    EXPECT_EQ(tooDeep.error, "more than 3 elements are open");
    EXPECT_THAT(tooDeep.events, ElementsAre("<a", "'\n", "<b", "<c"));
    EXPECT_EQ(tooDeep.place.getLineNumber(), 2u);
    EXPECT_EQ(tooDeep.place.getColumnNumber(), 7u);
}

// --- files that mean harm ------------------------------------------------------------------------------------------------

TEST(XmlReaderHostile, OpensPlainFilesOnly) {
    TemporaryFolder const folder;
    std::string const pipe = folder.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (std::string const & path : {pipe, std::string("/dev/zero"), folder.path("")}) {
        EXPECT_EQ(readFile(path).error, "cannot open '" + path + "': not a plain file");
    }
    Outcome const missing = readFile(folder.path("none"));
    EXPECT_EQ(missing.error, "cannot open '" + folder.path("none") + "': No such file or directory");
    EXPECT_EQ(missing.place.getSystemId(), folder.path("none"));
    EXPECT_NE(readFile("").error, "");
    EXPECT_THAT(readFile(std::string("a\0b", 3)).error, HasSubstr("zero byte"));
    EXPECT_NE(read("").error, "");

    std::filesystem::create_symlink(folder.file("a.xml", "<a/>"), folder.path("link"));
    EXPECT_EQ(readFile(folder.path("link")).error, "");
}

TEST(XmlReaderHostile, NeverOpensAnythingElse) {
    TemporaryFolder const folder;
    std::string const secret = folder.file("secret", "<!ENTITY s 'secret'>");
    for (auto const & [document, error] : Pairs{
             {"<!DOCTYPE r [<!ENTITY ee SYSTEM '" + secret + "'>]>\n<r>&ee;</r>",
              "external entity 'ee' in '" + secret + "' is not opened"},
             {"<!DOCTYPE r [<!ENTITY ee SYSTEM 'http://h/x.xml'><!ENTITY in 'a&ee;'>]>\n<r>&in;</r>",
              "external entity 'ee' in 'http://h/x.xml' is not opened"},
             {"<!DOCTYPE r [<!ENTITY % p SYSTEM '" + secret + "'>\n%p;]><r>&s;</r>",
              "external entity 'p' in '" + secret + "' is not opened"},
             {"<!DOCTYPE r\nSYSTEM '" + secret + "'><r/>",
              "external document type definition '" + secret + "' is not opened"},
             {"<!DOCTYPE r PUBLIC '-//W3C//DTD XHTML'\n'http://h/x.dtd'><r>&nbsp;</r>",
              "external document type definition 'http://h/x.dtd' is not opened"},
             {"<!DOCTYPE r [<!ENTITY % p ''>%p;]>\n<r>&unknown;</r>", "entity 'unknown' is not declared"},
             {"\n<r>&unknown;</r>", "undefined entity"},
         }) {
        Outcome const outcome = read(document);
        EXPECT_EQ(outcome.error, error);
        EXPECT_THAT(outcome.events, testing::Not(testing::Contains(HasSubstr("secret"))));
        EXPECT_EQ(outcome.place.getLineNumber(), 2u) << error;
    }
    // A declaration that nothing refers to does no harm.
    EXPECT_EQ(read("<!DOCTYPE r [<!ENTITY ee SYSTEM 'http://h/x'>]><r/>").error, "");
}

TEST(XmlReaderHostile, ExpandsEntitiesOfTheDocument) {
    EXPECT_THAT(read("<!DOCTYPE r [<!ENTITY a 'x'><!ENTITY b '&a;&a;'>]><r>&b;<![CDATA[&b;]]></r>").events,
                ElementsAre("<r", "'xx&b;", ">r"));
    EXPECT_THAT(read("<!DOCTYPE r [<!ENTITY % d \"<!ENTITY a 'x'>\">%d;]><r>&a;</r>").events,
                ElementsAre("<r", "'x", ">r"));
    EXPECT_THAT(read("<!DOCTYPE r [<!ATTLIST r k CDATA 'dflt'>]><r/>").events, ElementsAre("<r k=dflt", ">r"));
    EXPECT_EQ(read("<!DOCTYPE r [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><r>&a;</r>").error, "recursive entity reference");
}

TEST(XmlReaderHostile, StopsEntityBombs) {
    std::string laughs = "<!DOCTYPE r [<!ENTITY e0 'lol'>";
    for (int i = 1; i < 12; ++i) {
        laughs += "<!ENTITY e" + std::to_string(i) + " '" + repeated("&e" + std::to_string(i - 1) + ";", 10) + "'>";
    }
    std::string const quadratic =
        "<!DOCTYPE r [<!ENTITY a '" + std::string(100'000, 'B') + "'>]>\n<r>" + repeated("&a;", 20'000) + "</r>";
    for (std::string const & bomb : {laughs + "]>\n<r>&e11;</r>", laughs + "]>\n<r k='&e11;'/>", quadratic}) {
        Outcome const outcome = read(bomb);
        EXPECT_THAT(outcome.error, HasSubstr("amplification"));
        EXPECT_EQ(outcome.place.getLineNumber(), 2u);
        for (std::string const & event : outcome.events) {
            EXPECT_LT(event.size(), 40'000'000u);
        }
    }
    XmlReaderSettings strict;
    strict.setAmplificationLimit(2, 1000);
    std::string const modest = "<!DOCTYPE r [<!ENTITY a '" + std::string(500, 'B') + "'>]><r>&a;&a;&a;&a;&a;&a;</r>";
    EXPECT_THAT(read(modest, strict).error, HasSubstr("amplification"));
    EXPECT_EQ(read(modest).error, "");
}

TEST(XmlReaderHostile, PausesWhenLittleInputMakesMuch) {
    // Each of the elements gets the long default: some 2 GB would wait at once if a piece of the file were parsed
    // whole.
    TemporaryFolder const folder;
    XmlReader reader(folder.file("x.xml", "<!DOCTYPE r [<!ATTLIST e k CDATA '" + std::string(30'000, 'x') + "'>]><r>" +
                                              repeated("<e/>", 16'000) + "</r>"));
    std::size_t bytes = 0;
    while (reader.hasNext()) {
        reader.next();
        bytes += reader.getAttributeCount() == 0 ? 0 : reader.attributeValue(0).size();
    }
    EXPECT_EQ(reader.error(), "");
    EXPECT_EQ(bytes, 480'000'000u);
}

/// The least processor time of some runs, since other programs may run beside the test.
std::clock_t costOfReading(std::string const & document) {
    TemporaryFolder const folder;
    std::string const file = folder.file("x.xml", document);
    std::clock_t least = std::numeric_limits<std::clock_t>::max();
    for (int run = 0; run < 3; ++run) {
        std::clock_t const begin = std::clock();
        XmlReader reader(file);
        while (reader.hasNext()) {
            reader.next();
        }
        least = std::min(least, std::clock() - begin);
        EXPECT_EQ(reader.error(), "");
    }
    return least;
}

TEST(XmlReaderHostile, CostOfHugePiecesIsLinear) {
    auto const many = [](int count) {
        std::string text = "<a xmlns:p='u'";
        for (int i = 0; i < count / 100; ++i) {
            text += " p:k" + std::to_string(i) + "='1'";
        }
        return text + "/>";
    };
    std::function<std::string(int)> const documents[] = {
        [](int size) { return "<a k='" + std::string(size, 'x') + "'/>"; },
        [](int size) { return "<a><!--" + std::string(size, 'x') + "--></a>"; },
        [](int size) { return "<a><?p " + std::string(size, 'x') + "?></a>"; },
        [](int size) { return "<!DOCTYPE a [<!ENTITY e '" + std::string(size, 'x') + "'>]><a/>"; },
        [](int size) { return "<a>" + std::string(size, 'x') + "</a>"; },
        many,
    };
    for (auto const & document : documents) {
        std::clock_t const one = costOfReading(document(1'500'000));
        EXPECT_LT(costOfReading(document(6'000'000)), 9 * one) << document(10) << ": quadratic is 16 times";
    }
}

} // namespace
} // namespace HASP::tests
