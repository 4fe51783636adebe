#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <string>

namespace ZEL::Interchange {

/// Reading of UML models that other tools wrote: from version 2.0 to 2.5.1, also in the namespaces of Eclipse, in XMI
/// from version 2.0 to 2.5.1.
///
/// Whatever versions a file names, its elements are read as those of the metamodel registered with the prefix "uml"; for
/// the names that these give to them there is `ImplicitTypeReadTransforms`. An upper bound of -1 becomes an unlimited
/// one; diagrams in the namespace of UML are left out. What no object can hold is kept with the object around it. Serves
/// one run.
class ZEL_API UmlReadTransforms : public Serializer::Transformer {
public:
    UmlReadTransforms();
    UmlReadTransforms(UmlReadTransforms const &) = delete;
    UmlReadTransforms & operator=(UmlReadTransforms const &) = delete;

private:
    [[nodiscard]] std::string translated(std::string const & uri) const;

    std::string const fUml;
};

/// Whether the namespace is one that versions of UML 2 have had.
[[nodiscard]] ZEL_API bool isUmlNamespace(std::string const & uri);
/// Whether the namespace is one that versions of XMI from 2.0 on have had.
[[nodiscard]] ZEL_API bool isXmiNamespace(std::string const & uri);

} // namespace ZEL::Interchange
