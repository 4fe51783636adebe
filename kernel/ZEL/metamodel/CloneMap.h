#pragma once

#include <ZEL/Deviant.h>
#include <ZEL/metamodel/ObjectIntf.h>

#include <unordered_map>

namespace ZEL::internal {

class BodyCore;
class ModelCore;

/// The objects of one `clone` and their copies, and where the copies are made.
class CloneMap {
public:
    CloneMap(ModelCore & model, Deviant deviant) noexcept : fModel(model), fDeviant(deviant) {}

    [[nodiscard]] ModelCore & model() const noexcept { return fModel; }
    [[nodiscard]] Deviant deviant() const noexcept { return fDeviant; }
    void add(NSInterface::ObjectIntf const * original, BodyCore * copy) { fCopies.emplace(original, copy); }
    /// Null if there is none.
    [[nodiscard]] BodyCore * copyOf(NSInterface::ObjectIntf const * original) const {
        auto const found = fCopies.find(original);
        return found == fCopies.end() ? nullptr : found->second;
    }

private:
    ModelCore & fModel;
    Deviant fDeviant;
    std::unordered_map<NSInterface::ObjectIntf const *, BodyCore *> fCopies;
};

} // namespace ZEL::internal
