#include "host/TemporaryFolder.h"

#include <hasp_util/XmlReader.h>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using HASP::XmlReader;
using HASP::XmlReaderSettings;
using testing::HasSubstr;
using testing::Not;

struct Totals {
    std::size_t events = 0;
    std::size_t bytes = 0; ///< of texts and attributes
    std::string text;
    std::string error;
    HASP::Location place{"", 0, 0};
};

Totals drain(std::string const & file, XmlReaderSettings const & settings = {}) {
    XmlReader reader(file, settings);
    Totals totals;
    while (reader.hasNext()) {
        reader.next();
        ++totals.events;
        totals.bytes += reader.getText().size();
        totals.text = totals.text.size() < 100 ? totals.text + std::string(reader.getText()) : totals.text;
        for (XmlReader::Attribute const & attribute : reader.attributes()) {
            totals.bytes += attribute.value.size();
        }
    }
    totals.error = reader.error();
    totals.place = reader.getLocation();
    return totals;
}

Totals drainText(std::string_view document, XmlReaderSettings const & settings = {}) {
    TemporaryFolder const folder;
    return drain(folder.file("x.xml", document), settings);
}

TEST(XmlReaderHostile, OpensPlainFilesOnly) {
    TemporaryFolder const folder;
    std::string const pipe = folder.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(drain(pipe).error, "cannot open '" + pipe + "': not a plain file");
    EXPECT_EQ(drain("/dev/zero").error, "cannot open '/dev/zero': not a plain file");
    EXPECT_EQ(drain(folder.path("")).error, "cannot open '" + folder.path("") + "': not a plain file");
    Totals const missing = drain(folder.path("none"));
    EXPECT_EQ(missing.error, "cannot open '" + folder.path("none") + "': No such file or directory");
    EXPECT_EQ(missing.place.getSystemId(), folder.path("none"));
    EXPECT_NE(drain("").error, "");
    EXPECT_THAT(drain(std::string("a\0b", 3)).error, HasSubstr("zero byte"));
    EXPECT_NE(drain(folder.file("empty", "")).error, "");

    std::filesystem::create_symlink(folder.file("a.xml", "<a/>"), folder.path("link"));
    EXPECT_EQ(drain(folder.path("link")).error, "");
}

TEST(XmlReaderHostile, NeverOpensAnythingElse) {
    TemporaryFolder const folder;
    std::string const secret = folder.file("secret", "<!ENTITY s 'secret'>");
    struct Row {
        std::string document;
        std::string error;
    };
    std::vector<Row> const rows{
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
    };
    for (Row const & row : rows) {
        Totals const totals = drainText(row.document);
        EXPECT_EQ(totals.error, row.error);
        EXPECT_THAT(totals.text, Not(HasSubstr("secret")));
        EXPECT_EQ(totals.place.getLineNumber(), 2u) << row.error;
    }
    // A declaration that nothing refers to does no harm.
    EXPECT_EQ(drainText("<!DOCTYPE r [<!ENTITY ee SYSTEM 'http://h/x'>]><r/>").error, "");
}

TEST(XmlReaderHostile, ExpandsEntitiesOfTheDocument) {
    EXPECT_EQ(drainText("<!DOCTYPE r [<!ENTITY a 'x'><!ENTITY b '&a;&a;'>]><r>&b;<![CDATA[&b;]]></r>").text, "xx&b;");
    EXPECT_EQ(drainText("<!DOCTYPE r [<!ENTITY % d \"<!ENTITY a 'x'>\">%d;]><r>&a;</r>").text, "x");
    EXPECT_EQ(drainText("<!DOCTYPE r [<!ATTLIST r k CDATA 'dflt'>]><r/>").bytes, 4u);
    EXPECT_EQ(drainText("<!DOCTYPE r [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><r>&a;</r>").error,
              "recursive entity reference");
}

TEST(XmlReaderHostile, StopsEntityBombs) {
    std::string laughs = "<!DOCTYPE r [<!ENTITY e0 'lol'>";
    for (int i = 1; i < 12; ++i) {
        std::string const inner = "&e" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) {
            laughs += inner;
        }
        laughs += "'>";
    }
    std::string quadratic = "<!DOCTYPE r [<!ENTITY a '" + std::string(100'000, 'B') + "'>]>\n<r>";
    for (int i = 0; i < 20'000; ++i) {
        quadratic += "&a;";
    }
    for (std::string const & bomb : {laughs + "]>\n<r>&e11;</r>", laughs + "]>\n<r k='&e11;'/>", quadratic + "</r>"}) {
        Totals const totals = drainText(bomb);
        EXPECT_THAT(totals.error, HasSubstr("amplification"));
        EXPECT_EQ(totals.place.getLineNumber(), 2u);
        EXPECT_LT(totals.bytes, 40'000'000u);
    }
    XmlReaderSettings strict;
    strict.setAmplificationLimit(2, 1000);
    std::string const modest = "<!DOCTYPE r [<!ENTITY a '" + std::string(500, 'B') + "'>]><r>&a;&a;&a;&a;&a;&a;</r>";
    EXPECT_THAT(drainText(modest, strict).error, HasSubstr("amplification"));
    EXPECT_EQ(drainText(modest).error, "");
}

TEST(XmlReaderHostile, PausesWhenLittleInputMakesMuch) {
    // Each of the elements gets the long default: some 2 GB would wait at once if a piece of the file were parsed
    // whole.
    std::string document = "<!DOCTYPE r [<!ATTLIST e k CDATA '" + std::string(30'000, 'x') + "'>]><r>";
    for (int i = 0; i < 16'000; ++i) {
        document += "<e/>";
    }
    Totals const totals = drainText(document + "</r>");
    EXPECT_EQ(totals.error, "");
    EXPECT_EQ(totals.events, 32'002u);
    EXPECT_EQ(totals.bytes, 480'000'000u);
}

TEST(XmlReaderHostile, CostOfHugePiecesIsLinear) {
    auto const seconds = [](std::string const & document) {
        TemporaryFolder const folder;
        std::string const file = folder.file("x.xml", document);
        auto const begin = std::chrono::steady_clock::now();
        EXPECT_EQ(drain(file).error, "");
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    // Quadratic cost would take minutes.
    EXPECT_LT(seconds("<a k='" + std::string(20'000'000, 'x') + "'/>"), 20);
    EXPECT_LT(seconds("<a>" + std::string(20'000'000, 'x') + "</a>"), 20);
    std::string many = "<a xmlns:p='u'";
    for (int i = 0; i < 100'000; ++i) {
        many += " p:k" + std::to_string(i) + "='1'";
    }
    EXPECT_LT(seconds(many + "/>"), 20);
}

} // namespace
