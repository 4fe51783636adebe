#include <libvx/Handler.h>
#include <libvx/Logger.h>

#include <algorithm>

namespace Quillon::System {

Logger::~Logger() {
    for (Handler * handler : fHandlers) {
        std::erase(handler->fLoggers, this);
    }
}

void Logger::addHandler(Handler * handler) {
    if (handler == nullptr || std::find(fHandlers.begin(), fHandlers.end(), handler) != fHandlers.end()) {
        return;
    }
    handler->fLoggers.push_back(this);
    fHandlers.push_back(handler);
}

void Logger::removeHandler(Handler * handler) noexcept {
    if (std::erase(fHandlers, handler) != 0) {
        std::erase(handler->fLoggers, this);
    }
}

void Logger::report(Externalizable const & record, Level const & level) {
    std::vector<Handler *> const handlers = fHandlers;
    for (Handler * handler : handlers) {
        if (std::find(fHandlers.begin(), fHandlers.end(), handler) != fHandlers.end()) {
            handler->_publish(level, record);
        }
    }
}

} // namespace Quillon::System
