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

bool isToRefresh() { return std::getenv("ZEL_REFRESH_GOLDENS") != nullptr; }

/// What the generator makes of the built-in metamodel now.
Files const & generated() {
    static Files const files = [] {
        WriteOptions options;
        options.exportMacro = "ZEL_API";
        return emitFiles(builtInFamily(), options);
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
    std::string const name = GetParam();
    for (char const * suffix :
         {".h", ".cpp", "Intf.h", "Intf.cpp", "Impl.h", "Impl.cpp", "DeviantImpl.h", "DeviantImpl.cpp", "Tables.cpp"}) {
        std::string const file = name + suffix;
        std::string const & text = generated().at("ZEL/metamodel/" + file);
        if (isToRefresh()) {
            std::ofstream(goldenFolder() / file, std::ios::binary) << text;
        }
        std::string const golden = readFile(goldenFolder() / file);
        EXPECT_TRUE(golden == text)
            << "tests/golden/" << file << " differs at " << firstDifference(golden, text)
            << "\nIf the change is meant: ZEL_REFRESH_GOLDENS=1 ctest -L generator, and commit tests/golden.";
    }
}

// The smallest class, the fullest, one of two bases with redefinitions, and the one that is model and class.
INSTANTIATE_TEST_SUITE_P(Classes, Golden, testing::Values("Comment", "Property", "Operation", "MetaModel"),
                         [](auto const & info) { return std::string(info.param); });

} // namespace
} // namespace zelgen::test
