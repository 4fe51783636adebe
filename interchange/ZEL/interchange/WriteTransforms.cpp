#include <ZEL/interchange/StereotypeWriteTransforms.h>
#include <ZEL/interchange/WriteTransforms.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/writer/XmiWriter.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace ZEL::Interchange {

void addWriteTransforms(Serializer::XmiWriter & writer, ImmutableModel const & model) {
    std::string const foreign = NamespaceRegistry::instance()->getMetaUri("Foreign");
    if (foreign.empty()) {
        return;
    }
    std::vector<ImmutableClassObject> const objects = objectsIn(model);
    bool const hasForeign = std::any_of(objects.begin(), objects.end(), [&](ImmutableClassObject const & object) {
        ImmutableClass const metaClass = object.getMetaClass();
        return metaClass.getName() == String("StereotypeApplication") &&
               metaClass.getRootModel().getUri() == String(foreign);
    });
    if (hasForeign) {
        writer.addTransformer(std::make_shared<StereotypeWriteTransforms>());
    }
}

} // namespace ZEL::Interchange
