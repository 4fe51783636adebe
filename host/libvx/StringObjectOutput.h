#pragma once

#include <libvx/ObjectOutput.h>

#include <string>

namespace Quillon::System {

/// An object stream that joins everything written to it into one string.
class HOST_API StringObjectOutput final : public ObjectOutput {
public:
    void writeString(std::string const & text) override;
    [[nodiscard]] std::string const & text() const noexcept { return fText; }

private:
    std::string fText;
};

} // namespace Quillon::System
