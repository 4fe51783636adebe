#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/QualifiedName.h>
#include <ZEL/serializer/Transformer.h>

#include <memory>
#include <vector>

namespace ZEL::Interchange {

class MetaClasses;

/// Reading of files that leave to the metamodel what this system's own files state.
///
/// A part without `xmi:type` gets the type of the property that it is named after, as the metamodel of the element
/// around it has it, if it is a concrete class. An element named after a derived composition, such as `ownedMember`,
/// goes to the first property of the class around it that stores such parts. Works for every registered metamodel, and
/// leaves alone what it does not know. Serves one run, with the files that are read on the way.
class ZEL_API ImplicitTypeReadTransforms : public Serializer::Transformer {
public:
    ImplicitTypeReadTransforms();
    ~ImplicitTypeReadTransforms() override;

private:
    /// An element that is open, or may be.
    struct Element {
        Serializer::QualifiedName role; ///< as in the file
        Serializer::QualifiedName type;
        Serializer::QualifiedName newRole; ///< as it goes on
        Serializer::QualifiedName newType;
    };
    /// The elements around the one at hand, outermost first.
    using Path = std::vector<Element>;

    Serializer::ContextSequence complete(Serializer::Context const & context);
    void completeElement(Serializer::Context & context);
    void complete(Serializer::Context & element, Element const & parent);
    void leave(Serializer::Context const & element);

    std::unique_ptr<MetaClasses> fClasses;
    std::vector<Path> fPaths; ///< of the files that are being read, the innermost last
};

} // namespace ZEL::Interchange
