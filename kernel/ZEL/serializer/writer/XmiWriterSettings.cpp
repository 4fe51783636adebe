#include <ZEL/serializer/writer/XmiWriterSettings.h>

namespace ZEL::Serializer {

void XmiWriterSettings::setFileForm(std::optional<FileForm> form) { fFileForm = std::move(form); }

} // namespace ZEL::Serializer
