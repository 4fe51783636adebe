// The commands that the pages show print what the pages say.

#include "cli/CliTest.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

using clitest::Outcome;

/// A command of a page and what it prints, in the lines from `begin` to before `end`.
struct Example {
    std::string command;
    std::string expected;
    std::size_t begin = 0;
    std::size_t end = 0;
};

std::vector<std::string> linesOf(std::string const & file) {
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Of the blocks that show a console.
std::vector<Example> examplesIn(std::vector<std::string> const & lines) {
    std::vector<Example> examples;
    bool isConsole = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].rfind("```", 0) == 0) {
            isConsole = lines[i] == "```console";
        } else if (isConsole && lines[i].rfind("$ ", 0) == 0) {
            examples.push_back({lines[i].substr(2), "", i + 1, i + 1});
        } else if (isConsole && !examples.empty()) {
            examples.back().expected += lines[i] + '\n';
            examples.back().end = i + 1;
        }
    }
    return examples;
}

std::string replaced(std::string text, std::string const & from, std::string const & to) {
    for (std::size_t place = text.find(from); place != std::string::npos; place = text.find(from, place + to.size())) {
        text.replace(place, from.size(), to);
    }
    return text;
}

/// Whether the text is as expected, where a line of "..." stands for any lines.
bool matches(std::string const & text, std::string const & expected) {
    std::string const gap = "...\n";
    std::size_t const place = expected.rfind("\n" + gap);
    if (place == std::string::npos) {
        return text == expected;
    }
    std::string const head = expected.substr(0, place + 1);
    std::string const tail = expected.substr(place + 1 + gap.size());
    return text.size() >= head.size() + tail.size() && text.rfind(head, 0) == 0 &&
           text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

/// Puts what the commands print now into the page.
void rewrite(std::string const & page, std::vector<std::string> lines, std::vector<Example> const & examples) {
    for (auto example = examples.rbegin(); example != examples.rend(); ++example) {
        std::istringstream text(example->expected);
        std::vector<std::string> now;
        for (std::string line; std::getline(text, line);) {
            now.push_back(line);
        }
        auto const begin = lines.begin() + static_cast<std::ptrdiff_t>(example->begin);
        lines.insert(lines.erase(begin, lines.begin() + static_cast<std::ptrdiff_t>(example->end)), now.begin(),
                     now.end());
    }
    std::ofstream out(page);
    for (std::string const & line : lines) {
        out << line << '\n';
    }
}

class Guide : public clitest::CliTest, public testing::WithParamInterface<char const *> {};

TEST_P(Guide, ShowsWhatTheCommandsPrint) {
    std::string const page = std::string(ZEL_SOURCE_DIR "/") + GetParam();
    std::vector<std::string> const lines = linesOf(page);
    std::vector<Example> examples = examplesIn(lines);
    ASSERT_FALSE(examples.empty());
    bool const isUpdate = std::getenv("ZEL_UPDATE_GOLDENS") != nullptr;
    for (Example & example : examples) {
        Outcome const run = shell("exec 2>&1\n" + example.command);
        std::string const text = replaced(run.out, folder.path(""), "/home/ada/models/");
        if (!matches(text, example.expected)) {
            EXPECT_TRUE(isUpdate) << page << ':' << example.begin << ": " << example.command << "\nprints\n"
                                  << text << "in place of\n"
                                  << example.expected;
            example.expected = text;
        }
    }
    if (isUpdate) {
        rewrite(page, lines, examples);
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, Guide, testing::Values("README.md", "docs/guide/command-line.md"),
                         [](auto const & page) { return page.index == 0 ? "Readme" : "CommandLine"; });

} // namespace
