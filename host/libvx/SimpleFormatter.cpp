#include <libvx/Externalizable.h>
#include <libvx/SimpleFormatter.h>
#include <libvx/StringObjectOutput.h>

namespace Quillon::System {

std::string SimpleFormatter::format(Externalizable const & record) {
    StringObjectOutput out;
    record.writeExternal(out);
    return out.text();
}

} // namespace Quillon::System
