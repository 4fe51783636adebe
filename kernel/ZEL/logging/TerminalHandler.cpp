#include <ZEL/logging/TerminalHandler.h>

#include <libvx/Printing.h>

#include <string>

namespace ZEL {

TerminalHandler::TerminalHandler() : DefaultLogHandler(nullptr, nullptr, LogLevel::info) {}

void TerminalHandler::_publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) {
    if (isLoggable(level, record)) {
        vxPrintf("[%s] %s", getLevelName(level, record), getFormatter()->format(record).c_str());
    }
}

} // namespace ZEL
