#include "browser/Browser.h"

#include "host/TemporaryFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace browsertest {

namespace {

constexpr char kAnswerBegin[] = "<pre id=\"answer\">";
constexpr char kAnswerEnd[] = "</pre>";

std::string findBrowser() {
    char const * const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string const program = folder + "/chromium";
        if (std::error_code ignored; std::filesystem::exists(program, ignored)) {
            return program;
        }
    }
    return {};
}

std::string sourceOf(std::string const & script) {
    std::ifstream in(ZEL_SOURCE_DIR "/tests/browser/" + script);
    if (!in) {
        throw std::runtime_error("cannot read " + script);
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

void insert(std::string & page, std::string const & place, std::string const & script) {
    std::size_t const at = page.find(place);
    if (at == std::string::npos) {
        throw std::runtime_error("the page has no " + place);
    }
    page.insert(at, "<script type=\"text/javascript\">\n" + script + "</script>\n");
}

std::string outputOf(std::string const & command) {
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> const pipe(::popen(command.c_str(), "r"), ::pclose);
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }
    std::string output;
    char buffer[4096];
    for (std::size_t size = 0; (size = std::fread(buffer, 1, sizeof buffer, pipe.get())) > 0;) {
        output.append(buffer, size);
    }
    return output;
}

} // namespace

bool isInstalled() { return !findBrowser().empty(); }

std::string complaintsOf(std::string const & page, std::string const & script, std::string const & facts) {
    TemporaryFolder const folder;
    std::string text = page;
    insert(text, "</body>", sourceOf(script) + "answer(check, " + facts + ");\n");
    insert(text, "<title>", sourceOf("answer.js"));
    std::string const file = folder.file("page.html", text);
    // The pages are the tests' own, and the sandbox is not to be had by root or in a container.
    std::string const dom = outputOf("timeout 120 '" + findBrowser() +
                                     "' --headless --no-sandbox --disable-gpu --disable-dev-shm-usage --no-first-run"
                                     " --virtual-time-budget=30000 --user-data-dir='" +
                                     folder.path("profile") + "' --dump-dom 'file://" + file + "' 2>/dev/null");
    std::size_t const begin = dom.find(kAnswerBegin);
    std::size_t const end = dom.find(kAnswerEnd, begin);
    if (begin == std::string::npos || end == std::string::npos) {
        return "no answer";
    }
    std::size_t const from = begin + sizeof kAnswerBegin - 1;
    return dom.substr(from, end - from);
}

std::string quoted(std::string const & text) {
    std::string result = "\"";
    for (char const character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + '"';
}

} // namespace browsertest
