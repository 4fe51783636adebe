#pragma once

#include <ZEL/base/ObjectPool.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/StateCore.h>

#include <cstdint>

namespace ZEL::internal {

class DeviantImpl;
class ModelCore;

/// First, not shared base of every generated body: identity, count, the state in the root deviant, and the whole state
/// protocol.
///
/// A body that has a model is owned by it: the count says how many handles, maps and other models hold it, but the body
/// itself goes with its model, or, if it is still held then, with the last count. The fast road of a get is
/// `readState`, inline: a live root deviant and a real root state are one test each.
class ZEL_API BodyCore : public virtual NSInterface::ClassObjectOperations {
public:
    ~BodyCore() override { dropRootState(); }
    static void * operator new(std::size_t size) { return takeFromPool(size); }
    static void operator delete(void * memory, std::size_t size) noexcept { giveToPool(memory, size); }

    [[nodiscard]] virtual ClassDescriptor const & internal_descriptor() const noexcept = 0;

    // --- counting --------------------------------------------------------------------------------------------------
    void incRef() override { ++fRefCount; }
    /// Throws "Decrementing the ref count of a ref with count already 0" on a count below 1.
    void decRef() override;
    int numRef() override { return fRefCount; }

    // --- state protocol --------------------------------------------------------------------------------------------
    [[nodiscard]] BodyCore * internal_body() const noexcept final { return const_cast<BodyCore *>(this); }
    [[nodiscard]] ClassObjectIntf const * internal_container(Deviant deviant) const final;
    [[nodiscard]] ObjectIntf * internal_exchangeRootState(ObjectIntf * state) noexcept final;
    void internal_noteElement(ObjectIntf * element) const final;
    [[nodiscard]] bool deviant_isValid(Deviant deviant) const final {
        DeviantIdentity const * const identity = deviant.getIdentity();
        return (fHasRealRootState && (identity == nullptr || identity->kind == DeviantIdentity::Kind::LiveRoot)) ||
               isValidSlowly(deviant);
    }
    void deviant_destroyState(ObjectIntf * state) final;
    void deviant_markModelDestroyed() override;
    void deviant_commitTransientState(Deviant deviant) final;
    [[nodiscard]] ObjectIntf * deviant_getCopyOfDeviation(Deviant deviant) const final;
    [[nodiscard]] ObjectIntf * internal_getDeviation(Deviant deviant) const final;
    void internal_setDeviation(Deviant deviant, ObjectIntf * state) final;
    ObjectIntf * internal_createDeviation(Deviant deviant) final;
    void internal_destroyDeviation(Deviant deviant) final;
    [[nodiscard]] ObjectIntf * getReadDeviant(Deviant deviant) const final { return readState(deviant); }
    [[nodiscard]] ObjectIntf * getWriteDeviant(Deviant deviant) const final { return writeState(deviant); }

    // --- copies and deletion ---------------------------------------------------------------------------------------
    void internal_cloneReferences(Deviant deviant, CloneMap & copies) final;
    void internal_cloneContents(Deviant deviant, CloneMap & copies) final;
    ClassObject clone(Deviant deviant, ClassObject const & target) final;
    void internal_unlinkForDestroy(Deviant deviant) final;
    void internal_destroyContents(Deviant deviant) final;
    void destroy(Deviant deviant) override;

    // --- naming ----------------------------------------------------------------------------------------------------
    [[nodiscard]] std::size_t getByteSize() const final { return internal_descriptor().bodySize; }
    [[nodiscard]] char const * getOrcaName(bool immutable) const final {
        return immutable ? internal_descriptor().immutableOrcaName : internal_descriptor().orcaName;
    }
    [[nodiscard]] ImmutableClass getMetaClass(Deviant deviant) const final;
    [[nodiscard]] NSInterface::SeenObject internal_metaType(Deviant deviant) const final;
    [[nodiscard]] Object fromString(Deviant deviant, String const & text) final;

    // --- identity --------------------------------------------------------------------------------------------------
    void setId(Deviant deviant, Integer const & id) final;
    [[nodiscard]] Integer getId(Deviant deviant) const final;

    // --- fast roads of what all objects have -----------------------------------------------------------------------
    [[nodiscard]] Boolean hasModelZEL(Deviant deviant) const final;
    [[nodiscard]] Model getModelZEL(Deviant deviant) const final;
    [[nodiscard]] Boolean hasContainerZEL(Deviant deviant) const final;
    [[nodiscard]] ClassObject getContainerZEL(Deviant deviant) const final;

