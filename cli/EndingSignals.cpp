#include "EndingSignals.h"

#include <ZEL/base/SafeFile.h>

#include <csignal>

namespace cli {
namespace {

/// The handler is called only once: the signal that it raises again ends the program as it would have without the
/// handler.
void removeAndDie(int signal) {
    ZEL::SafeFile::removeAllOpen();
    ::raise(signal);
}

} // namespace

void removeUnfinishedFilesAtSignals() {
    for (int const signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_DFL) {
            action.sa_handler = removeAndDie;
            action.sa_flags = static_cast<int>(SA_RESETHAND);
            ::sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace cli
