// What a reader sees of the library's pages.

#include "host/TemporaryFolder.h"
#include "support/Texts.h"

#include <ZEL/ZEL.h>
#include <ZEL/logging/DefaultLogHandler.h>
#include <ZEL/logging/LogRecord.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace ZEL::tests::browser {
namespace {

using testing::HasSubstr;

/// Whether there is a browser to test with.
bool isInstalled() { return std::system("command -v chromium >/dev/null") == 0; }

/// Opens a copy of the page in a browser, and runs a script of this folder in it when it is loaded. `facts` is what the
/// script is to find, as an object of JavaScript. Returns the complaints of the script, and the errors of the page's own
/// scripts, a line each; "no answer" if the browser returned none.
std::string complaintsOf(std::string const & page, std::string const & script, std::string const & facts) {
    TemporaryFolder const folder;
    auto const source = [](std::string const & name) {
        return "<script src=\"file://" ZEL_SOURCE_DIR "/tests/browser/" + name + "\"></script>\n";
    };
    std::string const call = "<script>answer(check, " + facts + ");</script>\n";
    std::string const text = replaced(page, "</body>", source(script) + call + "</body>");
    std::string const file = folder.file("page.html", replaced(text, "<title>", source("answer.js") + "<title>"));
    // The pages are the tests' own; the sandbox does not work for root or in a container.
    std::string const command = "timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage"
                                " --no-first-run --virtual-time-budget=30000 --user-data-dir='" +
                                folder.path("profile") + "' --dump-dom 'file://" + file + "' >'" + folder.path("dom") +
                                "' 2>/dev/null";
    std::string const begin = "<pre id=\"answer\">";
    bool const hasRun = std::system(command.c_str()) == 0;
    std::string const answer = hasRun ? between(folder.content("dom"), begin, "</pre>") : "";
    return answer.empty() ? "no answer" : answer.substr(begin.size());
}

/// The text as a string of JavaScript.
std::string quoted(std::string const & text) {
    std::ostringstream result;
    result << std::quoted(text);
    return result.str();
}

class Pages : public testing::Test {
protected:
    Pages() { Logger::instance()->setDefaultHandlerLevel(LogLevel::off); }
    void SetUp() override {
        if (!isInstalled()) {
            GTEST_SKIP() << "there is no browser: chromium is not installed";
        }
    }

    std::string report(ImmutableClassObject const & object) {
        util::HTMLPrinter().print(object, folder.path("report"));
        return folder.content("report.html");
    }

