#include "ReportCommand.h"

#include "Files.h"
#include "Leftover.h"
#include "Models.h"
#include "Progress.h"

#include <ZEL/Exception.h>
#include <ZEL/tools/HTMLPrinter.h>

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <utility>

namespace cli {
namespace {

std::string const kEnding = ".html";

/// The printer puts the ending behind the name that it is given.
std::string withoutEnding(std::string const & page) {
    return page.ends_with(kEnding) ? page.substr(0, page.size() - kEnding.size()) : page;
}

/// Puts a file aside for the length of the block. At the end it is back in its place, unless it was replaced.
class SetAside {
public:
    explicit SetAside(std::string const & file) : fFile(file) {
        std::error_code failure;
        if (std::filesystem::symlink_status(fFile, failure).type() == std::filesystem::file_type::regular) {
            fPlace = fFile + '~';
            std::filesystem::rename(fFile, fPlace);
        }
    }
    ~SetAside() {
        std::error_code ignored;
        if (!fPlace.empty()) {
            std::filesystem::rename(fPlace, fFile, ignored);
        }
    }
    SetAside(SetAside const &) = delete;
    SetAside & operator=(SetAside const &) = delete;

    void replaced() {
        if (!fPlace.empty()) {
            std::filesystem::remove(std::exchange(fPlace, std::string()));
        }
    }

private:
    std::string const fFile;
    std::string fPlace; ///< empty if there is nothing to bring back
};

/// The printer writes the page where it is to stand, since the page bears its own name.
void writePage(ZEL::Model const & model, std::string const & name) {
    std::string const page = name + kEnding;
    requireWritable(page);
    Progress const progress("writing " + page);
    try {
        SetAside earlier(page);
        Leftover leftover(page);
        static_cast<void>(ZEL::util::HTMLPrinter().print(model, name));
        leftover.keep();
        earlier.replaced();
    } catch (std::filesystem::filesystem_error const & failure) {
        throw Trouble("cannot write " + page + ": " + failure.code().message());
    } catch (ZEL::Exception const & exception) {
        throw Trouble("cannot write " + page + ": " + exception.what());
    }
}

} // namespace

void ReportCommand::declare(CLI::App & app) {
    app.add_option("FILE", fFile, "A model file")->required();
    app.add_option("OUT", fOutput, "The page to write; .html is put behind a name that does not end so")->required();
}

ExitCode ReportCommand::run() {
    OpenModel const opened = readModel(fFile);
    std::string const name = withoutEnding(fOutput);
    writePage(opened.model, name);
    std::cout << printable(name + kEnding) << '\n';
    return Done;
}

} // namespace cli
