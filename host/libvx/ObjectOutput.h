#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace Quillon::System {

/// The stream that an `Externalizable` writes itself to.
class HOST_API ObjectOutput {
public:
    ObjectOutput() = default;
    virtual ~ObjectOutput() = default;
    ObjectOutput(ObjectOutput const &) = delete;
    ObjectOutput & operator=(ObjectOutput const &) = delete;

    virtual void writeString(std::string const & text) = 0;
};

} // namespace Quillon::System
