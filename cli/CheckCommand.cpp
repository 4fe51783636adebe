#include "Command.h"
#include "Json.h"
#include "Models.h"
#include "Options.h"
#include "Progress.h"
#include "load/Suggestion.h"

#include <ZEL/String.h>
#include <ZEL/compare/Check.h>
#include <ZEL/compare/Rules.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/tools/ObjectsIn.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace cli {
namespace {

using ZEL::Compare::Diagnostic;
using ZEL::Compare::Diagnostics;
using ZEL::Compare::Rules;
using ZEL::Compare::Severity;

struct Arguments {
    Input input;
    std::vector<std::string> only;
    std::vector<std::string> without;
    bool asJson = false;
};

/// Throws `Trouble` for a name that no rule has: a check of nothing would pass.
void requireKnown(std::vector<std::string> const & names, std::vector<std::string> const & known) {
    for (std::string const & name : names) {
        if (!std::binary_search(known.begin(), known.end(), name)) {
            std::string const meant = zelgen::suggestion(name, known);
            throw Trouble("check: found rule " + nameOf(name) +
                          (meant.empty() ? ", expected one that the metamodel of the file has" : meant));
        }
    }
}

/// The rules that are asked for, of the metamodels that the file has brought in.
Rules rulesOf(Arguments const & given) {
    Rules const all = Rules::all();
    if (given.only.empty() && given.without.empty()) {
        return all;
    }
    std::vector<std::string> const known = all.names();
    requireKnown(given.only, known);
    requireKnown(given.without, known);
    return (given.only.empty() ? all : all.only(given.only)).without(given.without);
}

void print(Diagnostics const & diagnostics, std::size_t objects) {
    for (Diagnostic const & diagnostic : diagnostics) {
        std::cout << printable(ZEL::Compare::lineOf(diagnostic)) << '\n';
    }
    std::string counts;
    for (Severity const severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        if (std::size_t const count = ZEL::Compare::countOf(diagnostics, severity); count > 0) {
            counts += (counts.empty() ? "" : ", ") + counted(count, ZEL::Compare::nameOf(severity));
        }
    }
    std::cout << counted(objects, "object") << ": " << (counts.empty() ? "nothing found" : counts) << '\n';
}

Json jsonOf(Diagnostic const & diagnostic) {
    Json json{{"severity", ZEL::Compare::nameOf(diagnostic.severity)},
              {"rule", diagnostic.rule},
              {"text", diagnostic.text},
              {"label", diagnostic.label},
              {"object", cli::jsonOf(diagnostic.object)}};
    if (diagnostic.property.isValid()) {
        json["property"] = diagnostic.property.getName().str();
    }
    return json;
}

Json jsonOf(Diagnostics const & diagnostics, std::string const & file, std::size_t objects) {
    Json json{{"file", file}, {"objects", objects}};
    for (Severity const severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        json[ZEL::Compare::nameOf(severity) + 's'] = ZEL::Compare::countOf(diagnostics, severity);
    }
    json["diagnostics"] = Json::array();
    for (Diagnostic const & diagnostic : diagnostics) {
        json["diagnostics"].push_back(jsonOf(diagnostic));
    }
    return json;
}

ExitCode check(Arguments const & given) {
    OpenModel const opened = readModel(given.input.file, given.input.settings);
    Rules const rules = rulesOf(given);
    Diagnostics diagnostics;
    {
        Progress const progress("checking");
        diagnostics = ZEL::Compare::check(opened.model, rules);
    }
    std::size_t const objects = ZEL::objectsIn(opened.model).size();
    if (given.asJson) {
        cli::print(jsonOf(diagnostics, given.input.file, objects));
    } else {
        print(diagnostics, objects);
    }
    return ZEL::Compare::countOf(diagnostics, Severity::Error) == 0 ? Done : No;
}

} // namespace

Command checkCommand(CLI::App & app) {
    auto const given = std::make_shared<Arguments>();
    addInput(app, given->input);
    addTexts(app, "--rule", given->only, "NAME", "Asks this rule alone; can be given several times");
    addTexts(app, "--without", given->without, "NAME", "Leaves this rule out; can be given several times");
    addFlag(app, "--json", given->asJson, "Prints what was found for other programs to read");
    return [given] { return check(*given); };
}

} // namespace cli
