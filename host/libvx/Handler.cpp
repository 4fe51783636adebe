#include <libvx/Handler.h>
#include <libvx/Logger.h>

#include <utility>

namespace Quillon::System {

Handler::~Handler() {
    while (!fLoggers.empty()) {
        fLoggers.back()->removeHandler(this);
    }
    delete fFormatter;
}

void Handler::setFormatter(Formatter * formatter) {
    Formatter const * const old = std::exchange(fFormatter, formatter);
    delete old;
}

} // namespace Quillon::System
