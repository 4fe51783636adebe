#include "ReportCommand.h"

#include "Console.h"
#include "Models.h"

#include <ZEL/Exception.h>
#include <ZEL/tools/HTMLPrinter.h>

#include <CLI/CLI.hpp>

#include <iostream>
#include <string_view>

namespace cli {
namespace {

/// The printer puts the ending behind the name that it is given.
std::string withoutEnding(std::string const & page) {
    constexpr std::string_view ending = ".html";
    return page.ends_with(ending) ? page.substr(0, page.size() - ending.size()) : page;
}

/// Gives the path of the page.
std::string writePage(ZEL::Model const & model, std::string const & name) {
    Progress const progress("writing " + name + ".html");
    try {
        return ZEL::util::HTMLPrinter().print(model, name);
    } catch (ZEL::Exception const & exception) {
        throw Trouble("cannot write " + name + ".html: " + exception.what());
    }
}

} // namespace

void ReportCommand::declare(CLI::App & app) {
    app.add_option("FILE", fFile, "A model file")->required();
    app.add_option("OUT", fOutput, "The page to write; .html is put behind a name that does not end so")->required();
}

ExitCode ReportCommand::run() {
    OpenModel const opened = readModel(fFile);
    std::cout << writePage(opened.model, withoutEnding(fOutput)) << '\n';
    return Done;
}

} // namespace cli
