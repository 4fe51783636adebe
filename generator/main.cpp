#include "check/Check.h"
#include "family/Family.h"
#include "write/Write.h"

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace {

constexpr std::string_view kUsage = "usage: zelgen DEFINITION --out DIR [--units N] [--depends OTHER.yaml]... "
                                    "[--depfile FILE [--depfile-target FILE]]\n"
                                    "              [--namespace NAMESPACE] [--export-macro MACRO]\n";

struct Options {
    std::string definition;
    std::vector<std::string> depends;
    zelgen::WriteOptions write;
};

unsigned int numberOf(std::string const & text) {
    unsigned int number = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0 || number > 1000) {
        throw std::invalid_argument("--units: found '" + text + "', expected a number from 1 to 1000");
    }
    return number;
}

Options parse(std::vector<std::string> const & arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const & name = arguments[i];
        if (name.rfind("--", 0) != 0) {
            if (!options.definition.empty()) {
                throw std::invalid_argument("found a second definition '" + name + "', expected one");
            }
            options.definition = name;
            continue;
        }
        if (i + 1 == arguments.size()) {
            throw std::invalid_argument("found " + name + " at the end, expected a value behind it");
        }
        std::string const & value = arguments[++i];
        if (name == "--out") {
            options.write.directory = value;
        } else if (name == "--units") {
            options.write.units = numberOf(value);
        } else if (name == "--depends") {
            options.depends.push_back(value);
        } else if (name == "--depfile") {
            options.write.depfile = value;
        } else if (name == "--depfile-target") {
            options.write.depfileTarget = value;
        } else if (name == "--namespace") {
            options.write.cppNamespace = value;
        } else if (name == "--export-macro") {
            options.write.exportMacro = value;
        } else {
            throw std::invalid_argument("found unknown option '" + name + "'");
        }
    }
    if (options.definition.empty() || options.write.directory.empty()) {
        throw std::invalid_argument("a definition and --out are needed");
    }
    return options;
}

int run(Options & options) {
    zelgen::Diagnostics diagnostics;
    std::vector<zelgen::Definition> definitions{zelgen::loadDefinition(options.definition, diagnostics)};
    for (std::string const & other : options.depends) {
        definitions.push_back(zelgen::loadDefinition(other, diagnostics));
    }
    if (!options.write.cppNamespace.empty()) {
        definitions.front().cppNamespace.text = options.write.cppNamespace;
    }
    std::vector<zelgen::Definition const *> pointers;
    pointers.reserve(definitions.size());
    for (zelgen::Definition const & definition : definitions) {
        pointers.push_back(&definition);
    }
    if (diagnostics.empty()) {
        zelgen::check(pointers, diagnostics);
    }
    if (!diagnostics.empty()) {
        for (std::string const & message : diagnostics.messages()) {
            std::cerr << message << '\n';
        }
        return EXIT_FAILURE;
    }
    for (zelgen::Definition const & definition : definitions) {
        options.write.inputs.push_back(definition.file);
        options.write.inputs.insert(options.write.inputs.end(), definition.parts.begin(), definition.parts.end());
    }
    zelgen::write(zelgen::Family(pointers), options.write);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char ** argv) {
    try {
        Options options = parse({argv + 1, argv + argc});
        return run(options);
    } catch (std::invalid_argument const & mistake) {
        std::cerr << "zelgen: " << mistake.what() << '\n' << kUsage;
        return 2;
    } catch (std::exception const & failure) {
        std::cerr << "zelgen: " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
