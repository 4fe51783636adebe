#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

fs::path const sourceDir{ZEL_SOURCE_DIR};

/// The layers from the lowest to the highest. Each may include those below it, but for the pairs that follow.
std::vector<std::string> const layerOrder{"host",      "base",       "values", "logging", "sequences",   "deviants",
                                          "metamodel", "serializer", "tools",  "startup", "interchange", "cli"};
std::set<std::pair<std::string, std::string>> const strangers{
    {"sequences", "logging"}, {"tools", "serializer"}, {"interchange", "host"}, {"cli", "host"}};

/// Files of layers that go by folders, as they are included.
std::vector<std::pair<std::string, std::string>> const layersOfFolders{
    {"ZEL/sequences/", "sequences"},
    {"ZEL/metamodel/", "metamodel"},
    {"ZEL/serializer/", "serializer"},
    {"ZEL/tools/", "tools"},
    {"ZEL/interchange/", "interchange"},
    {"hasp_util/", "host"},
    {"libvx/", "host"},
    {"orca_factory/", "host"},
    {"cli/", "cli"},
    {"generator/", "generator"},
};

/// The root of all classes, and the interfaces whose virtual operations lower layers call.
std::set<std::string> const openToAll{
    "ZEL/metamodel/Object.h",          "ZEL/metamodel/ObjectHandle.h", "ZEL/metamodel/ObjectIntf.h",
    "ZEL/metamodel/ClassObjectIntf.h", "ZEL/metamodel/ModelIntf.h",
};

/// The layers of the files directly in a folder, by the `# layer NAME: ...` comments of its CMake file.
using Index = std::map<std::string, std::string>;

Index readIndex(std::istream && cmakeFile) {
    static std::regex const mark("# layer (.*?):.*");
    static std::regex const file("[^ ()]+\\.(h|cpp)");
    Index layers;
    std::string layer;
    for (std::string line; std::getline(cmakeFile, line);) {
        if (std::smatch match; std::regex_match(line, match, mark)) {
            layer = match[1];
        } else if (!line.starts_with('#')) {
            for (std::sregex_iterator word(line.begin(), line.end(), file); word != std::sregex_iterator(); ++word) {
                layers[word->str()] = layer;
            }
        }
    }
    return layers;
}

Index readIndex(fs::path const & folder) { return readIndex(std::ifstream{sourceDir / folder / "CMakeLists.txt"}); }

/// The layer of a file by its path below the include roots, as in `ZEL/sequences/Sequence.h`; empty if the file belongs
/// to no layer of the project.
std::string layerOf(std::string const & path, Index const & kernelIndex) {
    for (auto const & [folder, layer] : layersOfFolders) {
        if (path.starts_with(folder)) {
            return layer;
        }
    }
    if (path.starts_with("ZEL/")) {
        auto const found = kernelIndex.find(path.substr(4));
        return found == kernelIndex.end() ? "(not in the index)" : found->second;
    }
    return {};
}

bool mayInclude(std::string const & layer, std::string const & other) {
    auto const from = std::find(layerOrder.begin(), layerOrder.end(), layer);
    return layer == other ||
           (std::find(layerOrder.begin(), from, other) != from && strangers.count({layer, other}) == 0);
}

/// One line `place:line: ...` per include of `text` that its layer does not allow.
std::vector<std::string> violations(std::string const & place, std::string const & layer, std::istream && text,
                                    Index const & kernelIndex) {
    static std::regex const include("#include [<\"](.*)[>\"].*");
    std::vector<std::string> found;
    int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        if (std::smatch match; std::regex_match(line, match, include)) {
            std::string const header = match[1];
            std::string const target = layerOf(header, kernelIndex);
            if (!target.empty() && openToAll.count(header) == 0 && !mayInclude(layer, target)) {
                found.push_back(place + ":" + std::to_string(number) + ": layer " + layer + " includes <" + header +
                                "> of layer " + target);
            }
        }
    }
    return found;
}

/// All headers and sources below a folder of the project, as paths below that folder.
std::set<std::string> codeBelow(fs::path const & folder) {
    std::set<std::string> files;
    for (auto const & entry : fs::recursive_directory_iterator{sourceDir / folder}) {
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
            files.insert(entry.path().lexically_relative(sourceDir / folder).generic_string());
        }
    }
    return files;
}

TEST(Layering, IncludesPointDownwards) {
    Index const kernelIndex = readIndex("kernel/ZEL");
    std::size_t seen = 0;
    for (std::string const folder : {"host", "kernel", "interchange", "cli"}) {
        for (auto const & file : codeBelow(folder)) {
            ++seen;
            std::string const place = folder + "/" + file;
            std::string const layer = layerOf(folder == "cli" ? place : file, kernelIndex);
            EXPECT_EQ(std::count(layerOrder.begin(), layerOrder.end(), layer), 1)
                << place << ":1: layer '" << layer << "' is unknown";
            for (auto const & violation : violations(place, layer, std::ifstream{sourceDir / place}, kernelIndex)) {
                ADD_FAILURE() << violation;
            }
        }
    }
    EXPECT_GT(seen, 0U);
}

TEST(Layering, EveryFileStandsInTheIndexOfItsFolder) {
    for (auto const & file : codeBelow("kernel/ZEL")) {
        fs::path const path = fs::path{"kernel/ZEL"} / file;
        EXPECT_TRUE(readIndex(path.parent_path()).count(path.filename().string()))
            << path.generic_string() << ":1: is missing in " << path.parent_path().generic_string()
            << "/CMakeLists.txt";
    }
}

TEST(Layering, AnUpwardIncludeIsReportedWithItsPlace) {
    Index const index =
        readIndex(std::istringstream{"# layer base: counting\n"
                                     "target_sources(zel PRIVATE Low.cpp\n    PUBLIC FILE_SET HEADERS FILES Low.h)\n"
                                     "# layer deviants: states\n"
                                     "target_sources(zel PUBLIC FILE_SET HEADERS FILES High.h)\n"});
    std::istringstream text{"#include <ZEL/Low.h>\n"
                            "#include <ZEL/High.h>\n"
                            "#include <vector>\n"
                            "#include <ZEL/metamodel/ModelIntf.h>\n"
                            "#include <ZEL/serializer/Context.h>\n"};
    EXPECT_EQ(
        violations("Low.h", "base", std::move(text), index),
        (std::vector<std::string>{"Low.h:2: layer base includes <ZEL/High.h> of layer deviants",
                                  "Low.h:5: layer base includes <ZEL/serializer/Context.h> of layer serializer"}));
}

} // namespace
