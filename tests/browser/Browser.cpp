#include "browser/Browser.h"

#include "host/TemporaryFolder.h"
#include "kernel/ZEL/tools/PageText.h"

#include <cstdlib>
#include <iomanip>
#include <sstream>

namespace ZEL::tests::browser {

bool isInstalled() { return std::system("command -v chromium >/dev/null") == 0; }

std::string complaintsOf(std::string const & page, std::string const & script, std::string const & facts) {
    TemporaryFolder const folder;
    auto const source = [](std::string const & name) {
        return "<script src=\"file://" ZEL_SOURCE_DIR "/tests/browser/" + name + "\"></script>\n";
    };
    std::string const call = "<script>answer(check, " + facts + ");</script>\n";
    std::string const text = replaced(page, "</body>", source(script) + call + "</body>");
    std::string const file = folder.file("page.html", replaced(text, "<title>", source("answer.js") + "<title>"));
    // The pages are the tests' own, and the sandbox is not to be had by root or in a container.
    std::string const command = "timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage"
                                " --no-first-run --virtual-time-budget=30000 --user-data-dir='" +
                                folder.path("profile") + "' --dump-dom 'file://" + file + "' >'" + folder.path("dom") +
                                "' 2>/dev/null";
    std::string const begin = "<pre id=\"answer\">";
    bool const hasRun = std::system(command.c_str()) == 0;
    std::string const answer = hasRun ? between(folder.content("dom"), begin, "</pre>") : "";
    return answer.empty() ? "no answer" : answer.substr(begin.size());
}

std::string quoted(std::string const & text) {
    std::ostringstream result;
    result << std::quoted(text);
    return result.str();
}

} // namespace ZEL::tests::browser
