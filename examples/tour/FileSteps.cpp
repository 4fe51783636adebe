// Models and files: reading, making, saving.

#include "Look.h"
#include "Tour.h"

#include <ZEL/base/Exception.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/writer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace tour {
namespace {

std::string fileNameOf(ZEL::ImmutableModel const & model) {
    std::string const uri = model.getUri();
    return uri.substr(uri.rfind('/') + 1);
}

std::string contentOf(std::filesystem::path const & file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string sizeOf(ZEL::ImmutableModel const & model) {
    return std::to_string(ZEL::objectsIn(model).size()) + " objects";
}

/// How many attributes have a type in one of the models.
std::size_t linksInto(std::vector<ZEL::Model> const & models, ZEL::ImmutableModel const & from) {
    std::size_t count = 0;
    for (ZEL::ImmutableClassObject const & object : ZEL::objectsIn(from)) {
        ZEL::ImmutableProperty const attribute(object);
        if (attribute.isValid() && attribute.hasType()) {
            count +=
                static_cast<std::size_t>(std::count(models.begin(), models.end(), attribute.getType().getRootModel()));
        }
    }
    return count;
}

} // namespace

void readFiles(Narrator & narrator, Session & session, std::string const & file) {
    narrator.step("Read the files");
    ZEL::Serializer::XmiReader reader;
    session.library = ZEL::MetaModel(reader.read(file));
    narrator.claim(session.library.isValid(), "the file holds a model of the built-in metamodel");
    narrator.tell(fileNameOf(session.library) + ": " + sizeOf(session.library) + ": " + censusOf(session.library));
    for (int i = 0; i < reader.referredModelCount(); ++i) {
        session.companions.emplace_back(reader.getReferredModel(i));
        narrator.tell(fileNameOf(session.companions.back()) +
                      ", found by its links: " + sizeOf(session.companions.back()));
    }
    narrator.claim(reader.report().isEmpty(), "all that the files say has reached a model");
    if (!session.companions.empty()) {
        std::size_t const links = linksInto(session.companions, session.library);
        narrator.claim(links > 0, std::to_string(links) + " attributes have a type from another file");
    }
    narrator.claim(classesOf(session.library).size() >= 2 && session.library.hasTopPackage(),
                   "there is a package at the top, and there are classes to work on");
}

void makeSecondModel(Narrator & narrator) {
    narrator.step("Make a second model, by the URI of its metamodel");
    ZEL::MetaModel const model(ZEL::FactoryRegistry::instance()->createModel(ZEL::METAMODEL_URI));
    narrator.claim(model.isValid(), std::string("the registry knows ") + ZEL::METAMODEL_URI);
    ZEL::Factory const factory = model.getFactoryFactory();
    ZEL::Transaction transaction(model.getRootDeviant(), "first package");
    ZEL::Package const package = factory.createPackage();
    package.setName("drafts");
    model.setTopPackage(package);
    transaction.commit();
    narrator.claim(model.getTopPackage() == package && package.getRootModel() == model,
                   "the package '" + package.getQualifiedName().str() + "' belongs to the new model");
    std::string refusal;
    try {
        package.setName("too late");
    } catch (ZEL::Exception const & exception) {
        refusal = exception.what();
    }
    narrator.tell(refusal);
    narrator.claim(!refusal.empty() && package.getName() == "drafts", "without a transaction nothing can be written");
}

void saveAndReadAgain(Narrator & narrator, Session & session) {
    narrator.step("Save everything and read it again");
    ZEL::Serializer::XmiWriter writer;
    for (ZEL::Model const & companion : session.companions) {
        std::string const file = session.folder / fileNameOf(companion);
        narrator.claim(writer.write(file, companion), fileNameOf(companion) + " is written");
        ZEL::Object const again = ZEL::Serializer::XmiReader().read(file);
        narrator.claim(ZEL::compare(companion, again), "read again, it is equal to the open model");
        ZEL::MetaModelRegistry::instance()->bindUriToModel(companion.getUri(), companion);
    }
    session.savedFile = session.folder / fileNameOf(session.library);
    narrator.claim(writer.write(session.savedFile, session.library), fileNameOf(session.library) + " is written");
    std::string const content = contentOf(session.savedFile);

    ZEL::Serializer::XmiReader reader;
    ZEL::MetaModel const again(reader.read(session.savedFile));
    for (ZEL::Model const & companion : session.companions) {
        ZEL::MetaModelRegistry::instance()->unbindModelUri(companion.getUri());
    }
    narrator.claim(reader.report().isEmpty() && again != session.library, "read again, it is a model of its own");
    narrator.claim(ZEL::compare(session.library, again), "equal to the open model, object by object");
    narrator.claim(snapshotOf(session.library) == snapshotOf(again), "with the same ids");
    narrator.claim(again.getNextIdValue() == session.library.getNextIdValue(), "and the same next id");
    narrator.claim(writer.write(session.savedFile, again) && contentOf(session.savedFile) == content,
                   "written once more, it gives the same " + std::to_string(content.size()) + " bytes");
}

} // namespace tour
