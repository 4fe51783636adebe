#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <string>
#include <unordered_map>

namespace ZEL::Interchange {

/// Reading of UML models that other tools wrote: from version 2.0 on, also in the namespaces of Eclipse.
///
/// Whatever version a file names, its elements are read as those of the metamodel registered with the prefix "uml". A
/// model within a model becomes a package, an upper bound of -1 an unlimited one; diagrams in the namespace of UML are
/// left out. Serves one run.
class ZEL_API UmlReadTransforms : public Serializer::Transformer {
public:
    UmlReadTransforms();
    UmlReadTransforms(UmlReadTransforms const &) = delete;
    UmlReadTransforms & operator=(UmlReadTransforms const &) = delete;

private:
    Serializer::ContextSequence translate(Serializer::Context const & context);
    [[nodiscard]] Serializer::QualifiedName translated(Serializer::QualifiedName name);

    std::string const fUml;
    std::unordered_map<Serializer::QualifiedName, Serializer::QualifiedName> fNames;
};

/// Whether the namespace is one that versions of UML 2 have had.
[[nodiscard]] ZEL_API bool isUmlNamespace(std::string const & uri);

} // namespace ZEL::Interchange
