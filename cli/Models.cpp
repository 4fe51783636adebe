#include "Models.h"

#include "Command.h"
#include "Files.h"
#include "Losses.h"
#include "MetaModels.h"
#include "Options.h"
#include "Progress.h"
#include "StandardStreams.h"
#include "load/Suggestion.h"

#include <ZEL/String.h>
#include <ZEL/base/SafeFile.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/interchange/ReadTransforms.h>
#include <ZEL/interchange/WriteTransforms.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/NamedElement.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/writer/XmiWriter.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <new>
#include <string>
#include <system_error>
#include <vector>

namespace cli {
namespace {

/// Why a well-formed file has no model.
std::string whyNoModel(ZEL::Serializer::ReadReport const & losses) {
    std::vector<std::string> found;
    bool isOtherXmi = !losses.otherVersions().empty();
    for (auto const & [name, count] : losses.skippedElements()) {
        isOtherXmi = isOtherXmi || name.ends_with("}XMI");
        if (!name.starts_with("{http://schema.omg.org/spec/XMI/")) {
            found.push_back(name);
        }
    }
    // Of XMI 1 only, whose elements have no namespace.
    if (losses.skippedElements().count("XMI") != 0) {
        return "it is XMI 1, which is another format; open it in the tool that wrote it, or in Eclipse UML2, and save "
               "it as XMI 2.1 or later";
    }
    if (isOtherXmi) {
        return "its XMI is of another version than 2.0 to 2.5.1";
    }
    std::string reason = "it holds no model of a known metamodel";
    if (!found.empty()) {
        reason += ", found " + found.front() + (found.size() > 1 ? " and others" : "");
    }
    return reason;
}

/// Removes what a failed write leaves beside its file, unless something of that name was there before.
class NoLeftover {
public:
    explicit NoLeftover(std::string const & file)
        : fFile(file), fIsOn(!std::filesystem::exists(std::filesystem::symlink_status(fFile.getTemporaryName()))) {}
    ~NoLeftover() {
        if (fIsOn) {
            fFile.removeLeftover();
        }
    }
    NoLeftover(NoLeftover const &) = delete;
    NoLeftover & operator=(NoLeftover const &) = delete;

    void keep() noexcept { fIsOn = false; }

private:
    ZEL::SafeFile fFile;
    bool fIsOn;
};

void writeBy(ZEL::Serializer::XmiWriterSettings & settings, std::string const & file, ZEL::Model const & model) {
    requireWritable(file);
    Progress const progress("writing " + file);
    NoLeftover noLeftover(file);
    settings.setElementPerValue(true);
    settings.setKeepFileIds(true); // nobody writes the files that the model refers to
    ZEL::Serializer::XmiWriter writer(settings);
    if (settings.getOutputFormat().getFormat() == ZEL::Serializer::XmiFormat::Standard) {
        ZEL::Interchange::addWriteTransforms(writer, model);
    }
    std::string reason;
    try {
        if (writer.write(file, model)) {
            return;
        }
        reason = writer.failureReason();
    } catch (std::bad_alloc const &) {
        throw;
    } catch (std::exception const & exception) {
        reason = exception.what();
    }
    if (!writer.keptFile().empty()) {
        noLeftover.keep();
        reason += "; what was written is in " + writer.keptFile();
    }
    throw Trouble("cannot write " + file + ": " + reason);
}

std::filesystem::path folderOf(std::string const & file) {
    return std::filesystem::absolute(file).lexically_normal().parent_path();
}

/// Where a link of a file leads that has been moved out of its folder.
class MovedLinks {
public:
    MovedLinks(std::string const & file, std::string const & versionsOf)
        : fFrom(folderOf(file)), fTo(folderOf(versionsOf)) {}

