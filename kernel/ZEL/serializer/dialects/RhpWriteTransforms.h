#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/dialects/RhpMovedDataTypes.h>
#include <ZEL/serializer/dialects/RhpStereotypes.h>

#include <optional>
#include <set>
#include <string>

namespace ZEL::Serializer {

/// Writing of XMI that Rhapsody imports. There is no counterpart for reading.
///
/// Rewrites the head of the file, leaves out what the tool does not know, moves data types out of components, replaces
/// links to primitive types by links to the tool's own, and generates what the tool expects and no model holds:
/// applications of its profiles, a state machine for each time event of a component, and stereotype instances for
/// nearly every element. The stereotype instances of the model itself are not written. All this needs a metamodel of
/// the prefix "uml"; a model of another one is written as it is. Serves one run.
class ZEL_API RhpWriteTransforms : public Transformer {
public:
    RhpWriteTransforms();
    RhpWriteTransforms(RhpWriteTransforms const &) = delete;
    RhpWriteTransforms & operator=(RhpWriteTransforms const &) = delete;

    /// The id of what an active component names as its model; empty until one has been met.
    [[nodiscard]] std::string const & getModelElementId() const noexcept { return fModelElementId; }

private:
    enum class Traversal : bool { Collecting, Writing };

    /// The pattern of an element of a UML type that one of `parentType` has in `role`; of any parent if that is null.
    [[nodiscard]] Context element(char const * parentType, char const * type, char const * role) const;
    /// Adds a rule that changes nothing, but calls a function with the value of the Context, in one of the traversals.
    template <Traversal traversal, class Note> void note(Context const & pattern, Note function);
    /// Adds a rule for elements that get stereotype instances of this kind, and whose id is kept as `current`.
    void addStereotyped(Context const & pattern, RhpStereotypes::Kind kind, std::string & current);

    void addHeadRules();
    void addOmissionRules();
    void addDroppedComponentRules();
    void addTypeRules();
    void addPortRules();
    void addOperationRules();
    void addElementRules();
    void addGeneratingRules();

    [[nodiscard]] ContextSequence rewriteModel(Context const & model);
    [[nodiscard]] ContextSequence skipWhenWriting(Context const & context) const;
    [[nodiscard]] ContextSequence nestedComponent(Context const & component);
    [[nodiscard]] ContextSequence packagedComponent(Context const & component);
    [[nodiscard]] ContextSequence endPart();
    [[nodiscard]] ContextSequence moveDataType(Context const & dataType);
    [[nodiscard]] ContextSequence moveContent(Context const & context);
    [[nodiscard]] ContextSequence endMovedElement(Context const & context);
    [[nodiscard]] ContextSequence emitMovedTypes();
    [[nodiscard]] ContextSequence emitProfileApplications(Context const & child);
    [[nodiscard]] ContextSequence emitStereotypes();
    [[nodiscard]] bool movesDataTypes();

    std::string const fUml; ///< the namespace of the UML types
    std::set<std::string> fDroppedIds;
    std::string fModelId;
    std::string fModelElementId;
    std::string fCurrentPortId;
    std::string fCurrentBehaviorId; ///< of the operation whose behavior is at hand
    std::string fCurrentClassId;    ///< whose name comes next
    std::optional<bool> fMovesDataTypes;
    RhpMovedDataTypes fDataTypes;
    RhpStereotypes fStereotypes;
};

} // namespace ZEL::Serializer
