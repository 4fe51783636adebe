#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/StandardWriteTransforms.h>

namespace ZEL::Serializer {

StandardWriteTransforms::StandardWriteTransforms() {
    addPreTransform(Pattern().role(NamespaceRegistry::instance()->getMetaUri("uml"), "Model"),
                    [this](Context const &) { return document(); });
}

ContextSequence StandardWriteTransforms::document() {
    if (fIsDocumented) {
        return {};
    }
    fIsDocumented = isSerializePhase();
    Context const element = makeElement({XmiConstants::XMI_NS_URI, "Documentation"}, {}, {});
    ContextSequence sequence(element);
    sequence.addContext(makeAttribute(element, "exporter", XmiConstants::ZEL_EXPORTER));
    sequence.addContext(makeAttribute(element, "exporterVersion", XmiConstants::ZEL_EXPORTER_VERSION));
    return sequence;
}

} // namespace ZEL::Serializer
