#include <libvx/StringObjectOutput.h>

namespace Quillon::System {

StringObjectOutput::~StringObjectOutput() = default;

void StringObjectOutput::writeString(std::string const & text) { fText += text; }

} // namespace Quillon::System
