#pragma once

#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/ObjectIntf.h>
#include <ZEL/metamodel/PointerMap.h>

#include <cstddef>

namespace ZEL::internal {

class BodyCore;
class ModelCore;

/// The objects of one `clone` and their copies, and where the copies are made.
class CloneMap {
public:
    CloneMap(ModelCore & model, Deviant deviant) noexcept : fModel(model), fDeviant(deviant) {}

    [[nodiscard]] ModelCore & model() const noexcept { return fModel; }
    [[nodiscard]] Deviant deviant() const noexcept { return fDeviant; }
    void makeRoom(std::size_t more) { fCopies.makeRoom(more); }
    void add(ObjectIntf const * original, BodyCore * copy) { fCopies.add(original, copy); }
    /// Null if there is none.
    [[nodiscard]] BodyCore * copyOf(ObjectIntf const * original) const {
        BodyCore * const * const found = fCopies.find(original);
        return found == nullptr ? nullptr : *found;
    }
    /// In the order in which they were made.
    [[nodiscard]] auto const & copies() const noexcept { return fCopies.entries(); }

private:
    ModelCore & fModel;
    Deviant fDeviant;
    PointerMap<BodyCore *> fCopies;
};

} // namespace ZEL::internal
