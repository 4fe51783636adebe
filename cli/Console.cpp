#include "Console.h"

#include "Command.h"
#include "Files.h"

#include <ZEL/Logger.h>

#include <sys/stat.h>

#include <exception>

namespace cli {

Console::Console() { ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off); }

Console::~Console() {
    if (fHtmlLog != nullptr) {
        ZEL::Logger::instance()->removeHandler(fHtmlLog.get());
    }
}

void Console::logInto(std::string const & name) {
    std::string const file = name + ".html";
    requireWritable(file);
    // Only a plain file can be moved away as the backup of the log before.
    struct stat status {};
    if (::lstat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
        throw Trouble("cannot write " + file + ": not a plain file");
    }
    try {
        fHtmlLog = std::make_unique<ZEL::HTMLLogHandler>(name);
    } catch (std::exception const & exception) {
        throw Trouble("cannot write " + file + ": " + exception.what());
    }
    ZEL::Logger::instance()->addHandler(fHtmlLog.get(), ZEL::LogLevel::all);
}

} // namespace cli
