#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/serializer/QualifiedName.h>

#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL::Interchange {

/// The classes of registered metamodels as files name them, each found once. Valid as long as nobody changes them.
class MetaClasses {
public:
    struct Property {
        std::string name;
        ImmutableType type;
        bool isMany;
        bool isComposite;
        bool isDerived;
    };
    struct MetaClass {
        ImmutableClass handle;
        std::vector<Property> properties;

        /// Null if there is none of that name.
        [[nodiscard]] Property const * find(std::string const & name) const;
    };

    /// Null if no metamodel of that namespace is registered, or it has no such class.
    [[nodiscard]] MetaClass const * find(Serializer::QualifiedName name);
    /// Of the properties of `owner` that store parts, the first one that takes objects of the class `part`; of those for
    /// many if there are any. Null if there is none.
    [[nodiscard]] Property const * placeFor(Serializer::QualifiedName owner, Serializer::QualifiedName part);

private:
    using Names = std::pair<Serializer::QualifiedName, Serializer::QualifiedName>;

    std::unordered_map<Serializer::QualifiedName, MetaClass> fClasses; ///< with an invalid handle for what is none
    std::map<Names, Property const *> fPlaces;                         ///< by owner and part
};

} // namespace ZEL::Interchange
