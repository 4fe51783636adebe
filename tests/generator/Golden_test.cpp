#include "Definitions.h"
#include "write/Write.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace zelgen::tests {
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

// Of a class with each form of property, the files that differ by form; of a small one, those that are alike for all; and
// what becomes of derived properties and redefinitions. A header that is not here declares what the source beside it defines; the sources of
// handles and bodies only forward, which the tests of all classes show.
TEST(Golden, FilesAreWhatTheGeneratorMakes) {
    for (char const * const file :
         {"PartIntf.cpp", "PartDeviantImpl.cpp", "Tested.h", "TestedIntf.h", "TestedTables.cpp", "BenchIntf.cpp"}) {
        std::string const & text = generated().at(std::string("machine/") + file);
        if (std::getenv("ZEL_UPDATE_GOLDENS") != nullptr) {
            std::ofstream(goldenFolder() / file, std::ios::binary) << text;
        }
        std::string const golden = readFile(goldenFolder() / file);
        auto const [was, is] = std::mismatch(golden.begin(), golden.end(), text.begin(), text.end());
        EXPECT_TRUE(golden == text)
            << "tests/golden/" << file << " differs at line " << 1 + std::count(golden.begin(), was, '\n')
            << "\n  golden:    " << std::string(was, std::find(was, golden.end(), '\n'))
            << "\n  generated: " << std::string(is, std::find(is, text.end(), '\n'))
            << "\nIf the change is meant: ZEL_UPDATE_GOLDENS=1 ctest -L generator, and commit tests/golden.";
    }
}

std::vector<std::string> includesOf(std::string const & text) {
    std::vector<std::string> includes;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("#include", 0) == 0) {
            includes.push_back(line.substr(10, line.size() - 11));
        }
    }
    return includes;
}

TEST(Golden, NoFileIncludesAnotherTwiceOrWhatItsOwnHeaderIncludes) {
    for (auto const & [path, text] : generated()) {
        std::vector<std::string> const includes = includesOf(text);
        auto const own = generated().find(includes.empty() ? "" : includes.front());
        bool const isSource = path.find("_family_") == std::string::npos && path.back() == 'p';
        std::vector<std::string> const ofHeader =
            isSource && own != generated().end() ? includesOf(own->second) : std::vector<std::string>();
        std::set<std::string> known(ofHeader.begin(), ofHeader.end());
        for (std::string const & include : includes) {
            EXPECT_TRUE(known.insert(include).second) << path << " includes " << include;
        }
    }
}

} // namespace
} // namespace zelgen::tests
