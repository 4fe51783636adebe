#include <libvx/Handler.h>
#include <libvx/Logger.h>

namespace Quillon::System {

Handler::~Handler() {
    while (!fLoggers.empty()) {
        fLoggers.back()->removeHandler(this);
    }
}

void Handler::setFormatter(Formatter * formatter) { fFormatter.reset(formatter); }

} // namespace Quillon::System
