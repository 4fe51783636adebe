#include <ZEL/serializer/XmiWriterSettings.h>

#include <ZEL/serializer/XmiConstants.h>

namespace ZEL::Serializer {

XmiWriterSettings::XmiWriterSettings() : fXmiVersion(XmiConstants::XMI_VERSION) {}

} // namespace ZEL::Serializer
