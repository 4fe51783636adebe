#pragma once

#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/serializer/QualifiedName.h>

#include <map>
#include <memory>
#include <unordered_map>
#include <utility>

namespace ZEL::Interchange {

/// The classes of registered metamodels as files name them, each found once. Valid as long as nobody changes them.
class MetaClasses {
public:
    /// Null if no metamodel of that namespace is registered, or it has no such class.
    [[nodiscard]] internal::MetaClassView const * find(Serializer::QualifiedName name);
    /// Of the properties of `owner` that store parts, the first one that takes objects of the class `part`; of those
    /// for many if there are any. Null if there is none.
    [[nodiscard]] internal::PropertyView const * placeFor(Serializer::QualifiedName owner,
                                                          Serializer::QualifiedName part);

private:
    using Names = std::pair<Serializer::QualifiedName, Serializer::QualifiedName>;

    std::unordered_map<Serializer::QualifiedName, std::shared_ptr<internal::MetaClassView const>> fClasses;
    std::map<Names, internal::PropertyView const *> fPlaces; ///< by owner and part
};

} // namespace ZEL::Interchange
