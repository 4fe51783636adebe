#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/writer/XmiWriterSettings.h>

namespace ZEL::Serializer {

XmiWriterSettings::XmiWriterSettings() : fXmiVersion(XmiConstants::XMI_VERSION) {}

} // namespace ZEL::Serializer
