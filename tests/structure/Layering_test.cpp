#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

fs::path const sourceDir{ZEL_SOURCE_DIR};

/// The layers and what each may include beside itself. A layer that is not named here is a fault of the index.
std::map<std::string, std::set<std::string>> const mayInclude{
    {"host", {}},
    {"base", {"host"}},
    {"values", {"host", "base"}},
    {"logging", {"host", "base", "values"}},
    {"sequences", {"host", "base", "values"}},
    {"deviants", {"host", "base", "values", "logging", "sequences"}},
    {"metamodel", {"host", "base", "values", "logging", "sequences", "deviants"}},
    {"serializer", {"host", "base", "values", "logging", "sequences", "deviants", "metamodel"}},
    {"tools", {"host", "base", "values", "logging", "sequences", "deviants", "metamodel"}},
    {"startup", {"host", "base", "values", "logging", "sequences", "deviants", "metamodel", "serializer", "tools"}},
    {"interchange",
     {"base", "values", "logging", "sequences", "deviants", "metamodel", "serializer", "tools", "startup"}},
    {"cli",
     {"base", "values", "logging", "sequences", "deviants", "metamodel", "serializer", "tools", "startup",
      "interchange"}},
    {"generator", {}},
};

/// The root of all classes, and the interfaces whose virtual operations lower layers call.
std::set<std::string> const openToAll{
    "ZEL/metamodel/Object.h",          "ZEL/metamodel/ObjectHandle.h", "ZEL/metamodel/ObjectIntf.h",
    "ZEL/metamodel/ClassObjectIntf.h", "ZEL/metamodel/ModelIntf.h",
};

/// The layers of the files directly in a folder, by the `# layer NAME: ...` comments of its CMake file.
std::map<std::string, std::string> readIndex(std::istream & cmakeFile) {
    std::map<std::string, std::string> layers;
    std::string layer;
    for (std::string line; std::getline(cmakeFile, line);) {
        constexpr std::string_view mark = "# layer ";
        if (line.starts_with(mark)) {
            layer = line.substr(mark.size(), line.find(':') - mark.size());
        }
        if (line.starts_with('#')) {
            continue;
        }
        std::istringstream words{line};
        for (std::string word; words >> word;) {
            word.erase(std::remove(word.begin(), word.end(), ')'), word.end());
            if (word.ends_with(".h") || word.ends_with(".cpp")) {
                layers[word] = layer;
            }
        }
    }
    return layers;
}

std::map<std::string, std::string> readIndex(fs::path const & folder) {
    std::ifstream file{sourceDir / folder / "CMakeLists.txt"};
    return readIndex(file);
}

/// Tells the layer of a file by its path below the include roots, as in `ZEL/sequences/Sequence.h`; none if the file
/// belongs to no layer of the project.
class Layers {
public:
    explicit Layers(std::map<std::string, std::string> kernelIndex) : fKernel{std::move(kernelIndex)} {}

    std::optional<std::string> of(std::string const & path) const {
        static std::vector<std::pair<std::string, std::string>> const folders{
            {"ZEL/sequences/", "sequences"},
            {"ZEL/metamodel/", "metamodel"},
            {"ZEL/serializer/", "serializer"},
            {"ZEL/tools/", "tools"},
            {"ZEL/interchange/", "interchange"},
            {"hasp_util/", "host"},
            {"libvx/", "host"},
            {"orca_factory/", "host"},
            {"generator/", "generator"},
            {"cli/", "cli"},
        };
        for (auto const & [folder, layer] : folders) {
            if (path.starts_with(folder)) {
                return layer;
            }
        }
        if (path.starts_with("ZEL/")) {
            auto const found = fKernel.find(path.substr(4));
            return found == fKernel.end() ? "(not in the index)" : found->second;
        }
        return std::nullopt;
    }

private:
    std::map<std::string, std::string> fKernel;
};

