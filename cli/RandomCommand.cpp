#include "RandomCommand.h"

#include "Models.h"

#include <ZEL/Constants.h>
#include <ZEL/FactoryRegistry.h>
#include <ZEL/NamespaceRegistry.h>
#include <ZEL/Transaction.h>
#include <ZEL/tools/RandomModelGenerator.h>

#include <CLI/CLI.hpp>

#include <iostream>

namespace cli {

void RandomCommand::declare(CLI::App & app) {
    fMetamodel = ZEL::METAMODEL_URI;
    app.add_option("OUT", fOutput, "The file to write")->required();
    app.add_option("--seed", fSeed, "The same one gives the same model; 0 takes the present time")->required();
    app.add_option("--depth", fDepth, "How many levels of objects")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    app.add_option("--breadth", fBreadth, "How many children of each object at most")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    app.add_option("--associations", fAssociations, "How often to try to set a value or a link")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    app.add_option("--metamodel", fMetamodel, "The URI of a registered metamodel")->capture_default_str();
}

ExitCode RandomCommand::run() {
    ZEL::Model const model = ZEL::FactoryRegistry::instance()->createModel(fMetamodel);
    if (!model.isValid()) {
        throw Trouble("random: found --metamodel " + fMetamodel + ", expected a registered one (see `zel metamodel`)");
    }
    ZEL::RandomModelGenerator generator(model.getFactory());
    ZEL::Transaction transaction(model.getRootDeviant(), "random");
    generator.createRandomModel(model, fDepth, fBreadth, fAssociations, fSeed);
    transaction.commit();
    writeModel(fOutput, model);
    std::cout << fOutput << ": " << counted(objectsOf(model).size(), "object") << ", seed " << generator.getSeed()
              << '\n';
    return Done;
}

} // namespace cli
