#include "host/TemporaryFolder.h"
#include "support/ExpectRaises.h"
#include "support/Texts.h"

#include <ZEL/logging/HTMLLogFormatter.h>
#include <ZEL/logging/HTMLLogHandler.h>
#include <ZEL/logging/LogRecord.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/logging/Stringify.h>

#include <libvx/ObjectOutput.h>

#include <gmock/gmock.h>

#include <limits>
#include <locale>
#include <streambuf>

namespace ZEL::tests {
namespace {

namespace fs = std::filesystem;

struct HTMLLogHandlerTest : testing::Test {
    HTMLLogHandlerTest() { logger.setDefaultHandlerLevel(LogLevel::off); }
    ~HTMLLogHandlerTest() override { logger.setLevel(LogLevel::info); }

    [[nodiscard]] std::string path(std::string const & name) const { return folder.path(name); }
    [[nodiscard]] std::string content(std::string const & name) const { return folder.content(name); }
    /// A finished report with one message.
    void writeReport(std::string const & message) {
        HTMLLogHandler handler(path("x"));
        logger.addHandler(&handler, LogLevel::all);
        logger.info(message);
    }

    TemporaryFolder folder;
    Logger & logger = *Logger::instance();
};

/// Puts TIME in the place of each row's time.
std::string withoutTimes(std::string text) {
    constexpr std::string_view begin = "<td class='time'>";
    constexpr std::string_view form = "0000-Mmm-00 00:00:00.000000";
    for (auto at = text.find(begin); at != std::string::npos; at = text.find(begin, at + 1)) {
        EXPECT_EQ(form.size(), text.find("</td>", at) - at - begin.size());
        text.replace(at + begin.size(), form.size(), "TIME");
    }
    return text;
}

std::string const head = std::string(kPageStart) + R"html(FEN Logger Report </title>
<style type="text/css">
body {width:800px; font-size:10pt; font-family:Arial, Helvetica, Geneva, sans-serif;}
table {width:100%; margin-top:1px; margin-bottom:20px; border:1px lightgrey solid; border-collapse:collapse;}
tr.Start {color:blue;}
tr.End { color:blue;}
tr.Trace {color:gray;}
tr.Debug {color:gray;}
tr.Info {color:black;}
tr.Warning {color:darkred;}
tr.Error {color:red;}
tr.Fatal {color:red;}
th {text-align:left;}
td {text-align:left; border-top:1px lightgrey solid;}
td.level {font-size:smaller;}
td.time {font-size:smaller;}
</style>
<script type="text/javascript" language="JavaScript">
<!--
function initialize() {
}
function toggleCssDisplayNum(cssRuleNum) {
 var rule = getCssRuleByNum(cssRuleNum);
 toggleDisplay(rule);
})html"
                                                   "\t"
                                                   R"html(
function getCssRuleByNum(num) {
 var rules = getCssRules();
 return rules[num];
}
function getCssRules() {
 if (!document.styleSheets) return;
 var rules=new Array();
 if (document.styleSheets[0].cssRules) // netscape
  rules=document.styleSheets[0].cssRules;
 else if (document.styleSheets[0].rules) // ie
  rules=document.styleSheets[0].rules;
 return rules;
}
function toggleDisplay(el) {
 if ( el.style.display != 'none' )
  el.style.display = 'none';
 else
  el.style.display = '';
}
-->
</script>
</head>
<body  onload="initialize()">
<div  id='log'>
<table>
<tr><th>Level</th><th>Message</th><th>Time</th></tr>
)html";

constexpr char tail[] = "</table>\n</div>\n</body>\n</html>";

TEST_F(HTMLLogHandlerTest, WritesAReportRowByRow) {
    HTMLLogHandler handler(path("x"));
    EXPECT_EQ(head, content("x.html"));
    logger.addHandler(&handler, LogLevel::info);
    logger.debug("too fine");
    logger.warning("<b>%s</b>", "as it is");
    std::string const row = "<tr class='Warning'><td class='level'>Warning</td><td class='message'><b>as it "
                            "is</b></td><td class='time'>TIME</td></tr>\n";
    EXPECT_EQ(head + row, withoutTimes(content("x.html"))) << "at once";
    handler.close();
    handler.close();
    EXPECT_EQ(head + row + tail, withoutTimes(content("x.html")));
    logger.error("lost");
    EXPECT_EQ(head + row + tail, withoutTimes(content("x.html")));
}

