#include "Command.h"
#include "Files.h"
#include "Models.h"
#include "Options.h"
#include "Progress.h"
#include "Text.h"

#include <ZEL/base/Exception.h>
#include <ZEL/base/SafeFile.h>
#include <ZEL/tools/HTMLPrinter.h>

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

std::string const kEnding = ".html";

/// The printer adds the ending to the name that it is given.
std::string withoutEnding(std::string const & page) {
    return page.ends_with(kEnding) ? page.substr(0, page.size() - kEnding.size()) : page;
}

/// Names and values come from elsewhere and must not be taken for markup.
class PagePrinter : public ZEL::util::HTMLPrinter {
public:
    PagePrinter() : HTMLPrinter(Overrides::MarkupAlone) {}
    using HTMLPrinter::printPage;

protected:
    std::string markupOf(std::string text) override { return escapedForHtml(text); }
};

void writePage(ZEL::Model const & model, std::string const & name, std::string const & page) {
    Progress const progress("writing " + page);
    ZEL::SafeFile file(page, ZEL::SafeFile::Beside::FreeName);
    std::string const cannotWrite = "cannot write " + page + ": ";
    if (!file.open()) {
        throw Trouble(cannotWrite + file.getReason());
    }
    try {
        PagePrinter().printPage(model, name, file.getTemporaryName());
    } catch (ZEL::Exception const & exception) {
        file.remove();
        throw Trouble(cannotWrite + exception.what());
    } catch (...) {
        file.remove();
        throw;
    }
    ZEL::SafeFile::Result const result = file.put();
    if (result == ZEL::SafeFile::Result::Damaged) {
        throw Trouble(cannotWrite + file.getReason() + "; what was written is in " + file.getTemporaryName());
    }
    if (result != ZEL::SafeFile::Result::Done) {
        file.remove();
        throw Trouble(cannotWrite + file.getReason());
    }
}

struct Arguments {
    Input input;
    std::string output;
};

ExitCode report(Arguments const & given) {
    std::string const name = withoutEnding(given.output);
    std::string const page = writablePage(name);
    OpenModel const opened = readModel(given.input.file, given.input.settings);
    writePage(opened.model, name, page);
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
