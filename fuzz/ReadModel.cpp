// Any bytes as a model file: read, and merged into an existing model. A merge that fails leaves that model unchanged;
// one that succeeds is undone in one step; no object stays alive.

#include "Support.h"

#include <ZEL/base/Cleanup.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/tools/Comparator.h>

#include <memory>

namespace {

void readAndMerge(std::string const & present, std::string const & file) {
    ZEL::Serializer::XmiReader reader;
    auto const read = [&] { static_cast<void>(reader.read(file)); };
    static_cast<void>(fuzz::succeeds(read));

    ZEL::MetaModel const model(ZEL::Serializer::XmiReader().read(present));
    ZEL::MetaModel const before(ZEL::Serializer::XmiReader().read(present));
    ZEL::Deviant const root = model.getRootDeviant();
    root.clearUndoStack();
    reader.setMerger(std::make_shared<ZEL::Serializer::Merger>(model));
    if (fuzz::succeeds(read) && root.getUndoStackLength() != 0) {
        fuzz::require(root.getUndoStackLength() == 1, "a merge is one step of undo");
        root.undo();
    }
    fuzz::require(ZEL::compare(model, before), "the model is as it was before the merge");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    static TemporaryFolder const folder;
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
    static std::string const present = folder.file("present.xmi", fuzz::kModel);
    std::string const file = folder.file("input.xmi", {reinterpret_cast<char const *>(data), size});
    static bool const isWarm = (readAndMerge(present, file), true); // makes what lives as long as the process
    static_cast<void>(isWarm);
    int const alive = ZEL::Cleanup::numberOfActiveObjects();
    readAndMerge(present, file);
    fuzz::require(ZEL::Cleanup::numberOfActiveObjects() <= alive, "no object stays alive");
    return 0;
}
