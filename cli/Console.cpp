#include "Console.h"

#include "Command.h"
#include "Files.h"
#include "Text.h"

#include <ZEL/logging/LogRecord.h>
#include <ZEL/logging/Logger.h>

#include <sys/stat.h>

#include <exception>

namespace cli {
namespace {

/// Messages quote names of models from elsewhere, which must not be taken for markup.
class LogPage : public ZEL::HTMLLogHandler {
public:
    using HTMLLogHandler::HTMLLogHandler;

    void _publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) override {
        ZEL::LogRecord escaped(dynamic_cast<ZEL::LogRecord const &>(record));
        escaped.setMessage(escapedForHtml(escaped.getMessage()));
        HTMLLogHandler::_publish(level, escaped);
    }
};

} // namespace

Console::Console() { ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off); }

Console::~Console() {
    if (fHtmlLog != nullptr) {
        ZEL::Logger::instance()->removeHandler(fHtmlLog.get());
    }
}

void Console::logInto(std::string const & name) {
    std::string const file = writablePage(name);
    // Only a plain file can be moved away as the backup of the previous log.
    struct stat status {};
    if (::lstat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
        throw Trouble("cannot write " + file + ": not a plain file");
    }
    try {
        fHtmlLog = std::make_unique<LogPage>(name);
    } catch (std::exception const & exception) {
        throw Trouble("cannot write " + file + ": " + exception.what());
    }
    fLogFile = file;
    ZEL::Logger::instance()->addHandler(fHtmlLog.get(), ZEL::LogLevel::all);
}

void Console::endLog() {
    if (fHtmlLog == nullptr) {
        return;
    }
    fHtmlLog->close();
    if (!fHtmlLog->failureReason().empty()) {
        throw Trouble("cannot write " + fLogFile + ": " + fHtmlLog->failureReason());
    }
}

} // namespace cli
