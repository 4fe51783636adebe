#include <ZEL/interchange/FileFinder.h>
#include <ZEL/interchange/Interchange.h>
#include <ZEL/interchange/UnpackedFile.h>
#include <ZEL/tools/ObjectsIn.h>

#include <gmock/gmock.h>
#include <support/ExpectRaises.h>
#include <uml/DialectFixture.h>
#include <zip.h>

namespace ZEL::Interchange {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr char kHead[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1">
)";

std::string library(std::string const & className) {
    return kHead + ("<uml:Model xmi:id='l'><packagedElement xmi:type='uml:Class' xmi:id='" + className + "' name='" +
                    className + "'/></uml:Model></xmi:XMI>\n");
}

/// A class with an attribute for each of the links.
std::string shop(std::vector<std::string> const & links) {
    std::string text = kHead + std::string("<uml:Model xmi:id='m'><packagedElement xmi:type='uml:Class' xmi:id='c'>\n");
    for (std::string const & link : links) {
        text += "<ownedAttribute xmi:type='uml:Property'><type xmi:type='uml:Class' href='" + link +
                "'/></ownedAttribute>\n";
    }
    return text + "</packagedElement></uml:Model></xmi:XMI>\n";
}

void pack(std::string const & file, std::vector<std::pair<std::string, std::string>> const & entries) {
    int error = 0;
    zip_t * const archive = zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    ASSERT_NE(archive, nullptr);
    for (auto const & [name, content] : entries) {
        zip_source_t * const source = zip_source_buffer(archive, content.data(), content.size(), 0);
        ASSERT_GE(zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8), 0);
    }
    ASSERT_EQ(zip_close(archive), 0);
}

/// Reads a model as the command line does.
class FoundFile : public tests::DialectFixture {
protected:
    Model readFrom(std::string const & path, std::vector<Place> places = {}) {
        FileFinder files(std::move(places));
        Serializer::XmiReaderSettings settings;
        settings.setSkipUnreadableExternalFiles(true);
        files.prepare(settings);
        reader = Serializer::XmiReader(settings);
        addReadTransforms(reader);
        Model const model(reader.read(files.open(path)));
        files.restoreUri(model);
        for (int i = 0; i < reader.referredModelCount(); ++i) {
            files.restoreUri(Model(reader.getReferredModel(i)));
        }
        return model;
    }
    /// The names of the types of all attributes, empty where a link led nowhere.
    static std::vector<std::string> typesIn(Model const & model) {
        std::vector<std::string> names;
        for (ImmutableClassObject const & object : objectsIn(model)) {
            if (ImmutableProperty const property(object); property.isValid()) {
                names.push_back(property.getType().isValid() ? property.getType().getName().str() : "");
            }
        }
        return names;
    }
    std::string rewritten(Model const & model) {
        Serializer::XmiWriterSettings settings;
        settings.setKeepFileIds(true);
        EXPECT_TRUE(Serializer::XmiWriter(settings).write(folder.path("out.xmi"), model));
        return folder.content("out.xmi");
    }
};

TEST_F(FoundFile, OfALibraryHasTheTypesThatToolsNameAndIsNamedByItsUriAfterwards) {
    std::vector<std::pair<std::string, std::string>> const links = {
        {"pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml#String", "String"},
        {"pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml#//Integer", "Integer"},
        {"pathmap://UML_LIBRARIES/JavaPrimitiveTypes.library.uml#int", "int"},
        {"pathmap://UML_LIBRARIES/EcorePrimitiveTypes.library.uml#EString", "EString"},
        {"pathmap://UML_LIBRARIES/XMLPrimitiveTypes.library.uml#Long", "Long"},
        {"pathmap://UML_METAMODELS/UML.metamodel.uml#Package", "Package"},
        {"http://schema.omg.org/spec/UML/2.0/uml.xml#UnlimitedNatural", "UnlimitedNatural"},
        {"http://www.omg.org/spec/UML/20110701/PrimitiveTypes.xmi#Boolean", "Boolean"},
        {"http://www.omg.org/spec/UML/20131001/PrimitiveTypes.xmi#Real", "Real"},
        {"http://www.omg.org/spec/UML/20110701/UML.xmi#String", "String"},
        {"pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml#Nothing", ""}};
    std::vector<std::string> hrefs;
    std::vector<std::string> names;
    for (auto const & [href, name] : links) {
        hrefs.push_back(href);
        names.push_back(name);
    }
    Model const model = readFrom(file("shop.uml", shop(hrefs)));
    EXPECT_EQ(typesIn(model), names);
    std::string const text = rewritten(model);
    for (std::string const & href : hrefs) {
        EXPECT_THAT(text, HasSubstr("href=\"" + href + '"'));
    }
}

