#pragma once

#include <ZEL/DefaultLogHandler.h>
#include <ZEL/LogRecord.h>
#include <ZEL/Logger.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PackageableElement.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Merger.h>
#include <ZEL/serializer/XmiReader.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <host/TemporaryFolder.h>
#include <support/ExpectRaises.h>

#include <algorithm>
#include <string>
#include <vector>

namespace ZEL::Serializer::Test {

using ::ZEL::Test::raisedText;

/// Keeps what is logged while it lives.
class LogCapture : public DefaultLogHandler {
public:
    LogCapture() : DefaultLogHandler(nullptr, nullptr, LogLevel::all) {
        Logger::instance()->setDefaultHandlerLevel(LogLevel::off);
        Logger::instance()->addHandler(this, LogLevel::all);
    }
    ~LogCapture() override {
        Logger::instance()->removeHandler(this);
        Logger::instance()->setDefaultHandlerLevel(LogLevel::info);
    }
    void _publish(Quillon::System::Level const &, Quillon::System::Externalizable const & record) override {
        auto const & entry = dynamic_cast<LogRecord const &>(record);
        fEntries.push_back({entry.getLevel().getLevel(), entry.getMessage()});
    }

    /// The texts of at least this level.
    [[nodiscard]] std::vector<std::string> texts(int level = LogLevel::warning) const {
        std::vector<std::string> result;
        for (auto const & [entryLevel, text] : fEntries) {
            if (entryLevel >= level) {
                result.push_back(text);
            }
        }
        return result;
    }
    [[nodiscard]] bool has(int level, std::string const & text) const {
        return std::find(fEntries.begin(), fEntries.end(), std::pair(level, text)) != fEntries.end();
    }
    void clear() { fEntries.clear(); }

private:
    std::vector<std::pair<int, std::string>> fEntries;
};

/// A folder for files, a log that is kept, and the texts of small documents.
class ReaderTest : public ::testing::Test {
protected:
    static constexpr char kUuid[] = "11111111-2222-3333-4444-555555555555";

    /// An id of this system: "_zel_<uuid>_<number>".
    static std::string id(int number, std::string const & uuid = kUuid) {
        return "_zel_" + uuid + "_" + std::to_string(number);
    }
    static std::string document(std::string const & content) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<xmi:XMI xmi:version=\"2.1\" xmlns:xmi=\"http://schema.omg.org/spec/XMI/2.1\" "
               "xmlns:ZEL=\"http://schema.omg.org/spec/MOF/2.0\">\n" +
               content + "</xmi:XMI>\n";
    }
    /// A model "m" with a package "top" and the given elements in it.
    static std::string model(std::string const & elements, std::string const & uuid = kUuid) {
        return "<ZEL:MetaModel xmi:id=\"_zel_" + uuid +
               "\" name=\"m\">\n<topPackage xmi:type=\"ZEL:Package\" xmi:id=\"" + id(2, uuid) + "\" name=\"top\">\n" +
               elements + "</topPackage>\n</ZEL:MetaModel>\n";
    }
    static std::string element(std::string const & type, int number, std::string const & attributes = {},
                               std::string const & content = {}) {
        return "<packagedElement xmi:type=\"ZEL:" + type + "\" xmi:id=\"" + id(number) + "\" " + attributes + ">" +
               content + "</packagedElement>\n";
    }
    static std::string attribute(int number, std::string const & attributes, std::string const & content = {}) {
        return "<ownedAttribute xmi:type=\"ZEL:Property\" xmi:id=\"" + id(number) + "\" " + attributes + ">" + content +
               "</ownedAttribute>\n";
    }

    [[nodiscard]] std::string file(std::string const & name, std::string const & text) const {
        return folder.file(name, text);
    }
    MetaModel read(std::string const & text) { return MetaModel(reader.read(file("in.xmi", text))); }
    MetaModel readModel(std::string const & elements) { return read(document(model(elements))); }

    static PackageableElement named(MetaModel const & model, std::string const & name) {
        return model.getTopPackage().getPackagedElementByName(String(name));
    }
    static Class classNamed(MetaModel const & model, std::string const & name) { return Class(named(model, name)); }
    template <class S> static std::vector<std::string> names(S const & elements) {
        std::vector<std::string> result;
        for (auto const & element : elements) {
            result.push_back(element.getName().str());
        }
        return result;
    }

    TemporaryFolder folder;
    LogCapture log;
    XmiReader reader;
};

} // namespace ZEL::Serializer::Test
