#include "Command.h"
#include "Losses.h"
#include "Models.h"
#include "Options.h"

#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <unordered_map>

namespace cli {
namespace {

void row(std::string const & name, std::string const & value) {
    std::cout << std::left << std::setw(12) << name << ' ' << printable(value) << '\n';
}

/// The number of levels of objects.
std::size_t heightOf(std::vector<ZEL::ImmutableClassObject> const & objects) {
    std::unordered_map<ZEL::NSInterface::ObjectIntf const *, std::size_t> levels;
    std::size_t height = 0;
    for (ZEL::ImmutableClassObject const & object : objects) {
        ZEL::ImmutableClassObject const container = object.getContainerZEL();
        std::size_t const level = container.isValid() ? levels[container.getImplementation()] + 1 : 1;
        levels[object.getImplementation()] = level;
        height = std::max(height, level);
    }
    return height;
}

ExitCode info(Input const & input) {
    OpenModel const opened = openModel(input.file, input.settings);
    ZEL::Model const & model = opened.model;
    std::vector<ZEL::ImmutableClassObject> const objects = ZEL::objectsIn(model);
    std::string const metaUri = model.getMetaClass().getRootModel().getUri();

    row("uri", model.getUri());
    row("metamodel", metaUri + " (" + ZEL::NamespaceRegistry::instance()->getPrefixFromMetaUri(metaUri) + ")");
    row("identity", model.getStringSiid());
    row("next id", model.getNextIdValue().toString());
    row("objects", std::to_string(objects.size()) + ", at most " + counted(heightOf(objects), "level") + " deep");
    for (ZEL::Model const & companion : opened.companions) {
        row("refers to", companion.getUri().str() + " (" + counted(ZEL::objectsIn(companion).size(), "object") + ")");
    }

    std::string const leftOut = summaryOf(opened.losses, Fate::LeftOut);
    std::string const kept = summaryOf(opened.losses, Fate::Kept);
    row("left out", leftOut.empty() ? "nothing" : leftOut);
    if (!kept.empty()) {
        row("kept", kept + ", not understood");
    }

    std::map<std::string, std::size_t> counts;
    for (ZEL::ImmutableClassObject const & object : objects) {
        ++counts[object.getMetaClass().getQualifiedName().str()];
    }
    std::cout << '\n';
    for (auto const & [name, count] : counts) {
        std::cout << std::right << std::setw(8) << count << ' ' << name << '\n';
    }
    print(opened.losses);
    return Done;
}

} // namespace

Command infoCommand(CLI::App & app) {
    auto const input = std::make_shared<Input>();
    addInput(app, *input);
    return [input] { return info(*input); };
}

} // namespace cli