    /// The state to read, by the rules of `getReadDeviant`.
    [[nodiscard]] StateCore * readState(Deviant deviant) const {
        DeviantIdentity const * const identity = deviant.getIdentity();
        if (fHasRealRootState && (identity == nullptr || identity->kind == DeviantIdentity::Kind::LiveRoot))
            [[likely]] {
            return fRootState;
        }
        // A deviant that has no word on the object, beside a root that keeps no old states.
        if (fHasRealRootState && !fHasDeviantEntries && identity->kind == DeviantIdentity::Kind::LiveNamed &&
            !identity->root->savedStatesVisible) {
            return fRootState;
        }
        return readStateSlowly(deviant);
    }
    /// The state to write, by the rules of `getWriteDeviant`.
    [[nodiscard]] StateCore * writeState(Deviant deviant) const {
        DeviantIdentity const * const identity = deviant.getIdentity();
        if (identity != nullptr && identity->openTransaction == fSavedIn && fSavedIn != 0 &&
            identity->kind == DeviantIdentity::Kind::LiveRoot && fHasRealRootState) [[likely]] {
            return fRootState;
        }
        return writeStateSlowly(deviant);
    }

    [[nodiscard]] ModelCore * internal_model() const noexcept { return fModel; }
    [[nodiscard]] std::int32_t internal_id() const noexcept { return fId; }

    /// Static part of `internal_createDeviation`: an empty state for the root. Throws
    /// "no root deviant passed to XImpl::createRootDeviation" for a deviant with an id.
    [[nodiscard]] StateCore * createRootDeviation(Deviant deviant) const;
    [[nodiscard]] StateCore * createDeviation(Deviant deviant) const;

protected:
    /// Inline, as all constructors between a body and its root base are: one that is not would keep in the library, for
    /// each class, the tables of all its bases as they are while an object is made.
    BodyCore() = default;
    BodyCore(BodyCore const &) = delete;
    BodyCore & operator=(BodyCore const &) = delete;

    /// Ends a body of `size` bytes without its destructor, for classes that have nothing to end themselves, nor have
    /// their interfaces: what `delete` does of generated bodies.
    static void internal_end(BodyCore & body, std::size_t size) noexcept;
    /// What the destructor of such a class does: it is never called.
    [[noreturn]] static void internal_neverDestroyed() noexcept;

    /// At count 0 outside a model: deletes the body. The body of a model runs its end first.
    virtual void internal_released();

private:
    friend class ModelCore;

    [[nodiscard]] bool isValidSlowly(Deviant deviant) const;
    [[nodiscard]] StateCore * readStateSlowly(Deviant deviant) const;
    [[nodiscard]] StateCore * writeStateSlowly(Deviant deviant) const;
    /// The root's state as other deviants see it: the one before a running root transaction.
    [[nodiscard]] ObjectIntf * readStateFromRoot(Deviant deviant) const;
    [[nodiscard]] ObjectIntf * copyState(ObjectIntf * state) const;
    void saveOldState(Deviant deviant, ObjectIntf * present) const;
    /// Whether the open transaction of `deviant` has saved a state of the object. If not, it has room for one.
    [[nodiscard]] bool hasSavedState(DeviantImpl & deviant) const;
    /// Saves `state` there, which then belongs to the transaction.
    void save(DeviantImpl & deviant, ObjectIntf * state) const;
    void noteSaved(DeviantImpl const & deviant) const noexcept;
    void destroyState(Deviant deviant);
    void checkWritable(Deviant deviant) const;
    void setRootState(ObjectIntf * state) const noexcept;
    void dropRootState() noexcept;
    void checkAccess(Deviant deviant) const;
    /// The state of the object is about to change, or has.
    void forgetViews() const noexcept;

    static constexpr std::uint64_t kGreatestTransaction = ~std::uint64_t{0} >> 2;

    mutable StateCore * fRootState = nullptr;
    ModelCore * fModel = nullptr;
    /// Number of the root transaction in which the old state was saved last.
    mutable std::uint64_t fSavedIn : 62 = 0;
    mutable bool fHasRealRootState : 1 = false;
    mutable bool fHasDeviantEntries : 1 = false; ///< some deviant may hold an entry of its own
    std::int32_t fId = -1;
    std::int32_t fRefCount = 0;
};

} // namespace ZEL::internal
