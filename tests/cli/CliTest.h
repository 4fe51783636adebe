#pragma once

#include "host/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <sys/types.h>

#include <cstddef>

namespace ZEL::tests::cli {

/// What a run of the program leaves behind.
struct Outcome {
    int exitCode = -1; ///< minus the signal's number if the program was ended by one
    std::string out;
    std::string error;
};

/// Runs a line of the shell in a folder; `zel` is the program there.
[[nodiscard]] Outcome runShell(std::string const & line, std::string const & folder);

/// A run whose standard error is a terminal, while it goes on.
class LiveRun {
public:
    LiveRun(std::string const & command, std::string const & folder);
    ~LiveRun();
    LiveRun(LiveRun const &) = delete;
    LiveRun & operator=(LiveRun const &) = delete;

    /// Waits until the terminal has been sent the text, or the program has ended. Returns all that was sent.
    std::string const & waitFor(std::string const & text);
    void send(int signal) const;
    /// Waits for the end, and returns the exit code and, as the error, all that the terminal was sent.
    [[nodiscard]] Outcome finish();

private:
    int fTerminal = -1;
    pid_t fProcess = 0;
    std::string fSent;
};

constexpr char kLibrary[] = ZEL_SOURCE_DIR "/examples/tour/library.xmi";
constexpr char kTypes[] = ZEL_SOURCE_DIR "/examples/tour/library-types.xmi";

/// A folder with a copy of the example's two files.
class CliTest : public testing::Test {
protected:
    CliTest() {
        std::filesystem::copy(kLibrary, folder.path("library.xmi"));
        std::filesystem::copy(kTypes, folder.path("library-types.xmi"));
    }

    /// Makes a file of the library with the first `from` in it replaced.
    void makeVariant(std::string const & name, std::string const & from, std::string const & to) const {
        std::string text = folder.content("library.xmi");
        std::size_t const place = text.find(from);
        ASSERT_NE(place, std::string::npos) << from;
        make(name, text.replace(place, from.size(), to));
    }
    void make(std::string const & name, std::string const & content) const {
        static_cast<void>(folder.file(name, content));
    }
    [[nodiscard]] bool exists(std::string const & name) const { return std::filesystem::exists(folder.path(name)); }
    [[nodiscard]] Outcome shell(std::string const & line) const { return runShell(line, folder.path("")); }
    /// Whether there are files left that a write makes on its way.
    [[nodiscard]] bool hasLeftovers() const { return shell("ls *~").exitCode == 0; }

    TemporaryFolder folder;
};

using Text = testing::Matcher<std::string const &>;

inline testing::Matcher<Outcome const &> ends(int exitCode, Text const & out, Text const & error = "") {
    return testing::AllOf(testing::Field("exitCode", &Outcome::exitCode, exitCode),
                          testing::Field("out", &Outcome::out, out), testing::Field("error", &Outcome::error, error));
}

/// Success, and nothing on standard error.
inline testing::Matcher<Outcome const &> isResult(Text const & out) { return ends(0, out); }

/// One line of the program's on standard error and nothing else, and exit code 2.
inline testing::Matcher<Outcome const &> isTrouble(Text const & error) {
    return ends(2, "", testing::AllOf(testing::MatchesRegex("zel: [^\n]*\n"), error));
}

inline void PrintTo(Outcome const & outcome, std::ostream * out) {
    *out << "exit code " << outcome.exitCode << "\nout: " << outcome.out << "\nerror: " << outcome.error;
}

} // namespace ZEL::tests::cli
