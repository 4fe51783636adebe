#pragma once

#include <libvx/Formatter.h>

namespace Quillon::System {

/// Formats a record as the text that it writes of itself.
class HOST_API SimpleFormatter : public Formatter {
public:
    [[nodiscard]] std::string format(Externalizable const & record) override;
};

} // namespace Quillon::System
