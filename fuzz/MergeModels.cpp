// Two changed copies of a file: the first is read, the second merged into it. The merge is undone in one step and
// redone, and the model is saved and read again.

#include "Support.h"

#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/writer/XmiWriter.h>
#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>

#include <exception>
#include <memory>
#include <sstream>

namespace {

using ZEL::Serializer::XmiReader;

bool isMerged(std::string const & file, ZEL::MetaModel const & model) {
    XmiReader reader;
    reader.setMerger(std::make_shared<ZEL::Serializer::Merger>(model));
    return fuzz::succeeds([&] { static_cast<void>(reader.read(file)); });
}

/// Everything in the model, including objects without a container.
std::string textOf(ZEL::MetaModel const & model) {
    std::ostringstream text;
    ZEL::ImmutableAccessVisitorTextWriter writer(text);
    writer.visitObject(model);
    for (ZEL::ImmutableClassObject const & object : model.getUnparented()) {
        writer.visitObject(object);
    }
    return std::move(text).str();
}

void saveAndRead(TemporaryFolder const & folder, ZEL::MetaModel const & model) {
    std::string const file = folder.path("saved.xmi");
    if (!ZEL::Serializer::XmiWriter().write(file, model)) {
        return; // a character that the encoding cannot hold, as the log says
    }
    try {
        fuzz::require(XmiReader().read(file).isValid(), "a saved model is a model");
    } catch (std::exception const & failure) {
        fuzz::require(false, std::string("what was saved can be read: ") + failure.what());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    static TemporaryFolder const folder;
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
    std::span<std::uint8_t const> const bytes(data, size);
    std::string const first = folder.file("first.xmi", fuzz::mutated(fuzz::kModel, bytes.first(size / 2)));
    std::string const second = folder.file("second.xmi", fuzz::mutated(fuzz::kModel, bytes.subspan(size / 2)));

    ZEL::MetaModel model;
    if (!fuzz::succeeds([&] { model = ZEL::MetaModel(XmiReader().read(first)); }) || !model.isValid()) {
        return 0;
    }
    std::string const before = textOf(model);
    ZEL::Deviant const root = model.getRootDeviant();
    root.clearUndoStack();
    bool const isDone = isMerged(second, model) && root.getUndoStackLength() != 0;
    if (isDone) {
        fuzz::require(root.getUndoStackLength() == 1, "a merge is one step of undo");
        root.undo();
    }
    fuzz::require(textOf(model) == before, "the model is as it was before the merge");
    if (isDone) {
        root.redo();
    }
    saveAndRead(folder, model);
    return 0;
}