    TemporaryFolder folder;
};

/// The heading that each object in a tree should have, by the id to which its links should lead.
std::map<std::string, std::string> headingsOf(ImmutableClassObject const & root) {
    std::map<std::string, std::string> headings;
    for (ImmutableClassObject const & object : objectsIn(root)) {
        ImmutableNamedElement const named(object);
        std::string const name = named.isValid() && named.hasName() ? named.getName().str() : "unnamed";
        headings["ID" + object.getSiid().str()] = object.getMetaClass().getName().str() + " " + name;
        // A model's factory is held by it, and is in no container.
        if (ImmutableModel const model(object); model.isValid()) {
            headings["ID" + model.getFactory().getSiid().str()] = "Factory unnamed";
        }
    }
    return headings;
}

std::string reportFacts(std::map<std::string, std::string> const & headings, int links, int outside) {
    std::string text = "{headings: {";
    for (auto const & [id, heading] : headings) {
        text += quoted(id) + ": " + quoted(heading) + ",\n";
    }
    return text + "}, links: " + std::to_string(links) + ", outside: " + std::to_string(outside) + "}";
}

TEST_F(Pages, AReportShowsWhatIsTickedAndItsLinksLeadToTheirObjects) {
    // Links lead into a second file, whose objects have the same numbers, and into the metamodel.
    Serializer::XmiReader reader;
    Model const model(reader.read(ZEL_SOURCE_DIR "/examples/tour/library.xmi"));
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ("", complaintsOf(report(model), "report.js", reportFacts(headingsOf(model), 1000, 50)));
}

/// The page with the first `from` in it replaced.
std::string changed(std::string page, std::string const & from, std::string const & to) {
    std::size_t const at = page.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? page : page.replace(at, from.size(), to);
}

TEST_F(Pages, AReportWithAFaultIsSeenToHaveIt) {
    MetaModel const model = Factory::createNewModel();
    Factory const factory = model.getFactoryFactory();
    model.beginTransaction();
    model.setUuidBase("u");
    Package const package = factory.createPackage(String("p"));
    for (char const * const name : {"C3", "C4"}) {
        Class const made = factory.createClass();
        made.setName(name);
        package.getPackagedElements().push_back(made);
    }
    std::string const page = report(package);
    std::string const facts = reportFacts({{"IDu_2", "Package p"}, {"IDu_3", "Class C3"}, {"IDu_4", "Class C4"}}, 2, 1);
    EXPECT_EQ("", complaintsOf(page, "report.js", facts));
    std::tuple<char const *, char const *, char const *> const faults[] = {
        {"toggleCssDisplayNum(7)", "toggleCssDisplayNum(6)", "with error ticked, a row"},
        {"div.uml tr.property {}", "div.uml tr.property {} p {}", "with error ticked, a row"},
        {"tr.derived {background-color:ghostwhite; display:none;", "tr.derived {", "at first, a row"},
        {"el.style.display = '';", "el.style.display = 'none';", "with derived ticked, a row"},
        {"function initialize() {", "function initialize() { return nothing;", "script error"},
        {R"(<div id="IDu_4">)", R"(<div id="IDu_3">)", "places for links to IDu_3: found 2"},
        {R"(<div id="IDu_4">)", R"(<div id="IDu_40">)", "places for links to IDu_4: found 0"},
        {R"(<a href="#IDu_4">)", R"(<a href="#IDu_3">)", "link to IDu_3: found Class C4"},
        {"Class C4</h1>", "Class C3</h1>", "landing at IDu_4: found Class C3"},
        {"Display control:", R"(<span id="IDu"></span>)", "places for links to IDu: found 1"},
    };
    for (auto const & [from, to, complaint] : faults) {
        EXPECT_THAT(complaintsOf(changed(page, from, to), "report.js", facts), HasSubstr(complaint)) << to;
    }
}

TEST_F(Pages, ALogHasTheColoursOfItsLevels) {
    constexpr auto plain = static_cast<LogRecord::Tag>(0);
    std::tuple<LogLevel::Setting, LogRecord::Tag, char const *, char const *> const rows[] = {
        {LogLevel::trace, plain, "Trace", "rgb(128, 128, 128)"},
        {LogLevel::debug, plain, "Debug", "rgb(128, 128, 128)"},
        {LogLevel::info, plain, "Info", "rgb(0, 0, 0)"},
        {LogLevel::warning, plain, "Warning", "rgb(139, 0, 0)"},
        {LogLevel::error, plain, "Error", "rgb(255, 0, 0)"},
        {LogLevel::fatal, plain, "Fatal", "rgb(255, 0, 0)"},
        {LogLevel::off, LogRecord::Start, "Off Start", "rgb(0, 0, 255)"},
        {LogLevel::off, LogRecord::End, "Off End", "rgb(0, 0, 255)"},
    };
    HTMLLogHandler handler(folder.path("log"));
    std::string facts;
    for (auto const & [level, tag, rowClass, colour] : rows) {
        LogRecord record;
        record.setLevel(level);
        record.setTag(tag);
        record.setMessage("a <b>message</b>");
        handler._publish(LogLevel(level), record);
        facts += "[" + quoted(rowClass) + ", " + quoted(colour) + "],\n";
    }
    handler.close();
    facts = "{rows: [" + facts + "]}";
    std::string const page = folder.content("log.html");
    EXPECT_EQ("", complaintsOf(page, "log.js", facts));
    EXPECT_THAT(complaintsOf(changed(page, "tr.Warning {color:darkred;}", "tr.Warning {color:red;}"), "log.js", facts),
                HasSubstr("colour of level in Warning: found rgb(255, 0, 0)"));
    EXPECT_THAT(complaintsOf(changed(page, "return rules[num];", "return rules[num + 1];"), "log.js", facts),
                HasSubstr("with Trace hidden"));
}

} // namespace
} // namespace ZEL::tests::browser
