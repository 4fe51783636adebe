#pragma once

#include <ZEL/base/ObjectPool.h>
#include <ZEL/metamodel/ClassObjectOperations.h>

#include <cstdint>
#include <new>

namespace ZEL {

struct Remainder;

namespace NSInterface {
class ModelIntf;
} // namespace NSInterface

namespace internal {

class PersistentSequence;
struct ClassDescriptor;
struct Rarities;

/// First, not shared base of every state class: what all states have, and the address by which bodies, deviants and
/// change sets of the kernel reach a state without a search.
///
/// A state answers its own attribute operations only; of the protocol it keeps the defaults, which do nothing. It is
/// owned by the one place that stores it: a body's root slot, a deviant or a change set.
class ZEL_API StateCore : public virtual NSInterface::ClassObjectOperations {
public:
    ~StateCore() override { dropRarities(); }
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

    // --- what all states have --------------------------------------------------------------------------------------
    /// Null if there is none.
    [[nodiscard]] ClassObjectIntf * container() const noexcept {
        return (fOwner & kIsModel) == 0 ? reinterpret_cast<ClassObjectIntf *>(fOwner & kPointer) : nullptr;
    }
    void setContainer(ClassObjectIntf * container) noexcept;

    /// An object never leaves the model that has made it: whether it says so.
    [[nodiscard]] bool hasModel() const noexcept { return (fOwner & kHasModel) != 0; }
    /// For a caller that has the state alone: a body knows its model. Null if there is none. Where there is a container,
    /// its model.
    [[nodiscard]] NSInterface::ModelIntf * model() const noexcept;
    /// Null for none.
    void setModel(NSInterface::ModelIntf * model) noexcept;

    /// 0 default, 1 transient, 2 extension.
    [[nodiscard]] unsigned int persistence() const noexcept;
    void setPersistence(unsigned int value);

    /// The shared empty sequence for a state that has none.
    [[nodiscard]] PersistentSequence const & stereotypeInstances() const noexcept;
    /// Makes the entry if there is none.
    [[nodiscard]] PersistentSequence & writableStereotypeInstances();

    /// Null if there is none.
    [[nodiscard]] Remainder const * remainder() const noexcept;
    /// Copies of the state share it.
    void setRemainder(Remainder && remainder);

protected:
    /// Inline, as that of `BodyCore` is.
    StateCore() = default;
    /// Ends a state of `size` bytes whose values have ended, without its destructor, as `BodyCore::internal_end` does.
    static void internal_end(StateCore & state, std::size_t size) noexcept;
    [[noreturn]] static void internal_neverDestroyed() noexcept;
    /// Copies what all states have; the generated `assignState` calls it first.
    void assignCore(StateCore const & other) {
        if (((fOwner | other.fOwner) & kHasRarities) != 0) {
            assignRarities(other);
        }
        fOwner = (other.fOwner & ~kHasRarities) | (fOwner & kHasRarities);
    }

private:
    static constexpr std::uintptr_t kIsModel = 1; ///< the pointer is one to the model, and there is no container
    static constexpr std::uintptr_t kHasModel = 2;
    static constexpr std::uintptr_t kHasRarities = 4;
    static constexpr std::uintptr_t kPointer = ~std::uintptr_t{7};

    /// Null if there are none.
    [[nodiscard]] Rarities const * rarities() const noexcept;
    /// Makes the entry if there is none.
    [[nodiscard]] Rarities & writableRarities();
    void assignRarities(StateCore const & other);
    void dropRarities() noexcept;
    /// Exchanges all but the bit of the rarities.
    void setOwner(void const * pointer, std::uintptr_t bits) noexcept;

    /// The address of the container, or else of the model, with bits below it: an object is nowhere without a model,
    /// and its container is in the same one. So a state needs one word for both.
    std::uintptr_t fOwner = 0;
};

} // namespace internal
} // namespace ZEL
