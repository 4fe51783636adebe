// The commands that the pages show print what the pages say.

#include "cli/CliTest.h"
#include "support/Texts.h"

#include <cctype>
#include <filesystem>

namespace ZEL::tests::cli {
namespace {

/// Whether the text is as expected, where a line of "..." stands for any lines.
bool matches(std::string const & text, std::string const & expected) {
    std::string const gap = "\n...\n";
    std::size_t const place = expected.find(gap);
    if (place == std::string::npos) {
        return text == expected;
    }
    std::string const head = expected.substr(0, place + 1);
    std::string const tail = expected.substr(place + gap.size());
    return text.size() >= head.size() + tail.size() && text.starts_with(head) && text.ends_with(tail);
}

class Guide : public CliTest, public testing::WithParamInterface<char const *> {};

TEST_P(Guide, ShowsWhatTheCommandsPrint) {
    bool const isUpdate = std::getenv("ZEL_UPDATE_GOLDENS") != nullptr;
    std::string const page = std::string(ZEL_SOURCE_DIR "/") + GetParam();
    std::string updated; // the page with what the commands print now
    std::string command;
    std::string expected;
    int examples = 0;
    auto const endExample = [&] {
        std::string const printed = shell("exec 2>&1\n" + command).out;
        std::string const text = replaced(printed, folder.path(""), "/home/ada/models/");
        bool const isAsSaid = matches(text, expected);
        EXPECT_TRUE(isAsSaid || isUpdate) << page << ": " << command << "\nprints\n"
                                          << text << "in place of\n"
                                          << expected;
        updated += isAsSaid ? expected : text;
        command.clear();
        expected.clear();
        ++examples;
    };
    bool isConsole = false;
    std::ifstream in(page);
    for (std::string line; std::getline(in, line);) {
        bool const isCommand = isConsole && line.starts_with("$ ");
        bool const isFence = line.starts_with("```");
        if ((isCommand || isFence) && !command.empty()) {
            endExample();
        }
        // Further lines of a command, as a shell asks for them.
        if (isConsole && !command.empty() && expected.empty() && line.starts_with("> ")) {
            command += '\n' + line.substr(2);
            updated += line + '\n';
            continue;
        }
        (command.empty() ? updated : expected) += line + '\n';
        if (isCommand) {
            command = line.substr(2);
        } else if (isFence) {
            isConsole = line == "```console";
        }
    }
    EXPECT_GT(examples, 0);
    if (isUpdate) {
        std::ofstream(page) << updated;
    }
}

/// "OtherTools" of "docs/guide/other-tools.md".
std::string nameOf(testing::TestParamInfo<char const *> const & page) {
    std::string name;
    bool isFirst = true;
    for (char const c : std::filesystem::path(page.param).stem().string()) {
        if (c != '-') {
            name += static_cast<char>(isFirst ? std::toupper(c) : std::tolower(c));
        }
        isFirst = c == '-';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Pages, Guide,
                         testing::Values("README.md", "docs/guide/command-line.md", "docs/guide/other-tools.md",
                                         "docs/guide/version-control.md"),
                         nameOf);

} // namespace
} // namespace ZEL::tests::cli