TEST_F(HTMLLogHandlerTest, EndsTheReportWhenItDiesAndKeepsOneEarlierReport) {
    writeReport("first");
    fs::permissions(path("x.html"), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_FALSE(fs::exists(path("x.bak.html")));
    for (auto const & [now, before] : {std::pair("second", "first"), std::pair("third", "second")}) {
        writeReport(now);
        EXPECT_THAT(content("x.html"), testing::AllOf(testing::HasSubstr(now), testing::EndsWith(tail)));
        EXPECT_THAT(content("x.bak.html"), testing::HasSubstr(before));
        EXPECT_EQ(fs::status(path("x.html")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    }
    EXPECT_EQ(2, std::distance(fs::directory_iterator(folder.path("")), fs::directory_iterator()));
}

TEST_F(HTMLLogHandlerTest, TakesTheFileOfAnOpenReportOfTheSameName) {
    HTMLLogHandler first(path("x"));
    HTMLLogHandler second(path("x"));
    first._output("row of the first");
    EXPECT_THAT(content("x.bak.html"), testing::HasSubstr("row of the first"));
    EXPECT_EQ(head, content("x.html"));
}

TEST_F(HTMLLogHandlerTest, TellsWhyAReportCannotBeMade) {
    auto const failureOf = [](std::string const & name) {
        return raisedText([&] { HTMLLogHandler const handler(name); });
    };
    EXPECT_EQ("Cannot create output log file: " + path("no/x") + ".html", failureOf(path("no/x")));
    // A folder that is not empty stands where the backup has to go.
    fs::create_directories(path("x.bak.html") + "/inside");
    std::string const failure = failureOf(path("x"));
    EXPECT_THAT(failure,
                testing::StartsWith("Cannot create output log file: " + path("x.html") + "; error thrown on "));
    EXPECT_THAT(failure, testing::HasSubstr("x.bak.html"));
}

TEST(HTMLLogFormatter, MarksBeginningAndEnd) {
    HTMLLogFormatter formatter;
    LogRecord record;
    record.setLevel(LogLevel::info);
    EXPECT_THAT(formatter.format(record), testing::StartsWith("<tr class='Info'><td class='level'>Info</td>"));
    record.setTag(LogRecord::Start);
    EXPECT_THAT(formatter.format(record), testing::StartsWith("<tr class='Info Start'><td class='level'>Info</td>"));
    record.setTag(LogRecord::End);
    EXPECT_THAT(formatter.format(record), testing::StartsWith("<tr class='Info End'><td class='level'>Info</td>"));
}

TEST(HTMLLogFormatter, MakesAPlainRowOfWhatIsNoLogRecord) {
    struct Other : Quillon::System::Externalizable {
        void writeExternal(Quillon::System::ObjectOutput & out) const override { out.writeString("something"); }
    };
    EXPECT_EQ("<tr><td col=3>something</td></tr>", HTMLLogFormatter().format(Other()));
}

TEST(Stringify, PrintsAsAStreamDoesAndTellsWhenTheStreamFails) {
    EXPECT_EQ("2 0.1 1.23457e+06 -inf", stringify(2) + " " + stringify(0.1) + " " + stringify(1234567) + " " +
                                            stringify(-std::numeric_limits<double>::infinity()));

    struct Failing : std::num_put<char> {
        iter_type do_put(iter_type out, std::ios_base & /*stream*/, char /*fill*/, double /*value*/) const override {
            struct NoBuffer : std::streambuf {
            } noRoom;
            out = iter_type(&noRoom);
            *out = 'x'; // the iterator has failed now
            return out;
        }
    };
    std::locale const before = std::locale::global(std::locale(std::locale(), new Failing));
    std::string const text = raisedText([] { static_cast<void>(stringify(1)); });
    std::locale::global(before);
    EXPECT_EQ("bad conversion stringify(double)", text);
}

} // namespace
} // namespace ZEL::tests
