#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace ZEL::Serializer {

class RhpMovedDataTypes;
class RhpStereotypes;

/// Writing of XMI that Rhapsody imports. There is no counterpart for reading.
///
/// Rewrites the head of the file, leaves out what the tool does not know, moves data types out of components, leads links
/// to primitive types to the tool's own, and generates what the tool expects and no model holds: applications of its
/// profiles, a state machine for each time event of a component, and stereotype instances for nearly every element. The
/// stereotype instances of the model itself are not written. All this needs a metamodel of the prefix "uml"; a model of
/// another one is written as it is. Serves one run.
class ZEL_API RhpWriteTransforms : public Transformer {
public:
    RhpWriteTransforms();
    ~RhpWriteTransforms() override;
    RhpWriteTransforms(RhpWriteTransforms const &) = delete;
    RhpWriteTransforms & operator=(RhpWriteTransforms const &) = delete;

    /// The id of what an active component names as its model; empty until one has been met.
    [[nodiscard]] std::string const & getModelElementId() const noexcept { return fModelElementId; }

private:
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
    [[nodiscard]] ContextSequence moveDataType(Context const & dataType);
    [[nodiscard]] ContextSequence moveContent(Context const & context);
    [[nodiscard]] ContextSequence endMovedElement(Context const & context);
    [[nodiscard]] ContextSequence emitMovedTypes(Context const & portType);
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
    std::unique_ptr<RhpMovedDataTypes> fDataTypes;
    std::unique_ptr<RhpStereotypes> fStereotypes;
};

} // namespace ZEL::Serializer
