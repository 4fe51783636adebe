#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/serializer/ClassOfName.h>

namespace ZEL::Serializer {

ImmutableClass classOfName(QualifiedName name) {
    ImmutableMetaModel const metaModel(MetaModelRegistry::instance()->getModelFromUri(name.getUri()));
    return metaModel.isValid() ? ImmutableClass(metaModel.getTopPackage().getOwnedTypeByName(String(name.getName())))
                               : ImmutableClass();
}

} // namespace ZEL::Serializer
