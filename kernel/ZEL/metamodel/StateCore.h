#pragma once

#include <ZEL/base/ObjectPool.h>
#include <ZEL/metamodel/ClassObjectOperations.h>

#include <cstdint>
#include <new>

namespace ZEL {

namespace NSInterface {
class ModelIntf;
} // namespace NSInterface

namespace internal {

class PersistentSequence;
struct ClassDescriptor;

/// First, not shared base of every state class: what all states have, and the address by which bodies, deviants and
/// change sets of the kernel reach a state without a search.
///
/// A state answers its own attribute operations only; of the protocol it keeps the defaults, which do nothing. It is
/// owned by the one place that stores it: a body's root slot, a deviant or a change set.
class ZEL_API StateCore : public virtual NSInterface::ClassObjectOperations {
public:
    ~StateCore() override { dropStereotypeInstances(); }
    static void * operator new(std::size_t size) { return takeFromPool(size); }
    static void operator delete(void * memory, std::size_t size) noexcept { giveToPool(memory, size); }

    /// The class whose state this is.
    [[nodiscard]] virtual ClassDescriptor const & internal_stateDescriptor() const noexcept = 0;
    [[nodiscard]] StateCore * internal_state() const noexcept final { return const_cast<StateCore *>(this); }
    void internal_deviationAssign(Deviant target, ObjectIntf * source, Deviant sourceDeviant) final;

    [[nodiscard]] Boolean hasModelZEL(Deviant deviant) const final;
    void removeModelZEL(Deviant deviant) final;
    void setModelZEL(Deviant deviant, Model const & model) final;
    [[nodiscard]] Model getModelZEL(Deviant deviant) const final;
    [[nodiscard]] Boolean hasContainerZEL(Deviant deviant) const final;
    void removeContainerZEL(Deviant deviant) final;
    void setContainerZEL(Deviant deviant, ClassObject const & container) final;
    [[nodiscard]] ClassObject getContainerZEL(Deviant deviant) const final;
    [[nodiscard]] Sequence<StereotypeObject>
    getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const final;

    // --- fields that all states have -------------------------------------------------------------------------------
    NSInterface::ModelIntf * modelZEL = nullptr;
    ClassObjectIntf * containerZEL = nullptr;

    /// 0 default, 1 transient, 2 extension.
    [[nodiscard]] unsigned int persistence() const noexcept { return fBits & kPersistenceMask; }
    void setPersistence(unsigned int value) noexcept {
        fBits = (fBits & ~kPersistenceMask) | (value & kPersistenceMask);
    }

    /// Few objects have stereotype instances, so they stand in a process-wide table keyed by the state. The shared
    /// empty sequence for a state without an entry.
    [[nodiscard]] PersistentSequence const & stereotypeInstances() const noexcept;
    /// Makes the entry if there is none.
    [[nodiscard]] PersistentSequence & writableStereotypeInstances();

protected:
    /// Inline, as that of `BodyCore` is.
    StateCore() = default;
    /// Ends a state of `size` bytes whose values have ended, without its destructor, as `BodyCore::internal_end` does.
    static void internal_end(StateCore & state, std::size_t size) noexcept;
    [[noreturn]] static void internal_neverDestroyed() noexcept;
    /// Copies what all states have; the generated `assignState` calls it first.
    void assignCore(StateCore const & other);

private:
    static constexpr std::uint32_t kPersistenceMask = 3;
    static constexpr std::uint32_t kHasStereotypeInstances = 4;

    void dropStereotypeInstances() noexcept;

    std::uint32_t fBits = 0;
};

} // namespace internal
} // namespace ZEL
