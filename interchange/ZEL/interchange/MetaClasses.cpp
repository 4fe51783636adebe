#include <ZEL/interchange/MetaClasses.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/serializer/ClassOfName.h>

namespace ZEL::Interchange {
namespace {

using internal::MetaClassView;
using internal::PropertyView;

std::shared_ptr<MetaClassView const> viewOf(Serializer::QualifiedName name) {
    ImmutableClass const metaClass = Serializer::classOfName(name);
    return metaClass.isValid() ? MetaClassView::of(metaClass) : nullptr;
}

PropertyView const * searchPlace(MetaClassView const & owner, MetaClassView const & part) {
    PropertyView const * single = nullptr;
    for (PropertyView const & property : owner.properties()) {
        if (property.isPart() && part.inheritsFrom(property.typeBody)) {
            if (property.isMany) {
                return &property;
            }
            single = single == nullptr ? &property : single;
        }
    }
    return single;
}

} // namespace

MetaClassView const * MetaClasses::find(Serializer::QualifiedName name) {
    auto const [entry, isNew] = fClasses.try_emplace(name);
    if (isNew) {
        entry->second = viewOf(name);
    }
    return entry->second.get();
}

PropertyView const * MetaClasses::placeFor(Serializer::QualifiedName owner, Serializer::QualifiedName part) {
    auto const [entry, isNew] = fPlaces.try_emplace({owner, part}, nullptr);
    if (isNew) {
        MetaClassView const * const ownerClass = find(owner);
        MetaClassView const * const partClass = find(part);
        if (ownerClass != nullptr && partClass != nullptr) {
            entry->second = searchPlace(*ownerClass, *partClass);
        }
    }
    return entry->second;
}

} // namespace ZEL::Interchange
