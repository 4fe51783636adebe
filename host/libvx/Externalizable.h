#pragma once

#include <hasp_util/Export.h>

namespace Quillon::System {

class ObjectOutput;

/// Something that can write itself to an object stream: an exception or a log record.
class HOST_API Externalizable {
public:
    Externalizable() = default;
    virtual ~Externalizable() = default;

    virtual void writeExternal(ObjectOutput & out) const = 0;

protected:
    Externalizable(Externalizable const &) = default;
    Externalizable & operator=(Externalizable const &) = default;
};

} // namespace Quillon::System
