#pragma once

#include <ZEL/interchange/Interchange.h>
#include <ZEL/interchange/WriteTransforms.h>

#include <Foreign/MetaModelRegistration.h>
#include <kernel/ZEL/serializer/reader/ReaderTest.h>
#include <uml/DialectFixture.h>

#include <regex>
#include <string>

namespace ZEL::tests {

/// Reads files of other tools and writes them as a conversion does.
class ForeignFileTest : public DialectFixture {
protected:
    ForeignFileTest() { Foreign::registerMetaModel(); }

    Model readForeign(std::string const & path, Serializer::XmiFormat format = Serializer::XmiFormat::Standard) {
        Serializer::XmiReaderSettings settings;
        settings.setInputFormat(format);
        settings.setSkipUnreadableExternalFiles(true);
        reader = Serializer::XmiReader(settings);
        Interchange::addReadTransforms(reader);
        return Model(reader.read(path));
    }
    /// The file, without the place of the model.
    std::string converted(Model const & model, std::string const & name = "out.xmi") {
        Serializer::XmiWriterSettings settings;
        settings.setKeepFileIds(true);
        settings.setElementPerValue(true);
        Serializer::XmiWriter writer(settings);
        Interchange::addWriteTransforms(writer, model);
        EXPECT_TRUE(writer.write(folder.path(name), model));
        return std::regex_replace(folder.content(name), std::regex(" uri=\"file:[^\"]*\""), "");
    }
    /// A copy is equal, and a copy of that the same text.
    void expectStable(Model const & model) {
        std::string const text = converted(model, "first.xmi");
        Model const copy = readForeign(folder.path("first.xmi"));
        EXPECT_TRUE(compare(model, copy));
        EXPECT_EQ(converted(copy, "second.xmi"), text);
    }
};

} // namespace ZEL::tests
