#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/writer/FileForm.h>

namespace ZEL::Interchange {

/// The forms in which other tools read models of UML.
enum class ToolForm {
    EclipseUml2, ///< UML2 5.0, as Papyrus and other tools on top of Eclipse read it
    Xmi251       ///< XMI 2.5.1 and UML 2.5.1, as the OMG writes them
};

/// For `XmiWriterSettings::setFileForm`; best with `setKeepFileIds` and `setElementPerValue`, and a writer that
/// `addWriteTransforms` has prepared. Made for the metamodels that are registered now.
[[nodiscard]] ZEL_API Serializer::FileForm fileFormOf(ToolForm form);

} // namespace ZEL::Interchange
