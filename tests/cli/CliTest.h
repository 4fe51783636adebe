#pragma once

#include "cli/RunZel.h"
#include "host/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>

namespace clitest {

constexpr char kLibrary[] = ZEL_SOURCE_DIR "/examples/tour/library.xmi";
constexpr char kTypes[] = ZEL_SOURCE_DIR "/examples/tour/library-types.xmi";

/// A folder with a copy of the example's two files.
class CliTest : public testing::Test {
protected:
    CliTest() {
        std::filesystem::copy(kLibrary, library);
        std::filesystem::copy(kTypes, types);
    }

    /// The library with the first `from` in it replaced.
    [[nodiscard]] std::string variant(std::string const & name, std::string const & from,
                                      std::string const & to) const {
        std::string text = folder.content("library.xmi");
        std::size_t const place = text.find(from);
        EXPECT_NE(place, std::string::npos) << from;
        return folder.file(name, text.replace(place, from.size(), to));
    }
    void make(std::string const & name, std::string const & content) const {
        static_cast<void>(folder.file(name, content));
    }
    [[nodiscard]] Outcome shell(std::string const & line) const { return runShell(line, folder.path("")); }
    /// Of the files that a write makes on the way.
    [[nodiscard]] bool hasLeftovers() const {
        auto const files = std::filesystem::directory_iterator(folder.path(""));
        return std::any_of(begin(files), end(files),
                           [](auto const & entry) { return entry.path().string().back() == '~'; });
    }

    TemporaryFolder folder;
    std::string const library = folder.path("library.xmi");
    std::string const types = folder.path("library-types.xmi");
};

/// One line of the program's on standard error, and exit code 2.
inline testing::Matcher<Outcome const &> isTrouble(testing::Matcher<std::string const &> const & error) {
    using testing::AllOf;
    using testing::Field;
    return AllOf(Field("exitCode", &Outcome::exitCode, 2),
                 Field("error", &Outcome::error,
                       AllOf(testing::MatchesRegex("zel: [^\n]*\n"), testing::Matcher<std::string const &>(error))));
}

inline void PrintTo(Outcome const & outcome, std::ostream * out) {
    *out << "exit code " << outcome.exitCode << "\nout: " << outcome.out << "\nerror: " << outcome.error;
}

} // namespace clitest
