#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/interchange/MetaClasses.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/TypePredicates.h>

#include <algorithm>
#include <cstdint>

namespace ZEL::Interchange {
namespace {

ImmutableClass classOf(Serializer::QualifiedName name) {
    ImmutableMetaModel const metaModel(MetaModelRegistry::instance()->getModelFromUri(name.getUri()));
    if (!metaModel.isValid()) {
        return {};
    }
    return ImmutableClass(metaModel.getTopPackage().getOwnedTypeByName(String(name.getName())));
}

MetaClasses::Property const * searchPlace(MetaClasses::MetaClass const & owner, ImmutableClass const & part) {
    MetaClasses::Property const * single = nullptr;
    for (MetaClasses::Property const & property : owner.properties) {
        if (property.isComposite && !property.isDerived && inherits(part, ImmutableClass(property.type))) {
            if (property.isMany) {
                return &property;
            }
            single = single == nullptr ? &property : single;
        }
    }
    return single;
}

} // namespace

MetaClasses::Property const * MetaClasses::MetaClass::find(std::string const & name) const {
    auto const found = std::find_if(properties.begin(), properties.end(),
                                    [&](Property const & property) { return property.name == name; });
    return found == properties.end() ? nullptr : &*found;
}

MetaClasses::MetaClass const * MetaClasses::find(Serializer::QualifiedName name) {
    auto const [entry, isNew] = fClasses.try_emplace(name);
    MetaClass & metaClass = entry->second;
    if (isNew) {
        metaClass.handle = classOf(name);
        if (metaClass.handle.isValid()) {
            for (ImmutableProperty const property : metaClass.handle.getOwnedAttributes()) {
                metaClass.properties.push_back({property.getName().str(), property.getType(),
                                                static_cast<std::uint32_t>(property.upperBound()) > 1,
                                                static_cast<bool>(property.isComposite()),
                                                static_cast<bool>(property.isDerived())});
            }
        }
    }
    return metaClass.handle.isValid() ? &metaClass : nullptr;
}

MetaClasses::Property const * MetaClasses::placeFor(Serializer::QualifiedName owner, Serializer::QualifiedName part) {
    auto const [entry, isNew] = fPlaces.try_emplace({owner, part}, nullptr);
    if (isNew) {
        MetaClass const * const ownerClass = find(owner);
        MetaClass const * const partClass = find(part);
        if (ownerClass != nullptr && partClass != nullptr) {
            entry->second = searchPlace(*ownerClass, partClass->handle);
        }
    }
    return entry->second;
}

} // namespace ZEL::Interchange
