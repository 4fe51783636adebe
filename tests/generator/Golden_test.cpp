#include "Definitions.h"
#include "write/Write.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace zelgen::test {
namespace {

namespace fs = std::filesystem;

fs::path goldenFolder() { return fs::path(ZEL_SOURCE_DIR) / "tests" / "golden"; }

std::string readFile(fs::path const & path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What the generator makes of the metamodel of the goldens now.
Files const & generated() {
    static Files const files = [] {
        std::string const definition = "machine.metamodel.yaml";
        return emitFiles(Application(readFile(goldenFolder() / definition), definition).family(), {});
    }();
    return files;
}

class Golden : public testing::TestWithParam<char const *> {};

TEST_P(Golden, IsWhatTheGeneratorMakes) {
    std::string const file = GetParam();
    std::string const & text = generated().at("machine/" + file);
    if (std::getenv("ZEL_UPDATE_GOLDENS") != nullptr) {
        std::ofstream(goldenFolder() / file, std::ios::binary) << text;
    }
    std::string const golden = readFile(goldenFolder() / file);
    auto const difference = std::mismatch(golden.begin(), golden.end(), text.begin(), text.end()).first;
    EXPECT_TRUE(golden == text)
        << "tests/golden/" << file << " differs at line " << 1 + std::count(golden.begin(), difference, '\n')
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