TEST_F(FoundFile, OfATableLiesInItsFolderAndNowhereElse) {
    std::filesystem::create_directories(folder.path("here/deep"));
    static_cast<void>(file("here/deep/a.uml", library("A")));
    static_cast<void>(file("here/b.uml", library("B")));
    static_cast<void>(file("outside.uml", library("C")));
    std::string const path =
        file("shop.uml", shop({"pathmap://SHOP/deep/a.uml#A", "urn:shop:../outside.uml#C", "modules/b.uml#B",
                               "urn:tool:b#B", "pathmap://UML_LIBRARIES/b.uml#B"}));
    Model const model = readFrom(path, {{"pathmap://SHOP/", folder.path("here")},
                                        {"urn:shop:", folder.path("here")},
                                        {"b.uml", folder.path("here")},
                                        {"urn:tool:b", folder.path("here/b.uml")}});
    EXPECT_THAT(typesIn(model), ElementsAre("A", "", "B", "B", "B"));
    EXPECT_THAT(rewritten(model), HasSubstr("href=\"pathmap://SHOP/deep/a.uml#A\""));
    // The longer one is the more exact one, wherever it stands in the table.
    EXPECT_THAT(typesIn(readFrom(
                    path, {{"pathmap://SHOP/", folder.path("")}, {"pathmap://SHOP/deep/", folder.path("here/deep")}})),
                ElementsAre("A", "", "", "", ""));
}

TEST_F(FoundFile, OfAContainerHasItsLinksBesideTheContainer) {
    std::filesystem::create_directories(folder.path("models"));
    static_cast<void>(file("above.uml", library("Above")));
    static_cast<void>(file("models/beside.uml", library("Beside")));
    pack(folder.path("models/module.xml.zip"), {{"module.xml", library("Packed")}});
    std::string const packed = folder.path("models/shop.mdzip");
    pack(packed, {{"com.nomagic.magicdraw.uml_model.shared_model", "<none/>"},
                  {"com.nomagic.magicdraw.uml_model.model",
                   shop({"beside.uml#Beside", "../above.uml#Above", "module.xml.zip#Packed", "#c"})},
                  {"META-INF/container.xml", std::string(100'000, ' ')}});
    Model const model = readFrom(packed);
    ASSERT_TRUE(model.isValid());
    EXPECT_THAT(typesIn(model), ElementsAre("Beside", "Above", "Packed", ""));
    EXPECT_EQ(model.getUri(), "file://" + packed);
    std::string const text = rewritten(model);
    EXPECT_THAT(text, HasSubstr("href=\"models/module.xml.zip#Packed\""));
    EXPECT_THAT(text, HasSubstr("href=\"above.uml#Above\""));
    EXPECT_THAT(text, Not(HasSubstr("zel-"))); // nothing of the temporary folder
}

TEST_F(FoundFile, OfAContainerIsTheLargestOfTheLikeliestEntries) {
    std::string const packed = folder.path("several.zip");
    pack(packed, {{"settings.xml", std::string(1000, ' ')},
                  {"small.uml", library("Small")},
                  {"large.uml", library("Large") + std::string(100, ' ')},
                  {"picture.png", std::string(5000, 'p')}});
    UnpackedFile const unpacked(packed);
    EXPECT_EQ(unpacked.entry(), "large.uml");
    EXPECT_EQ(std::filesystem::file_size(unpacked.path()), library("Large").size() + 100);
}

TEST(UnpackedFile, RefusesWhatHoldsNoModelOrTooMuch) {
    TemporaryFolder const folder;
    std::string const packed = folder.path("a.zip");
    pack(packed, {{"readme.txt", "none"}});
    EXPECT_RAISES("cannot unpack " + packed + ": it is a container without a model: no entry is named like one",
                  UnpackedFile(packed));

    pack(packed, {{"bomb.xmi", std::string(17 * 1024 * 1024, ' ')}});
    EXPECT_RAISES("cannot unpack " + packed + ": bomb.xmi becomes larger than 16777216 bytes", UnpackedFile(packed));
    EXPECT_RAISES("cannot unpack " + packed + ": bomb.xmi becomes larger than 1000 bytes",
                  UnpackedFile(packed, {1000, 200, 10}));

    pack(packed, {{"a.xmi", ""}, {"b.xmi", ""}});
    EXPECT_RAISES("cannot unpack " + packed + ": it has more than 1 entries", UnpackedFile(packed, {1000, 200, 1}));

    std::string const cut = folder.content("a.zip").substr(0, 40);
    EXPECT_THROW(UnpackedFile(folder.file("cut.zip", cut)), Exception);
    EXPECT_TRUE(UnpackedFile::isPacked(folder.path("cut.zip")));
    EXPECT_FALSE(UnpackedFile::isPacked(folder.file("short", "PK")));
}

} // namespace
} // namespace ZEL::Interchange
