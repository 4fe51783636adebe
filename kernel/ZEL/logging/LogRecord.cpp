#include <ZEL/logging/LogRecord.h>

#include <libvx/ObjectOutput.h>

namespace ZEL {

void LogRecord::writeExternal(Quillon::System::ObjectOutput & out) const { out.writeString(fMessage + "\n"); }

} // namespace ZEL
