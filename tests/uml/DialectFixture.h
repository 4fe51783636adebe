#pragma once

#include "host/TemporaryFolder.h"
#include "support/Texts.h"

#include <ZEL/ZEL.h>

#include <GenericComponent/MetaModelRegistration.h>
#include <NumericTypes/MetaModelRegistration.h>
#include <RhapsodyPlatform/MetaModelRegistration.h>
#include <Tessel/MetaModelRegistration.h>
#include <gtest/gtest.h>
#include <uml/MetaModelRegistration.h>
#include <uml/Model.h>

#include <regex>

namespace ZEL::tests {

/// While it lives, UML and all its profiles are registered. No model of them may outlive it.
class UmlWithProfiles {
public:
    UmlWithProfiles() {
        // Each registers uml, too.
        NumericTypes::registerMetaModel();
        GenericComponent::registerMetaModel();
        Tessel::registerMetaModel();
        RhapsodyPlatform::registerMetaModel();
    }
    ~UmlWithProfiles() {
        RhapsodyPlatform::unregisterMetaModel();
        Tessel::unregisterMetaModel();
        GenericComponent::unregisterMetaModel();
        NumericTypes::unregisterMetaModel();
        uml::unregisterMetaModel();
    }
    UmlWithProfiles(UmlWithProfiles const &) = delete;
    UmlWithProfiles & operator=(UmlWithProfiles const &) = delete;
};

/// Files of UML models, with the metamodel and its profiles registered.
///
/// In the texts of tests, "@1" stands for the prefixed uuid of a model, "@2" for the URI of the file that is written.
class DialectFixture : public testing::Test {
protected:
    static constexpr char kId[] = "_zel_11111111-2222-3333-4444-555555555555";

    DialectFixture() { Logger::instance()->setDefaultHandlerLevel(LogLevel::off); }
    ~DialectFixture() override { Logger::instance()->setDefaultHandlerLevel(LogLevel::info); }

    /// The text with its placeholders filled in, as a file.
    std::string file(std::string const & name, std::string const & text) const {
        return folder.file(name, replaced(text, "@1", kId));
    }
    uml::Model read(std::string const & path, Serializer::XmiFormat format = Serializer::XmiFormat::Standard) {
        Serializer::XmiReaderSettings settings;
        settings.setInputFormat(format);
        reader = Serializer::XmiReader(settings);
        return uml::Model(reader.read(path));
    }
    void write(Model const & model, Serializer::XmiFormat format) const {
        Serializer::XmiWriterSettings settings;
        settings.setOutputFormat(format);
        ASSERT_TRUE(Serializer::XmiWriter(settings).write(folder.path("out.xmi"), model));
    }
    /// What was written, with placeholders: ids that were made for the file are "#1", "#2", ... in the order in which
    /// they are met.
    [[nodiscard]] std::string written(Model const & model) const {
        std::string text = replaced(folder.content("out.xmi"), "_zel_" + model.getUuidBase().str(), "@1");
        text = replaced(text, "file://" + folder.path("out.xmi"), "@2");
        std::regex const newId("_zel_[0-9a-f-]{36}(?![0-9a-f-])");
        int number = 0;
        for (std::smatch found; std::regex_search(text, found, newId);) {
            text = replaced(text, found.str(), "#" + std::to_string(++number));
        }
        return text;
    }

    UmlWithProfiles metaModels;
    TemporaryFolder folder;
    Serializer::XmiReader reader;
};

} // namespace ZEL::tests
