// Files that are read into a model that is open.

#include "Look.h"
#include "Tour.h"

#include <ZEL/base/Exception.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/XmiReader.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>

namespace tour {
namespace {

/// Reads the file into the model, which it must be a version of.
ZEL::MetaModel readInto(ZEL::MetaModel const & model, std::string const & file) {
    ZEL::Serializer::XmiReader reader;
    reader.setMerger(std::make_shared<ZEL::Serializer::Merger>(model));
    return ZEL::MetaModel(reader.read(file));
}

} // namespace

void mergeFile(Narrator & narrator, Session & session) {
    narrator.step("Merge the file into the open model");
    ZEL::MetaModel const & model = session.library;
    ZEL::Class const refilled = classesOf(model).front();
    ZEL::Class const kept = classesOf(model).back();
    std::string const name = refilled.getName();
    std::string const keptName = kept.getName();

    ZEL::Transaction transaction(model.getRootDeviant(), "work since the file was saved");
    refilled.setName("Overwritten");
    ZEL::Class const passing = model.getFactoryFactory().createClass();
    passing.setName("Passing");
    model.getTopPackage().getPackagedElements().push_back(passing);
    transaction.commit();
    int const steps = model.getUndoStackLength();
    std::vector<std::string> const before = snapshotOf(model);

    narrator.claim(readInto(model, session.savedFile) == model, "the file is read into the open model");
    narrator.claim(kept.isValid() && kept.getName() == keptName,
                   "kept: '" + keptName + "' is the same object as before");
    narrator.claim(refilled.isValid() && refilled.getName() == name,
                   "refilled: 'Overwritten' is the same object, called '" + name + "' again");
    narrator.claim(!passing.isValid(), "gone: 'Passing', which the file does not know");
    narrator.claim(model.getUndoStackLength() == steps + 1, "the merge is one step in the history");

    model.undo();
    narrator.claim(refilled.getName() == "Overwritten" && passing.isValid() && passing.getName() == "Passing",
                   "one undo, and both are back");
    narrator.claim(snapshotOf(model) == before, "with every value and link of the model");
    model.undo();
}

void refuseMalformedFile(Narrator & narrator, Session & session) {
    narrator.step("A malformed file leaves the model as it was");
    ZEL::MetaModel const & model = session.library;
    std::filesystem::path const broken = session.folder / "broken.xmi";
    std::ifstream in(session.savedFile, std::ios::binary);
    std::string const content{std::istreambuf_iterator<char>(in), {}};
    std::ofstream(broken, std::ios::binary) << content.substr(0, content.size() / 2);
    narrator.tell("broken.xmi is the first half of the file");

    std::vector<std::string> const before = snapshotOf(model);
    int const level = model.getCurrentChangeLevel();
    int const nextId = model.getNextIdValue();
    std::string refusal;
    try {
        static_cast<void>(readInto(model, broken));
    } catch (ZEL::Exception const & exception) {
        refusal = exception.what();
    }
    std::size_t const place = refusal.find("broken.xmi");
    narrator.claim(place != std::string::npos,
                   "it is refused, with the place: " + refusal.substr(std::min(place, refusal.size())));
    narrator.claim(snapshotOf(model) == before && model.getCurrentChangeLevel() == level &&
                       model.getNextIdValue() == nextId,
                   "not one value of the open model has changed");
}

} // namespace tour
