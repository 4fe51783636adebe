#pragma once

#include <host/TemporaryFolder.h>
#include <kernel/ZEL/logging/LogCapture.h>
#include <kernel/ZEL/metamodel/ModelFixture.h>
#include <kernel/ZEL/serializer/ContextText.h>

namespace ZEL::tests {

using Serializer::Merger;
using Serializer::ReadReport;
using Serializer::XmiFormat;
using Serializer::XmiReader;
using Serializer::XmiReaderSettings;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// The entries of a report: "skipped other 2".
inline std::vector<std::string> linesOf(ReadReport const & report) {
    std::vector<std::string> lines;
    auto const add = [&lines](std::string const & what, ReadReport::Counts const & counts) {
        for (auto const & [name, count] : counts) {
            lines.push_back(what + " " + name + " " + std::to_string(count));
        }
    };
    add("skipped", report.skippedElements());
    add("inside", report.skippedContents());
    add("version", report.otherVersions());
    add("ignored", report.ignoredAttributes());
    add("rejected", report.rejectedValues());
    add("replaced", report.replacedValues());
    add("uncontained", report.uncontainedObjects());
    add("unresolved", report.unresolvedReferences());
    add("unread", report.unreadFiles());
    return lines;
}

/// A folder for files, a log that is kept, and the texts of small documents. In those, "@" stands for the beginning of
/// the ids of a model, "_zel_<uuid>_", and "@@" for that of another model's.
struct ReaderTest : testing::Test {
    static constexpr char kUuid[] = "11111111-2222-3333-4444-555555555555";
    static constexpr char kOther[] = "99999999-2222-3333-4444-555555555555";

    static std::string filled(std::string text) {
        for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at)) {
            bool const isOther = text.compare(at, 2, "@@") == 0;
            std::string id("_zel_");
            id.append(isOther ? kOther : kUuid).append("_");
            text.replace(at, isOther ? 2 : 1, id);
        }
        return text;
    }
    static std::string document(std::string const & content) {
        return "<?xml version='1.0' encoding='UTF-8'?>\n"
               "<xmi:XMI xmi:version='2.1' xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' "
               "xmlns:ZEL='http://schema.omg.org/spec/MOF/2.0'>\n" +
               content + "</xmi:XMI>\n";
    }
    /// A model "m" with a package "top" and the given elements in it.
    static std::string model(std::string const & elements, std::string const & uuid = kUuid) {
        std::string const id = "_zel_" + uuid;
        return "<ZEL:MetaModel xmi:id='" + id + "' name='m'>\n<topPackage xmi:type='ZEL:Package' xmi:id='" + id +
               "_2' name='top'>\n" + elements + "</topPackage>\n</ZEL:MetaModel>\n";
    }
    static std::string element(std::string const & type, int number, std::string const & attributes = {},
                               std::string const & content = {}) {
        return "<packagedElement xmi:type='ZEL:" + type + "' xmi:id='@" + std::to_string(number) + "' " + attributes +
               ">" + content + "</packagedElement>\n";
    }
    static std::string attribute(int number, std::string const & attributes, std::string const & content = {}) {
        return "<ownedAttribute xmi:type='ZEL:Property' xmi:id='@" + std::to_string(number) + "' " + attributes + ">" +
               content + "</ownedAttribute>\n";
    }

    std::string file(std::string const & name, std::string const & text) { return folder.file(name, filled(text)); }
    MetaModel read(std::string const & text) { return MetaModel(reader.read(file("in.xmi", text))); }
    MetaModel readModel(std::string const & elements) { return read(document(model(elements))); }

    [[nodiscard]] std::vector<std::string> reported() const { return linesOf(reader.report()); }

    static PackageableElement named(MetaModel const & model, std::string const & name) {
        return model.getTopPackage().getPackagedElementByName(String(name));
    }
    static Class classNamed(MetaModel const & model, std::string const & name) { return Class(named(model, name)); }
    static std::vector<std::string> elementNames(MetaModel const & model) {
        return namesOf(model.getTopPackage().getPackagedElements());
    }
    TemporaryFolder folder;
    LogCapture log;
    XmiReaderSettings settings; ///< for tests that make the reader anew
    XmiReader reader;
};

} // namespace ZEL::tests
