#include "Options.h"

#include "Text.h"
#include "load/Suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iterator>
#include <limits>
#include <system_error>

namespace cli {
namespace {

template <class Number>
void add(CLI::App & app, std::string const & name, Number & number, std::string const & description,
         Presence presence) {
    auto const check = [](std::string const & text) {
        Number value = 0;
        std::from_chars_result const result = std::from_chars(text.data(), text.data() + text.size(), value);
        if (result.ec == std::errc() && result.ptr == text.data() + text.size() && value >= Number(0)) {
            return std::string();
        }
        return "found " + nameOf(text) + ", expected a whole number from 0 to " +
               std::to_string(std::numeric_limits<Number>::max());
    };
    CLI::Option * const option = app.add_option(name, number, description)->check(check)->type_name("NUMBER");
    if (presence == Presence::Required) {
        option->required();
    } else {
        option->capture_default_str();
    }
}

/// The parts before and after the last "=", since URIs may have some.
ZEL::Interchange::Place placeOf(std::string const & text) {
    std::size_t const sign = text.rfind('=');
    return sign == std::string::npos ? ZEL::Interchange::Place()
                                     : ZEL::Interchange::Place{text.substr(0, sign), text.substr(sign + 1)};
}

} // namespace

void addArgument(CLI::App & app, std::string const & name, std::string & text, std::string const & description) {
    app.add_option(name, text, description)->required();
}

void addText(CLI::App & app, std::string const & name, std::string & text, std::string const & kind,
             std::string const & description) {
    app.add_option(name, text, description)->capture_default_str()->type_name(kind);
}

void addOptionalArgument(CLI::App & app, std::string const & name, std::optional<std::string> & text,
                         std::string const & description) {
    app.add_option(name, text, description);
}

void addTexts(CLI::App & app, std::string const & name, std::vector<std::string> & texts, std::string const & kind,
              std::string const & description) {
    app.add_option(name, texts, description)->type_name(kind)->expected(1)->take_all();
}

void addFlag(CLI::App & app, std::string const & name, bool & isGiven, std::string const & description) {
    app.add_flag(name, isGiven, description);
}

void addNumber(CLI::App & app, std::string const & name, int & number, std::string const & description,
               Presence presence) {
    add(app, name, number, description, presence);
}

void addNumber(CLI::App & app, std::string const & name, unsigned int & number, std::string const & description,
               Presence presence) {
    add(app, name, number, description, presence);
}

void addFormat(CLI::App & app, std::string const & name, std::string & format, std::vector<std::string> const & formats,
               std::string const & description) {
    auto const check = [formats](std::string const & text) {
        bool const isKnown = std::find(formats.begin(), formats.end(), text) != formats.end();
        return isKnown ? std::string() : "found " + nameOf(text) + ", expected " + zelgen::anyOf(formats);
    };
    app.add_option(name, format, description + ": " + zelgen::anyOf(formats) + "; default " + format)
        ->check(check)
        ->type_name("FORMAT");
}

void addLinks(CLI::App & app, ReadSettings & settings) {
    auto const isFolder = [](std::string const & text) {
        std::error_code failure;
        return std::filesystem::is_directory(text, failure) ? std::string()
                                                            : "found " + nameOf(text) + ", expected a folder";
    };
    auto const take = [&settings](std::string const & folder) { settings.setExternalRootFolder(folder); };
    app.add_option_function<std::string>("--root", take, "Links open no file outside of this folder; default any file")
        ->check(isFolder)
        ->type_name("FOLDER");

    auto const isPlace = [](std::string const & text) {
        ZEL::Interchange::Place const place = placeOf(text);
        std::error_code failure;
        return !place.uri.empty() && std::filesystem::exists(place.path, failure)
                   ? std::string()
                   : "found " + nameOf(text) + ", expected a URI or a file's name, =, and a folder or file";
    };
    auto const add = [&settings](std::vector<std::string> const & texts) {
        std::transform(texts.begin(), texts.end(), std::back_inserter(settings.places), placeOf);
    };
    app.add_option_function<std::vector<std::string>>(
           "--map", add,
           "Links that begin with URI, such as pathmap://SHOP/, lead into FOLDER; can be given several times")
        ->check(isPlace)
        ->type_name("URI=FOLDER")
        ->expected(1)
        ->take_all();
}

void addInput(CLI::App & app, Input & input) {
    addArgument(app, "FILE", input.file, "A model file");
    addLinks(app, input.settings);
}

} // namespace cli
