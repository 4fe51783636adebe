#include "support/RunAgain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

fs::path const sourceDir{ZEL_SOURCE_DIR};

/// The floors from the lowest to the highest. A file knows its own folder and what lies lower; folders of one floor do
/// not know each other.
std::vector<std::set<std::string>> const floors{
    {"hasp_util", "libvx", "orca_factory"}, //
    {"export"},
    {"base"},
    {"deviants"},
    {"values"},
    {"primitives", "logging", "sequences"},
    {"metamodel"},
    {"serializer", "tools"},
    {"serializer/dialects"},
    {"serializer/reader", "serializer/writer"},
    {"door"},
    {"interchange", "compare"},
    {"cli"},
};

/// The floor's place in `floors`, if there is one.
std::optional<std::size_t> levelOf(std::string const & folder) {
    for (std::size_t level = 0; level < floors.size(); ++level) {
        if (floors[level].count(folder) != 0) {
            return level;
        }
    }
    return std::nullopt;
}

/// The folder that stands for a file in `floors`, by the path as it is included: "ZEL/sequences/Sequence.h". Empty if the
/// file is none of the project's libraries.
std::string folderOf(std::string const & path) {
    static std::regex const inFolder("(?:ZEL/)?([a-z_]+(?:/[a-z]+)?)/[^/]*");
    static std::map<std::string, std::string> const atTheDoor{
        {"ZEL/Export.h", "export"},
        {"ZEL/Initialize.cpp", "door"},
        {"ZEL/Initialize.h", "door"},
        {"ZEL/ZEL.h", "door"},
    };
    if (auto const found = atTheDoor.find(path); found != atTheDoor.end()) {
        return found->second;
    }
    if (std::smatch match; std::regex_match(path, match, inFolder)) {
        std::string const folder = match[1];
        return levelOf(folder) ? folder : "";
    }
    // What is left directly in ZEL are the primitive values.
    return path.starts_with("ZEL/") ? "primitives" : "";
}

bool mayKnow(std::string const & folder, std::string const & other) {
    bool const isOfHost = levelOf(other) == 0U;
    bool const isOnLibrary =
        folder == "interchange" || folder == "compare" || folder == "cli";      // and sees its public headers only
    bool const isAside = other == "tools" && folder.starts_with("serializer/"); // the floor of `serializer` itself
    return folder == other || (levelOf(other) < levelOf(folder) && !(isOfHost && isOnLibrary) && !isAside);
}

/// One line `place:line: ...` per include of `text` that points upwards or aside.
std::vector<std::string> wrongIncludes(std::string const & place, std::string const & folder, std::istream && text) {
    static std::regex const include("#include [<\"](.*)[>\"].*");
    std::vector<std::string> found;
    int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        if (std::smatch match; std::regex_match(line, match, include)) {
            std::string const other = folderOf(match[1]);
            if (!other.empty() && !mayKnow(folder, other)) {
                found.push_back(place + ":" + std::to_string(number) + ": " + folder + " includes <" + match[1].str() +
                                "> of " + other);
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

TEST(Floors, IncludesPointDownwards) {
    for (std::string const root : {"kernel", "interchange", "compare", "cli"}) {
        for (auto const & file : codeBelow(root)) {
            std::string const folder = folderOf(root == "cli" ? "cli/" + file : file);
            EXPECT_TRUE(levelOf(folder)) << root << '/' << file << ":1: belongs to no floor";
            for (auto const & wrong :
                 wrongIncludes(root + "/" + file, folder, std::ifstream{sourceDir / root / file})) {
                ADD_FAILURE() << wrong;
            }
        }
    }
}

TEST(Floors, AnIncludeUpwardsOrAsideIsReportedWithItsPlace) {
    std::istringstream text{"#include <ZEL/base/Exception.h>\n"
                            "#include <ZEL/values/String.h>\n"
                            "#include <ZEL/logging/Logger.h>\n"
                            "#include <vector>\n"
                            "#include <ZEL/ZEL.h>\n"};
    EXPECT_EQ(wrongIncludes("Low.h", "sequences", std::move(text)),
              (std::vector<std::string>{"Low.h:3: sequences includes <ZEL/logging/Logger.h> of logging",
                                        "Low.h:5: sequences includes <ZEL/ZEL.h> of door"}));
    EXPECT_EQ(wrongIncludes("Options.h", "cli", std::istringstream("#include <hasp_util/Uri.h>\n")),
              std::vector<std::string>{"Options.h:1: cli includes <hasp_util/Uri.h> of hasp_util"});
}

// --- symbols -----------------------------------------------------------------------------------------------------------

/// The symbols of an object file: those that it defines for others, and those that it leaves to others.
struct Symbols {
    std::set<std::string> defined;
    std::set<std::string> used;
};

Symbols symbolsOf(std::string const & objectFile) {
    std::istringstream lines(ZEL::tests::run("nm -P '" + objectFile + "'").output);
    Symbols symbols;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name;
        char type = 0;
        words >> name >> type;
        if (type == 'U') {
            symbols.used.insert(name);
        } else if (std::string("TDBRG").find(type) !=
                   std::string::npos) { // weak ones are defined wherever they are used
            symbols.defined.insert(name);
        }
    }
    return symbols;
}

/// The folder of an object file of the library: the sources' paths are kept in its own.
std::string folderOfObject(std::string const & objectFile) {
    static std::regex const source(".*/(ZEL/.*\\.cpp)\\.o");
    if (objectFile.find("/generated/") != std::string::npos) {
        return "metamodel";
    }
    std::smatch match;
    return std::regex_match(objectFile, match, source) ? folderOf(match[1]) : "";
}

TEST(Floors, NoObjectFileTakesASymbolFromAbove) {
    std::map<std::string, Symbols> objects;
    std::map<std::string, std::string> definedIn; // symbol, folder
    std::ifstream list(ZEL_OBJECT_LIST);
    for (std::string file; std::getline(list, file);) {
        Symbols const & symbols = objects[file] = symbolsOf(file);
        for (std::string const & symbol : symbols.defined) {
            definedIn[symbol] = folderOfObject(file);
        }
    }
    ASSERT_GT(definedIn.size(), 1000U) << "the object files that " << ZEL_OBJECT_LIST << " names";
    for (auto const & [file, symbols] : objects) {
        std::string const folder = folderOfObject(file);
        EXPECT_TRUE(levelOf(folder)) << file;
        for (std::string const & symbol : symbols.used) {
            auto const found = definedIn.find(symbol);
            if (found != definedIn.end()) {
                EXPECT_TRUE(mayKnow(folder, found->second))
                    << file << " takes " << symbol << ", which " << found->second << " defines";
            }
        }
    }
}

// --- what tells a reader where he is -----------------------------------------------------------------------------------

TEST(Floors, EveryFileStandsInTheIndexOfItsFolderAndEveryFolderHasAPage) {
    for (auto const & file : codeBelow("kernel/ZEL")) {
        fs::path const path = fs::path{"kernel/ZEL"} / file;
        fs::path const folder = path.parent_path();
        std::ifstream index(sourceDir / folder / "CMakeLists.txt");
        std::set<std::string> words;
        for (std::string word; index >> word;) {
            words.insert(word.substr(0, word.find(')')));
        }
        EXPECT_EQ(words.count(path.filename().string()), 1U)
            << path.generic_string() << ":1: is missing in " << folder.generic_string() << "/CMakeLists.txt";
        EXPECT_TRUE(fs::exists(sourceDir / folder / "README.md")) << folder;
    }
}

} // namespace
