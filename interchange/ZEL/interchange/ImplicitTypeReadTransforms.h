#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/serializer/QualifiedName.h>
#include <ZEL/serializer/Transformer.h>

#include <memory>
#include <string_view>
#include <vector>

namespace ZEL::Interchange {

class MetaClasses;
class UmlNames;
struct UmlDefault;

/// Reading of files that leave to the metamodel what this system's own files state, or that name it otherwise.
///
/// A part without `xmi:type` gets the type of the property that it is named after, as the metamodel of the element
/// around it has it, if it is a concrete class. An element named after a derived composition, such as `ownedMember`,
/// goes to the first property of the class around it that stores such parts. Works for every registered metamodel, and
/// leaves alone what it does not know. What other versions of UML call otherwise gets its names here, and what they
/// presume is set, by the tables of `UmlVersions.h`; a model within a model becomes a package. Serves one run, with the
/// files that are read on the way. Goes ahead of what translates namespaces, which tell the version.
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
        internal::MetaClassView const * metaClass; ///< that `newType` names; null if it is not known
        std::vector<UmlDefault const *> presumed;  ///< as far as the file has said nothing else

        void noteStated(std::string_view property);
    };
    struct File {
        std::vector<Element> path; ///< the elements around the one at hand, outermost first
        bool isOfUml25 = false;
    };

    Serializer::ContextSequence complete(Serializer::Context const & context);
    void completeElement(Serializer::Context & context);
    void completeAttribute(Serializer::Context & attribute);
    void complete(Serializer::Context & element, Element & parent);
    [[nodiscard]] Serializer::QualifiedName typeOf(internal::MetaClassView const & owner, Element const & parent,
                                                   internal::PropertyView const & property);
    void leave(Serializer::Context const & context, ClassObject const & object);

    std::unique_ptr<MetaClasses> fClasses;
    std::unique_ptr<UmlNames> fUml;
    std::vector<File> fFiles;    ///< those that are being read, the innermost last
    bool fDeclaresUml25 = false; ///< the element to come
};

} // namespace ZEL::Interchange