    /// Empty for what is not found there.
    [[nodiscard]] std::string pathOf(std::string const & uri) const {
        std::filesystem::path const path = ZEL::Interchange::pathOfFileUri(uri);
        std::filesystem::path const moved = (fTo / path.lexically_relative(fFrom)).lexically_normal();
        std::error_code failure;
        return !path.empty() && std::filesystem::is_regular_file(moved, failure) ? moved.string() : std::string();
    }

private:
    std::filesystem::path fFrom;
    std::filesystem::path fTo;
};

/// The end of a name says most, and the name of an object deep in a model can fill many screens.
std::string shortened(std::string const & name) {
    constexpr std::size_t kLongest = 200;
    std::size_t const dot = name.size() > kLongest ? name.find('.', name.size() - kLongest) : std::string::npos;
    return dot == std::string::npos ? name : "..." + name.substr(dot);
}

/// Invalid if there is none.
ZEL::Model registeredMetamodel(std::string const & uriOrPrefix) {
    std::string const uri = ZEL::NamespaceRegistry::instance()->getMetaUri(uriOrPrefix);
    return ZEL::MetaModelRegistry::instance()->getModelFromUri(uri.empty() ? uriOrPrefix : uri);
}

} // namespace

OpenModel openModel(std::string const & file, ReadSettings settings) {
    requireReadable(file);
    Progress const progress("reading " + file);
    registerMetaModelsFor(file, settings);
    settings.setSkipUnreadableExternalFiles(true);
    ZEL::Interchange::FileFinder files(settings.places);
    if (!settings.versionsOf.empty()) {
        settings.setExternalUriResolver(
            [links = MovedLinks(file, settings.versionsOf)](std::string const & uri) { return links.pathOf(uri); });
    }
    files.prepare(settings);
    ZEL::Serializer::XmiReader reader(settings);
    OpenModel opened;
    try {
        ZEL::Interchange::addReadTransforms(reader);
        opened.model = ZEL::Model(reader.read(files.open(file)));
    } catch (std::bad_alloc const &) {
        throw;
    } catch (std::exception const & exception) {
        throw Trouble("cannot read " + file + ": " + files.withoutTemporaryNames(exception.what()));
    }
    if (!opened.model.isValid()) {
        throw Trouble("cannot read " + file + ": " + whyNoModel(reader.report()));
    }
    for (int i = 0; i < reader.referredModelCount(); ++i) {
        opened.companions.emplace_back(reader.getReferredModel(i));
        opened.companionPaths.push_back(ZEL::Interchange::pathOfFileUri(opened.companions.back().getUri()));
        files.restoreUri(opened.companions.back());
    }
    files.restoreUri(opened.model);
    opened.losses = reader.report();
    return opened;
}

OpenModel readModel(std::string const & file, ReadSettings const & settings) {
    OpenModel opened = openModel(file, settings);
    std::string const kept = summaryOf(opened.losses, Fate::Kept);
    std::string const leftOut = summaryOf(opened.losses, Fate::LeftOut);
    if (!opened.losses.isEmpty()) {
        complain(file + ": " + (kept.empty() ? "" : "kept, not understood: " + kept) +
                 (kept.empty() || leftOut.empty() ? "" : "; ") + (leftOut.empty() ? "" : "left out: " + leftOut) +
                 " (see zel info)");
    }
    return opened;
}

std::vector<std::pair<ZEL::Model, ZEL::Model>> companionsOfBoth(OpenModel const & first, OpenModel const & second) {
    std::vector<std::pair<ZEL::Model, ZEL::Model>> both;
    for (std::size_t i = 0; i < second.companions.size(); ++i) {
        std::string const & path = second.companionPaths[i];
        auto const indexOf = [&](auto const & isIt) {
            std::size_t at = 0;
            while (at < first.companions.size() && !isIt(at)) {
                ++at;
            }
            return at;
        };
        std::size_t found = indexOf([&](std::size_t at) {
            return first.companions[at].getUri() == second.companions[i].getUri() ||
                   areSameFile(first.companionPaths[at], path);
        });
        if (found == first.companions.size()) {
            found = indexOf([&](std::size_t at) { return haveSameContent(first.companionPaths[at], path); });
        }
        if (found != first.companions.size()) {
            both.emplace_back(first.companions[found], second.companions[i]);
        }
    }
    return both;
}

void linkFrom(OpenModel const & opened, std::string const & output, std::string const & versionOf) {
    std::filesystem::path const folder = folderOf(output);
    for (std::size_t i = 0; i < opened.companions.size(); ++i) {
        ZEL::Model const & companion = opened.companions[i];
        std::filesystem::path const path = opened.companionPaths[i];
        if (!path.empty()) {
            ZEL::Transaction transaction(companion.getRootDeviant(), "as seen from there");
            companion.setUri("file://" +
                             (folder / path.lexically_relative(folderOf(versionOf))).lexically_normal().string());
            transaction.commit();
        }
    }
}

void writeModel(std::string const & file, ZEL::Model const & model, ZEL::Serializer::XmiFormat format) {
    ZEL::Serializer::XmiWriterSettings settings;
    settings.setOutputFormat(format);
    if (format.getFormat() != ZEL::Serializer::XmiFormat::Standard) {
        registerAllMetaModels(); // which the rules of the dialects name
    }
    writeBy(settings, file, model);
}

void writeModel(std::string const & file, ZEL::Model const & model, ZEL::Interchange::ToolForm form) {
    std::string const uml = ZEL::NamespaceRegistry::instance()->getMetaUri("uml");
    if (model.getMetaClass().getRootModel().getUri().str() != uml) {
        throw Trouble("cannot write " + file + ": the model is not one of UML");
    }
    ZEL::Serializer::XmiWriterSettings settings;
    settings.setFileForm(ZEL::Interchange::fileFormOf(form));
    writeBy(settings, file, model);
}

std::vector<std::string> const & outputFormats() {
    static std::vector<std::string> const formats{"standard", "magicdraw", "rhapsody", "eclipse-uml2", "xmi-2.5.1"};
    return formats;
}

ZEL::Serializer::XmiFormat dialectOf(std::string const & format) {
    using ZEL::Serializer::XmiFormat;
    return format == "magicdraw"  ? XmiFormat::MagicDraw
           : format == "rhapsody" ? XmiFormat::Rhapsody
                                  : XmiFormat::Standard;
}

void writeModelAs(std::string const & format, std::string const & file, ZEL::Model const & model) {
    using ZEL::Interchange::ToolForm;
    if (format == "eclipse-uml2") {
        writeModel(file, model, ToolForm::EclipseUml2);
    } else if (format == "xmi-2.5.1") {
        writeModel(file, model, ToolForm::Xmi251);
    } else {
        writeModel(file, model, dialectOf(format));
    }
}

ZEL::Model metamodelOf(std::string const & uriOrPrefix) {
    registerSmallMetaModels();
    ZEL::Model model = registeredMetamodel(uriOrPrefix);
    if (!model.isValid()) {
        registerAllMetaModels();
        model = registeredMetamodel(uriOrPrefix);
    }
    if (!model.isValid()) {
        std::vector<std::string> known;
        for (auto const & entry : ZEL::NamespaceRegistry::instance()->getMetaUriMappings()) {
            known.push_back(entry.first + " (" + entry.second + ')');
        }
        throw Trouble("metamodel: found " + nameOf(uriOrPrefix) + ", expected " + zelgen::anyOf(known));
    }
    return model;
}

std::string describe(ZEL::ImmutableClassObject const & object) {
    std::string text = object.getMetaClass().getName();
    ZEL::ImmutableNamedElement const element(object);
    if (element.isValid() && element.hasName()) {
        text += " '" + shortened(element.getQualifiedName()) + '\'';
    }
    return printable(text + " (" + object.getSiid().str() + ')');
}

} // namespace cli
