#include "Command.h"
#include "Models.h"
#include "Options.h"
#include "Progress.h"

#include <ZEL/String.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/ObjectsIn.h>

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

/// Compares the models of two files. Objects in the files that these refer to correspond if the two refer to the same
/// file, or one to a copy of the other's.
class FileComparator : public ZEL::Comparator {
public:
    FileComparator(OpenModel const & first, OpenModel const & second) : Comparator(first.model, second.model) {
        for (auto const & [companion, counterpart] : companionsOfBoth(first, second)) {
            static_cast<void>(compareCompositionR(companion, counterpart));
        }
    }

    [[nodiscard]] bool areEqual() {
        Progress const progress("comparing");
        return compareCompositionR(getFirst(), getSecond()) && compareAssociationR(getFirst(), getSecond());
    }
};

struct Arguments {
    std::string first;
    std::string second;
    ReadSettings settings;
};

ExitCode compare(Arguments const & given) {
    OpenModel const first = readModel(given.first, given.settings);
    OpenModel const second = readModel(given.second, given.settings);

    // The place of a model is one of its values, but is not compared here.
    ZEL::Transaction transaction(second.model.getRootDeviant(), "same place");
    second.model.setUri(first.model.getUri());
    transaction.commit();

    FileComparator comparator(first, second);
    if (comparator.areEqual()) {
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
