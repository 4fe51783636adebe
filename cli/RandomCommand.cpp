#include "Command.h"
#include "Files.h"
#include "Models.h"
#include "Options.h"
#include "Progress.h"

#include <ZEL/String.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/tools/ObjectsIn.h>
#include <ZEL/tools/RandomModelGenerator.h>

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

struct Arguments {
    std::string output;
    std::string metamodel = ZEL::METAMODEL_URI;
    unsigned int seed = 0;
    int depth = 4;
    int breadth = 4;
    int associations = 100;
};

/// Also sets the seed to the one that was used.
ZEL::Model makeModel(Arguments & given) {
    ZEL::Model model = ZEL::FactoryRegistry::instance()->createModel(metamodelOf(given.metamodel).getUri());
    if (!model.isValid()) {
        throw Trouble("metamodel " + given.metamodel + ": no models can be made of it");
    }
    Progress const progress("making a model");
    ZEL::RandomModelGenerator generator(model.getFactory());
    ZEL::Transaction transaction(model.getRootDeviant(), "random");
    generator.createRandomModel(model, given.depth, given.breadth, given.associations, given.seed);
    transaction.commit();
    given.seed = generator.getSeed();
    return model;
}

ExitCode writeModelOf(Arguments & given) {
    requireWritable(given.output);
    ZEL::Model const model = makeModel(given);
    writeModel(given.output, model);
    std::cout << printable(given.output) << ": " << counted(ZEL::objectsIn(model).size(), "object") << ", seed "
              << given.seed << '\n';
    return Done;
}

} // namespace

Command randomCommand(CLI::App & app) {
    auto const given = std::make_shared<Arguments>();
    addArgument(app, "OUT", given->output, "The file to write");
    addNumber(app, "--seed", given->seed, "The same one gives the same model; 0 takes the present time",
              Presence::Required);
    addNumber(app, "--depth", given->depth, "How many levels of objects");
    addNumber(app, "--breadth", given->breadth, "How many children of each object at most");
    addNumber(app, "--associations", given->associations, "How often to try to set a value or a link");
    addText(app, "--metamodel", given->metamodel, "URI", "The URI or the prefix of a registered metamodel");
    return [given] { return writeModelOf(*given); };
}

} // namespace cli
