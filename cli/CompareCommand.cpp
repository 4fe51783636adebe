#include "Command.h"
#include "Files.h"
#include "Models.h"
#include "Options.h"
#include "Progress.h"

#include <ZEL/String.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/ObjectsIn.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace cli {
namespace {

/// The models of the files that the first file refers to. If the second file refers to one of these files, or to a copy
/// of it, its links lead to the objects of the same models; otherwise they would lead to other, different objects.
class SharedCompanions {
public:
    SharedCompanions(std::vector<ZEL::Model> const & models, std::string const & secondFile) {
        for (ZEL::Model const & model : models) {
            if (!areSameFile(ZEL::Interchange::pathOfFileUri(model.getUri()), secondFile)) {
                fUris.push_back(model.getUri());
                ZEL::MetaModelRegistry::instance()->bindUriToModel(fUris.back(), model);
            }
        }
    }
    ~SharedCompanions() {
        for (std::string const & uri : fUris) {
            ZEL::MetaModelRegistry::instance()->unbindModelUri(uri);
        }
    }
    SharedCompanions(SharedCompanions const &) = delete;
    SharedCompanions & operator=(SharedCompanions const &) = delete;

    /// The file of a model with the same content as the file; empty if there is none.
    [[nodiscard]] std::string fileFor(std::string const & uri) const {
        for (std::string const & known : fUris) {
            if (haveSameContent(ZEL::Interchange::pathOfFileUri(known), ZEL::Interchange::pathOfFileUri(uri))) {
                return ZEL::Interchange::pathOfFileUri(known);
            }
        }
        return {};
    }

private:
    std::vector<std::string> fUris;
};

bool isEqual(ZEL::Comparator & comparator) {
    Progress const progress("comparing");
    return comparator.compare();
}

struct Arguments {
    std::string first;
    std::string second;
    ReadSettings settings;
};

ExitCode compare(Arguments const & given) {
    OpenModel const first = readModel(given.first, given.settings);
    SharedCompanions const companions(first.companions, given.second);
    ReadSettings settings = given.settings;
    settings.setExternalUriResolver([&companions](std::string const & uri) { return companions.fileFor(uri); });
    OpenModel const second = readModel(given.second, settings);

    // The place of a model is one of its values, but is not compared here.
    ZEL::Transaction transaction(second.model.getRootDeviant(), "same place");
    second.model.setUri(first.model.getUri());
    transaction.commit();

    ZEL::Comparator comparator(first.model, second.model);
    if (isEqual(comparator)) {
        std::cout << "equal: " << counted(ZEL::objectsIn(first.model).size(), "object") << '\n';
        return Done;
    }
    std::cout << "different: " << describe(comparator.getFailedFirst()) << "\n           "
              << describe(comparator.getFailedSecond()) << '\n';
    return No;
}

} // namespace

Command compareCommand(CLI::App & app) {
    auto const given = std::make_shared<Arguments>();
    addArgument(app, "A", given->first, "A model file");
    addArgument(app, "B", given->second, "Another one");
    addLinks(app, given->settings);
    return [given] { return compare(*given); };
}

} // namespace cli
