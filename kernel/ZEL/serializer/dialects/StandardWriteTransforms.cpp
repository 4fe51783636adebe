#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/StandardWriteTransforms.h>

#include <hasp_util/XmlConstants.h>

namespace ZEL::Serializer {
namespace {

using HASP::XmlConstants;

ContextSequence documentation(Context const &) {
    Context element;
    element.setRole(XmiConstants::XMI_NS_URI, "Documentation");
    element.setElement({});

    Context exporter;
    exporter.setRole(XmlConstants::NULL_NS_URI, "exporter");
    exporter.setParent(element);
    exporter.setAttribute(XmiConstants::ZEL_EXPORTER);

    Context version;
    version.setRole(XmlConstants::NULL_NS_URI, "exporterVersion");
    version.setParent(element);
    version.setAttribute(XmiConstants::ZEL_EXPORTER_VERSION);

    ContextSequence sequence(element);
    sequence.addContext(exporter);
    sequence.addContext(version);
    return sequence;
}

} // namespace

StandardWriteTransforms::StandardWriteTransforms() {
    Context model;
    model.setRole(NamespaceRegistry::instance()->getMetaUri("uml"), "Model");
    addPreTransform(model, documentation);
}

} // namespace ZEL::Serializer
