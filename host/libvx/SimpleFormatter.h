#pragma once

#include <libvx/Formatter.h>

namespace Quillon::System {

/// Returns a record's text as the record itself writes it.
class HOST_API SimpleFormatter : public Formatter {
public:
    [[nodiscard]] std::string format(Externalizable const & record) override;
};

} // namespace Quillon::System
