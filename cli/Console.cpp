#include "Console.h"

#include <ZEL/LogRecord.h>
#include <ZEL/Logger.h>

#include <unistd.h>

#include <algorithm>
#include <iostream>

namespace cli {
namespace {

std::string & keptError() {
    static std::string error;
    return error;
}

} // namespace

std::string oneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

Console::Console() : DefaultLogHandler(nullptr, nullptr, ZEL::LogLevel::error) {
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
    ZEL::Logger::instance()->addHandler(this, ZEL::LogLevel::error);
}

Console::~Console() {
    if (fHtmlLog != nullptr) {
        ZEL::Logger::instance()->removeHandler(fHtmlLog.get());
    }
    ZEL::Logger::instance()->removeHandler(this);
}

void Console::logInto(std::string const & name) {
    fHtmlLog = std::make_unique<ZEL::HTMLLogHandler>(name);
    ZEL::Logger::instance()->addHandler(fHtmlLog.get(), ZEL::LogLevel::all);
}

void Console::_publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) {
    if (isLoggable(level, record)) {
        keptError() = dynamic_cast<ZEL::LogRecord const &>(record).getMessage();
    }
}

std::string const & Console::lastError() noexcept { return keptError(); }

Progress::Progress(std::string const & work) : fIsShown(::isatty(STDERR_FILENO) == 1) {
    if (fIsShown) {
        std::cerr << work << " ..." << std::flush;
    }
}

Progress::~Progress() {
    if (fIsShown) {
        std::cerr << "\r\033[K" << std::flush;
    }
}

} // namespace cli
