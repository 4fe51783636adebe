// Real files of other tools, where there are any: the environment variable ZEL_CORPUS names their folder.

#include <ZEL/ZEL.h>
#include <ZEL/interchange/Interchange.h>
#include <ZEL/logging/LogLevel.h>
#include <ZEL/serializer/XmiConstants.h>

#include <hasp_util/XmlReader.h>

#include <gtest/gtest.h>
#include <host/TemporaryFolder.h>
#include <kernel/ZEL/serializer/ContextText.h>

#include <algorithm>
#include <memory>
#include <set>

namespace ZEL::Interchange {
namespace {

using Serializer::XmiConstants;

/// Whether what stands in the element is a tool's own and no part of the model.
bool isOfTool(HASP::XmlReader const & xml) {
    static std::set<std::string> const names = {"Diagram", "DiagramInfo", "HyperlinkOwner", "modelLibrary"};
    return (xml.getNamespaceURI() == XmiConstants::XMI_NS_URI && xml.getLocalName() == "Extension") ||
           names.count(xml.getLocalName()) != 0;
}

/// The ids of the file's elements, but for those of tools.
std::set<std::string> idsIn(std::string const & file) {
    std::set<std::string> ids;
    HASP::XmlReader xml(file);
    unsigned int depthInTool = 0;
    while (xml.hasNext()) {
        auto const event = xml.next();
        if (event == HASP::XmlReader::StartElement) {
            depthInTool += depthInTool != 0 || isOfTool(xml) ? 1U : 0U;
            HASP::XmlStringRef const id = xml.getAttributeValue("id", XmiConstants::XMI_NS_URI);
            if (depthInTool == 0 && !id.isNull()) {
                ids.insert(id.toString());
            }
        } else if (event == HASP::XmlReader::EndElement) {
            depthInTool -= depthInTool != 0 ? 1U : 0U;
        }
    }
    return ids;
}

TEST(CorpusLong, FilesAreReadOrRefusedAndTheirModelsSavedAndReadBackEqual) {
    char const * const folder = std::getenv("ZEL_CORPUS");
    if (folder == nullptr) {
        GTEST_SKIP() << "ZEL_CORPUS names no folder of files";
    }
    registerMetaModels();
    Logger::instance()->setDefaultHandlerLevel(LogLevel::off);
    TemporaryFolder saved;
    for (auto const & entry : std::filesystem::directory_iterator(folder)) {
        std::string const file = entry.path().string();
        SCOPED_TRACE(file);
        Serializer::XmiReaderSettings settings;
        settings.setSkipUnreadableExternalFiles(true);
        Serializer::XmiReader reader(settings);
        std::set<std::string> objects;
        auto const notes = std::make_shared<tests::Rules>();
        notes->setOnCreate([&objects](Serializer::Context const & element, ClassObject const &) {
            objects.insert(element.getFirstValue());
        });
        reader.addTransformer(notes);
        addReadTransforms(reader);
        if (!entry.is_regular_file() || entry.path().extension() == ".md") {
            continue;
        }
        Model const model(reader.read(file));
        if (!model.isValid()) {
            EXPECT_FALSE(reader.report().skippedElements().empty());
            continue;
        }
        std::set<std::string> const ids = idsIn(file);
        auto const missing =
            std::count_if(ids.begin(), ids.end(), [&](std::string const & id) { return objects.count(id) == 0; });
        EXPECT_LE(static_cast<std::size_t>(missing) * 100, ids.size());
        ASSERT_TRUE(Serializer::XmiWriter().write(saved.path("out.xmi"), model));
        if (reader.referredModelCount() == 0) {
            Serializer::XmiReader again(settings);
            addReadTransforms(again); // which give stereotypes their types
            EXPECT_TRUE(compare(model, again.read(saved.path("out.xmi"))));
        }
    }
    Logger::instance()->setDefaultHandlerLevel(LogLevel::info);
}

} // namespace
} // namespace ZEL::Interchange
