#include "Command.h"
#include "DiffPage.h"
#include "Files.h"
#include "ModelDifferences.h"
#include "Options.h"
#include "Text.h"

#include <ZEL/compare/Sentence.h>
#include <ZEL/tools/ObjectsIn.h>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

using ZEL::Compare::Difference;
using ZEL::Compare::Differences;

struct Arguments {
    std::string first;
    std::string second;
    ReadSettings settings;
    bool isJson = false;
    std::string page;
};

/// Version control names this file where there is none on one side.
bool isNothing(std::string const & file) { return file == "/dev/null"; }

/// What a terminal shows a line in; empty for none.
std::string colourOf(Difference::Kind kind) {
    using Kind = Difference::Kind;
    switch (kind) {
    case Kind::Added:
    case Kind::LinkAdded:
        return "\033[32m";
    case Kind::Removed:
    case Kind::LinkRemoved:
        return "\033[31m";
    case Kind::Moved:
    case Kind::OrderChanged:
        return "\033[36m";
    default:
        return "\033[33m";
    }
}

void printLines(Differences const & differences) {
    bool const isColoured = ::isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
    for (Difference const & difference : differences) {
        std::string const line = printable(sentenceOf(difference));
        std::cout << (isColoured ? colourOf(difference.kind) + line + "\033[0m" : line) << '\n';
    }
}

ExitCode tellNew(Arguments const & given) {
    bool const isNew = isNothing(given.first);
    std::string const & file = isNew ? given.second : given.first;
    std::size_t const count = ZEL::objectsIn(readModel(file, given.settings).model).size();
    std::cout << counted(count, "object") << (isNew ? " added" : " removed") << '\n';
    return No;
}

ExitCode diff(Arguments const & given) {
    if (isNothing(given.first) != isNothing(given.second)) {
        return tellNew(given);
    }
    std::string const page = given.page.empty() ? given.page : writablePage(withoutPageEnding(given.page));
    OpenModel const first = readModel(given.first, given.settings);
    OpenModel const second = readModel(given.second, given.settings);
    Differences const differences = differencesOf(first, second);
    if (given.isJson) {
        Json json{{"equal", differences.empty()}, {"differences", Json::array()}};
        for (Difference const & difference : differences) {
            json["differences"].push_back(jsonOf(difference));
        }
        print(json);
    } else {
        printLines(differences);
    }
    if (!page.empty()) {
        putPage(page, [&](std::string const & file) { writeDiffPage(differences, given.first, given.second, file); });
    }
    return differences.empty() ? Done : No;
}

} // namespace

Command diffCommand(CLI::App & app) {
    auto const given = std::make_shared<Arguments>();
    addArgument(app, "A", given->first, "A model file");
    addArgument(app, "B", given->second, "Another version of it");
    addLinks(app, given->settings);
    addVersionsOf(app, given->settings);
    addFlag(app, "--json", given->isJson, "Prints the differences for other programs");
    addText(app, "--html", given->page, "PAGE", "Writes a page with both models and the differences marked");
    return [given] { return diff(*given); };
}

} // namespace cli
