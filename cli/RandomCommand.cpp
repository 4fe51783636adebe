#include "RandomCommand.h"

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

#include <CLI/CLI.hpp>

#include <iostream>

namespace cli {

void RandomCommand::declare(CLI::App & app) {
    fMetamodel = ZEL::METAMODEL_URI;
    app.add_option("OUT", fOutput, "The file to write")->required();
    addNumber(app, "--seed", fSeed, "The same one gives the same model; 0 takes the present time").required();
    addNumber(app, "--depth", fDepth, "How many levels of objects").capture_default_str();
    addNumber(app, "--breadth", fBreadth, "How many children of each object at most").capture_default_str();
    addNumber(app, "--associations", fAssociations, "How often to try to set a value or a link").capture_default_str();
    app.add_option("--metamodel", fMetamodel, "The URI or the prefix of a registered metamodel")
        ->capture_default_str()
        ->type_name("URI");
}

ZEL::Model RandomCommand::makeModel() {
    ZEL::Model model = ZEL::FactoryRegistry::instance()->createModel(metamodelOf(fMetamodel).getUri());
    if (!model.isValid()) {
        throw Trouble("metamodel " + fMetamodel + ": no models can be made of it");
    }
    Progress const progress("making a model");
    ZEL::RandomModelGenerator generator(model.getFactory());
    ZEL::Transaction transaction(model.getRootDeviant(), "random");
    generator.createRandomModel(model, fDepth, fBreadth, fAssociations, fSeed);
    transaction.commit();
    fSeed = generator.getSeed();
    return model;
}

ExitCode RandomCommand::run() {
    requireWritable(fOutput);
    ZEL::Model const model = makeModel();
    writeModel(fOutput, model);
    std::cout << printable(fOutput) << ": " << counted(ZEL::objectsIn(model).size(), "object") << ", seed " << fSeed
              << '\n';
    return Done;
}

} // namespace cli
