#include "Command.h"
#include "Files.h"
#include "ModelDifferences.h"
#include "Options.h"
#include "Progress.h"
#include "Text.h"

#include <ZEL/compare/Merge.h>
#include <ZEL/compare/Sentence.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

using ZEL::Compare::Conflict;
using ZEL::Compare::Merge;
using ZEL::Compare::Resolution;

struct Arguments {
    std::string base;
    std::string ours;
    std::string theirs;
    std::string output;
    std::string preferred = "none";
    std::string format = "standard";
    ReadSettings settings;
    bool isJson = false;
};

void printJson(Merge const & merge) {
    auto const listOf = [](auto const & differences) {
        Json list = Json::array();
        for (ZEL::Compare::Difference const & difference : differences) {
            list.push_back(jsonOf(difference));
        }
        return list;
    };
    Json json{{"taken", listOf(merge.taken())}, {"conflicts", Json::array()}};
    for (Conflict const & conflict : merge.conflicts()) {
        json["conflicts"].push_back({{"ours", listOf(conflict.ours)}, {"theirs", listOf(conflict.theirs)}});
    }
    print(json);
}

void printLines(Merge const & merge, Arguments const & given) {
    std::string const & file = given.settings.versionsOf.empty() ? given.output : given.settings.versionsOf;
    std::cout << printable(file) << ": " << counted(merge.taken().size(), "change") << " taken, "
              << counted(merge.conflicts().size(), "conflict")
              << (merge.isResolved() && !merge.conflicts().empty() ? " resolved" : "") << '\n';
    for (Conflict const & conflict : merge.conflicts()) {
        std::cout << "conflict: " << printable(sentenceOf(conflict)) << '\n';
    }
}

ExitCode merge(Arguments const & given) {
    requireWritable(given.output);
    OpenModel const base = readModel(given.base, given.settings);
    OpenModel const ours = readModel(given.ours, given.settings);
    OpenModel const theirs = readModel(given.theirs, given.settings);
    Merge made(base.model, ours.model, theirs.model, matchSettingsOf(base, ours), matchSettingsOf(base, theirs));
    if (given.preferred != "none") {
        Resolution const preferred = given.preferred == "ours" ? Resolution::Ours : Resolution::Theirs;
        made.resolve([preferred](Conflict const &) { return preferred; });
    }
    // What was in conflict is told as it was before it is written over.
    if (given.isJson) {
        printJson(made);
    } else {
        printLines(made, given);
    }
    {
        Progress const progress("merging");
        if (!made.apply(ours.model)) {
            throw Trouble("cannot merge " + given.theirs + " into " + given.ours + ": a rule of the model refuses it");
        }
    }
    if (!given.settings.versionsOf.empty()) {
        linkFrom(ours, given.output, given.settings.versionsOf);
    }
    writeModelAs(given.format, given.output, ours.model);
    return made.isResolved() ? Done : No;
}

} // namespace

Command mergeCommand(CLI::App & app) {
    auto const given = std::make_shared<Arguments>();
    addArgument(app, "BASE", given->base, "The file that both others come from");
    addArgument(app, "OURS", given->ours, "One changed version of it");
    addArgument(app, "THEIRS", given->theirs, "Another one");
    addRequiredText(app, "-o,--output", given->output, "OUT", "The file to write, which can be one of the others");
    addFormat(app, "--prefer", given->preferred, {"none", "ours", "theirs"}, "Who wins where both changed the same");
    addFormat(app, "--to", given->format, outputFormats(), "The form of OUT");
    addLinks(app, given->settings);
    addVersionsOf(app, given->settings);
    addFlag(app, "--json", given->isJson, "Prints what was merged for other programs");
    return [given] { return merge(*given); };
}

} // namespace cli
