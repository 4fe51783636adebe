#pragma once

#include <ZEL/logging/DefaultLogHandler.h>

namespace ZEL {

/// Prints each record as "[Level] message". Lets records through from info on unless another level is set.
class ZEL_API TerminalHandler : public DefaultLogHandler {
public:
    TerminalHandler();

    void _publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) override;
};

} // namespace ZEL
