#include "Command.h"
#include "Files.h"
#include "Models.h"
#include "Options.h"
#include "Text.h"

#include <ZEL/tools/HTMLPrinter.h>

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

/// Names and values come from elsewhere and must not be taken for markup.
class PagePrinter : public ZEL::util::HTMLPrinter {
public:
    PagePrinter() : HTMLPrinter(Overrides::MarkupAlone) {}
    using HTMLPrinter::printPage;

protected:
    std::string markupOf(std::string text) override { return escapedForHtml(text); }
};

struct Arguments {
    Input input;
    std::string output;
};

ExitCode report(Arguments const & given) {
    std::string const name = withoutPageEnding(given.output);
    std::string const page = writablePage(name);
    OpenModel const opened = readModel(given.input.file, given.input.settings);
    putPage(page, [&](std::string const & file) { PagePrinter().printPage(opened.model, name, file); });
    std::cout << printable(page) << '\n';
    return Done;
}

} // namespace

Command reportCommand(CLI::App & app) {
    auto const given = std::make_shared<Arguments>();
    addInput(app, given->input);
    addArgument(app, "OUT", given->output, "The page to write; .html is added to a name that does not end so");
    return [given] { return report(*given); };
}

} // namespace cli