/// One line `place:line: ...` per include of `text` that its layer does not allow.
std::vector<std::string> violations(std::string const & place, std::string const & layer, std::istream & text,
                                    Layers const & layers) {
    std::vector<std::string> found;
    int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        if (!line.starts_with("#include")) {
            continue;
        }
        auto const open = line.find_first_of("<\"");
        auto const close = line.find_first_of(">\"", open + 1);
        if (open == std::string::npos || close == std::string::npos) {
            continue;
        }
        std::string const header = line.substr(open + 1, close - open - 1);
        auto const target = layer == "generator" ? std::nullopt : layers.of(header); // its sources hold texts of others
        bool const allowed =
            !target || *target == layer || openToAll.count(header) || mayInclude.at(layer).count(*target);
        if (!allowed) {
            found.push_back(place + ":" + std::to_string(number) + ": layer " + layer + " includes <" + header +
                            "> of layer " + *target);
        }
    }
    return found;
}

bool isCode(fs::path const & path) { return path.extension() == ".h" || path.extension() == ".cpp"; }

/// All headers and sources below a folder of the project, as paths below that folder.
std::vector<std::string> codeBelow(fs::path const & folder) {
    std::vector<std::string> files;
    if (fs::exists(sourceDir / folder)) {
        for (auto const & entry : fs::recursive_directory_iterator{sourceDir / folder}) {
            if (isCode(entry.path())) {
                files.push_back(entry.path().lexically_relative(sourceDir / folder).generic_string());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST(Layering, IncludesPointDownwards) {
    Layers const layers{readIndex("kernel/ZEL")};
    struct Root {
        std::string folder;
        std::string prefix;
    };
    std::size_t seen = 0;
    for (auto const & [folder, prefix] : {Root{"host", ""}, Root{"kernel", ""}, Root{"generator", "generator/"},
                                          Root{"interchange", ""}, Root{"cli", "cli/"}}) {
        for (auto const & file : codeBelow(folder)) {
            ++seen;
            std::string const place = folder + "/" + file;
            auto const layer = layers.of(prefix + file);
            if (!layer || !mayInclude.count(*layer)) {
                ADD_FAILURE() << place << ":1: layer " << layer.value_or("(none)") << " is unknown";
                continue;
            }
            std::ifstream text{sourceDir / place};
            for (auto const & violation : violations(place, *layer, text, layers)) {
                ADD_FAILURE() << violation;
            }
        }
    }
    EXPECT_GT(seen, 0U);
}

TEST(Layering, EveryFileStandsInTheIndexOfItsFolder) {
    for (auto const & file : codeBelow("kernel/ZEL")) {
        fs::path const path = fs::path{"kernel/ZEL"} / file;
        auto const index = readIndex(path.parent_path());
        EXPECT_TRUE(index.count(path.filename().string())) << path.generic_string() << ":1: is missing in "
                                                           << path.parent_path().generic_string() << "/CMakeLists.txt";
    }
}

TEST(Layering, AnUpwardIncludeIsReportedWithItsPlace) {
    std::istringstream index{"# layer base: counting\n"
                             "target_sources(zel PRIVATE Low.cpp\n    PUBLIC FILE_SET HEADERS FILES Low.h)\n"
                             "# layer deviants: states\n"
                             "target_sources(zel PUBLIC FILE_SET HEADERS FILES High.h)\n"};
    Layers const layers{readIndex(index)};
    std::istringstream text{"#include <ZEL/Low.h>\n"
                            "#include <ZEL/High.h>\n"
                            "#include <vector>\n"
                            "#include <ZEL/metamodel/ModelIntf.h>\n"
                            "#include <ZEL/serializer/Context.h>\n"};
    EXPECT_EQ(
        violations("Low.h", "base", text, layers),
        (std::vector<std::string>{"Low.h:2: layer base includes <ZEL/High.h> of layer deviants",
                                  "Low.h:5: layer base includes <ZEL/serializer/Context.h> of layer serializer"}));
}

} // namespace
