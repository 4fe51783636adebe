#include <libvx/StringObjectOutput.h>

namespace Quillon::System {

void StringObjectOutput::writeString(std::string const & text) { fText += text; }

} // namespace Quillon::System
