#include "Definitions.h"
#include "write/Write.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zelgen::test {
namespace {

namespace fs = std::filesystem;

fs::path goldenFolder() { return fs::path(ZEL_SOURCE_DIR) / "tests" / "golden"; }

std::string readFile(fs::path const & path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

bool isToRefresh() { return std::getenv("ZEL_UPDATE_GOLDENS") != nullptr; }

/// What the generator makes of the metamodel of the goldens now.
Files const & generated() {
    static Files const files = [] {
        std::string const definition = "machine.metamodel.yaml";
        return emitFiles(Application(readFile(goldenFolder() / definition), definition).family(), {});
    }();
    return files;
}

/// Line, old and new text of the first difference.
std::string firstDifference(std::string const & expected, std::string const & actual) {
    std::istringstream left(expected);
    std::istringstream right(actual);
    std::string a;
    std::string b;
    for (int line = 1;; ++line) {
        bool const hasLeft = static_cast<bool>(std::getline(left, a));
        bool const hasRight = static_cast<bool>(std::getline(right, b));
        if (!hasLeft && !hasRight) {
            return "";
        }
        if (a != b || hasLeft != hasRight) {
            return "line " + std::to_string(line) + "\n  golden:    " + (hasLeft ? a : "(end)") +
                   "\n  generated: " + (hasRight ? b : "(end)");
        }
    }
}

class Golden : public testing::TestWithParam<char const *> {};

TEST_P(Golden, IsWhatTheGeneratorMakes) {
    std::string const file = GetParam();
    std::string const & text = generated().at("machine/" + file);
    if (isToRefresh()) {
        std::ofstream(goldenFolder() / file, std::ios::binary) << text;
    }
    std::string const golden = readFile(goldenFolder() / file);
    EXPECT_TRUE(golden == text)
        << "tests/golden/" << file << " differs at " << firstDifference(golden, text)
        << "\nIf the change is meant: ZEL_UPDATE_GOLDENS=1 ctest -L generator, and commit tests/golden.";
}

// Of a class with each form of property what differs by form; of a small one what is alike; and what becomes of derived
// properties and redefinitions. A header that is not here declares what the source beside it defines.
INSTANTIATE_TEST_SUITE_P(Files, Golden,
                         testing::Values("PartIntf.h", "PartIntf.cpp", "PartImpl.cpp", "PartDeviantImpl.h",
                                         "PartDeviantImpl.cpp", "Tested.h", "Tested.cpp", "TestedTables.cpp",
                                         "BenchIntf.cpp"),
                         [](auto const & info) {
                             std::string const file = info.param;
                             return file.substr(0, file.find('.')) + (file.back() == 'h' ? "Header" : "Source");
                         });

} // namespace
} // namespace zelgen::test
