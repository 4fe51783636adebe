#include "check/Check.h"
#include "family/Family.h"
#include "load/Suggestion.h"
#include "write/Write.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr int kWrongArguments = 2;

struct Options {
    std::string definition;
    std::vector<std::string> depends;
    zelgen::WriteOptions write;
};

void declare(CLI::App & app, Options & options) {
    auto const add = [&app](std::string const & name, auto & target, std::string const & type,
                            std::string const & description) {
        return app.add_option(name, target, description)->type_name(type);
    };
    add("definition", options.definition, "", "The metamodel's definition")->required();
    add("--out", options.write.directory, "DIR", "The folder to write to, an include root; nothing else is written")
        ->required();
    add("--units", options.write.units, "N", "Into how many sources the classes are gathered, 16 unless said")
        ->check(CLI::Range(1, 1000));
    add("--depends", options.depends, "FILE", "A definition that this one builds on; may be repeated")
        ->allow_extra_args(false);
    add("--namespace", options.write.cppNamespace, "NAME", "The C++ namespace, in place of the definition's");
    add("--export-macro", options.write.exportMacro, "MACRO",
        "What stands before each class to make it visible outside its library, PREFIX_API unless said");
    CLI::Option * const depfile =
        add("--depfile", options.write.depfile, "FILE", "Where to write what the result depends on, as a rule of make");
    add("--depfile-target", options.write.depfileTarget, "FILE", "The file that the rule is about")->needs(depfile);
    app.set_version_flag("--version", "zelgen " ZEL_VERSION);
    app.footer(
        "Exit codes: 0 done; 1 the definition is wrong, or a file cannot be read or written; 2 wrong arguments.");
}

/// What is wrong with the arguments: the first unknown one and what may have been meant, or else what is missing.
std::string explain(CLI::App const & app, CLI::ParseError const & error) {
    std::vector<std::string> const unknown = app.remaining();
    if (unknown.empty()) {
        return error.what();
    }
    std::vector<std::string> known;
    for (CLI::Option const * const option : app.get_options()) {
        known.push_back(option->get_name());
    }
    return "found unexpected argument '" + unknown.front() + "'" + zelgen::suggestion(unknown.front(), known);
}

void print(std::vector<std::string> const & messages) {
    std::for_each(messages.begin(), messages.end(), [](auto const & message) { std::cerr << message << '\n'; });
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
        print(diagnostics.messages());
        return EXIT_FAILURE;
    }
    print(diagnostics.warnings());
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
        Options options;
        CLI::App app("Makes the C++ classes of a metamodel from its definition");
        declare(app, options);
        try {
            app.parse(argc, argv);
        } catch (CLI::Success const & request) {
            return app.exit(request); // help or version, which is now printed
        } catch (CLI::ParseError const & error) {
            std::cerr << "zelgen: " << explain(app, error) << " (see zelgen --help)\n";
            return kWrongArguments;
        }
        return run(options);
    } catch (std::exception const & failure) {
        std::cerr << "zelgen: " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
