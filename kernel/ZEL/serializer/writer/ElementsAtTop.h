#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/serializer/writer/ObjectView.h>
#include <ZEL/serializer/writer/PropertyPartition.h>

#include <unordered_set>
#include <vector>

namespace ZEL::Serializer {

/// The objects within a model whose elements are written at the top of the file, see `Remainder::Standing`.
class ElementsAtTop {
public:
    /// Finds them. `hasValues`: whether the model's own element says anything, so that it has to be written.
    void find(ObjectView const & model, PropertyPartition const & partition, bool hasValues);

    [[nodiscard]] std::vector<ImmutableClassObject> const & objects() const noexcept { return fObjects; }
    [[nodiscard]] bool has(internal::BodyCore const & object) const { return fBodies.count(&object) != 0; }
    /// Takes them out of these parts of the model.
    void removeFrom(std::vector<ImmutableClassObject> & parts) const;
    /// Whether the model has no element of its own: all that it contains stands at the top.
    [[nodiscard]] bool areAll() const noexcept { return fAreAll; }
    /// Whether parts of the model are left for its element.
    [[nodiscard]] bool leaveParts() const noexcept { return fLeaveParts; }

private:
    std::vector<ImmutableClassObject> fObjects;
    std::unordered_set<internal::BodyCore const *> fBodies;
    bool fAreAll = false;
    bool fLeaveParts = false;
};

} // namespace ZEL::Serializer
