#pragma once

#include <ZEL/interchange/UmlVersions.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/serializer/QualifiedName.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace ZEL::Interchange {

class MetaClasses;

/// How the registered metamodel of UML calls what files name as other versions of UML do. Knows nothing of other
/// metamodels; nothing at all if UML is not registered.
class UmlNames {
public:
    /// `classes` must outlive it.
    explicit UmlNames(MetaClasses & classes);

    /// The class of a part that the file says is of `type`; `type` itself for most.
    [[nodiscard]] Serializer::QualifiedName classOfPart(Serializer::QualifiedName type) const;
    /// The property of `owner` that the file calls `role`; `role` itself for most.
    [[nodiscard]] Serializer::QualifiedName propertyOf(internal::MetaClassView const & owner,
                                                       Serializer::QualifiedName role);
    /// The class of a part of `owner` of which the file says nothing but its property; empty if that tells it.
    [[nodiscard]] Serializer::QualifiedName impliedType(internal::MetaClassView const & owner,
                                                        Serializer::QualifiedName property);
    /// What objects of the class have where a file of `form` says nothing.
    [[nodiscard]] std::vector<UmlDefault const *> const & defaultsOf(internal::MetaClassView const & metaClass,
                                                                     UmlForm form);

private:
    template <class Row> using Rows = std::unordered_map<Serializer::QualifiedName, std::vector<Row const *>>;

    [[nodiscard]] bool isA(internal::MetaClassView const & metaClass, std::string_view general);

    MetaClasses & fClasses;
    std::string fUri; ///< of UML; empty if it is not registered
    std::unordered_map<Serializer::QualifiedName, Serializer::QualifiedName> fClassNames;
    Rows<UmlPropertyName> fPropertyNames; ///< by the other name
    Rows<UmlImpliedType> fImpliedTypes;   ///< by the property
    std::unordered_map<internal::MetaClassView const *, std::vector<UmlDefault const *>> fDefaults;
};

/// Whether the namespace is one that UML has had since version 2.5.
[[nodiscard]] bool isUml25Namespace(std::string const & uri);

} // namespace ZEL::Interchange
