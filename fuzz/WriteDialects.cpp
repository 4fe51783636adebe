// A changed model, written in each dialect: what is written is well-formed, and a failed write leaves no file.

#include "Support.h"

#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/writer/XmiWriter.h>

#include <hasp_util/XmlReader.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    using ZEL::Serializer::XmiFormat;
    static TemporaryFolder const folder;
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
    ZEL::MetaModel model;
    std::string const input = folder.file("input.xmi", fuzz::mutated(fuzz::kModel, {data, size}));
    auto const read = [&] { model = ZEL::MetaModel(ZEL::Serializer::XmiReader().read(input)); };
    if (!fuzz::succeeds(read) || !model.isValid()) {
        return 0;
    }
    for (XmiFormat const format : {XmiFormat::Standard, XmiFormat::MagicDraw, XmiFormat::Rhapsody}) {
        std::string const file = folder.path("output.xmi");
        std::filesystem::remove(file);
        ZEL::Serializer::XmiWriterSettings settings;
        settings.setOutputFormat(format);
        if (!ZEL::Serializer::XmiWriter(settings).write(file, model)) {
            fuzz::require(!std::filesystem::exists(file), "a write that failed leaves no file");
            continue;
        }
        HASP::XmlReader reader(file);
        while (reader.hasNext()) {
            reader.next();
        }
        fuzz::require(!reader.hasError(), format.toString() + " is well-formed: " + reader.error());
    }
    return 0;
}
