#include "Models.h"

#include "Command.h"
#include "Console.h"

#include <ZEL/Exception.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/NamedElement.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/serializer/XmiWriter.h>

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <system_error>
#include <utility>

namespace cli {
namespace {

void tellLosses(std::string const & file, ZEL::Serializer::ReadReport::Counts const & counts,
                std::string const & what) {
    for (auto const & [name, count] : counts) {
        std::cerr << "zel: " << file << ": " << what << ' ' << name;
        if (count > 1) {
            std::cerr << " (" << count << " times)";
        }
        std::cerr << '\n';
    }
}

void tellLosses(std::string const & file, ZEL::Serializer::ReadReport const & report) {
    tellLosses(file, report.unreadFiles(), "not read, though a link leads there:");
    tellLosses(file, report.skippedElements(), "element left out:");
    tellLosses(file, report.ignoredAttributes(), "attribute left out:");
    tellLosses(file, report.rejectedValues(), "value left out:");
    tellLosses(file, report.unresolvedReferences(), "link without target:");
}

} // namespace

OpenModel readModel(std::string const & file, ZEL::Serializer::XmiReaderSettings settings) {
    Progress const progress("reading " + file);
    if (std::error_code failure; !std::filesystem::exists(std::filesystem::status(file, failure))) {
        throw Trouble("cannot read " + file + ": " + failure.message());
    }
    settings.setSkipUnreadableExternalFiles(true);
    ZEL::Serializer::XmiReader reader(settings);
    OpenModel opened;
    try {
        opened.model = ZEL::Model(reader.read(file));
    } catch (ZEL::Exception const & exception) {
        throw Trouble("cannot read " + file + ": " + exception.what());
    }
    if (!opened.model.isValid()) {
        throw Trouble("cannot read " + file + ": it holds no model of a known metamodel");
    }
    for (int i = 0; i < reader.referredModelCount(); ++i) {
        opened.companions.emplace_back(reader.getReferredModel(i));
    }
    tellLosses(file, reader.report());
    return opened;
}

void writeModel(std::string const & file, ZEL::Model const & model, ZEL::Serializer::XmiFormat format) {
    Progress const progress("writing " + file);
    ZEL::Serializer::XmiWriterSettings settings;
    settings.setOutputFormat(format);
    std::string reason;
    try {
        if (ZEL::Serializer::XmiWriter(settings).write(file, model)) {
            return;
        }
        reason = Console::lastError();
    } catch (ZEL::Exception const & exception) {
        reason = exception.what();
    }
    throw Trouble("cannot write " + file + ": " + reason);
}

void addFormatOption(CLI::App & app, std::string const & name, ZEL::Serializer::XmiFormat & format,
                     std::vector<std::string> const & formats, std::string const & description) {
    app.add_option_function<std::string>(
           name,
           [&format](std::string const & text) {
               using ZEL::Serializer::XmiFormat;
               format = text == "magicdraw"  ? XmiFormat::MagicDraw
                        : text == "rhapsody" ? XmiFormat::Rhapsody
                                             : XmiFormat::Standard;
           },
           description)
        ->check(CLI::IsMember(formats));
}

std::vector<ZEL::ImmutableClassObject> objectsOf(ZEL::ImmutableClassObject const & root) {
    std::vector<ZEL::ImmutableClassObject> found;
    std::vector<ZEL::ImmutableClassObject> open{root};
    while (!open.empty()) {
        found.push_back(open.back());
        open.pop_back();
        std::vector<ZEL::ImmutableClassObject> const children = found.back().getContaineeZELs().toVector();
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    return found;
}

std::string describe(ZEL::ImmutableClassObject const & object) {
    std::string text = object.getMetaClass().getName();
    ZEL::ImmutableNamedElement const element(object);
    if (element.isValid() && element.hasName()) {
        text += " '" + element.getQualifiedName().str() + '\'';
    }
    return text + " (" + object.getSiid().str() + ')';
}

std::string counted(std::size_t count, std::string const & noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

} // namespace cli
