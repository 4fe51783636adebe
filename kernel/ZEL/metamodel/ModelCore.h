#pragma once

#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ModelIntf.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// Base of the body of every model class: owns the deviants and all bodies of the model, numbers the objects and finds
/// them by number.
///
/// The model lives while a handle holds its body. At the last count its manager is destroyed first, while the body can
/// still be called, then every body of the model is marked and, if nobody holds it, deleted. Nothing thrown on the way
/// leaves it.
class ZEL_API ModelCore : public BodyCore, public virtual NSInterface::ModelIntf {
public:
    ModelCore();
    ~ModelCore() override;

    [[nodiscard]] DeviantManager & internal_deviantManager() noexcept { return fManager; }

    /// Takes a body that will have no number into the model's knowledge; it still lives by its count.
    void adopt(BodyCore & body);
    /// A new object of the class with this number, which must be free: present in `deviant` alone, and not placed yet.
    [[nodiscard]] BodyCore & create(Deviant deviant, ClassDescriptor const & descriptor, std::int32_t id);
    /// Gives up a body without a number.
    void disown(BodyCore & body) noexcept;
    /// Keeps a body of another model from being freed as long as this model may refer to it.
    void noteForeign(BodyCore & body);
    /// Gives such a body up, once no state of this model leads to it. Nothing for another one.
    void forgetForeign(BodyCore & body);
    /// Throws, before anything is written, unless `id` can be given to an object of the class.
    void checkId(Deviant deviant, std::int32_t id, ClassDescriptor const & descriptor) const;
    /// Gives an object of this model the next number: its present one is free then. Throws "Internal id value
    /// overflow!" if there is no next one.
    void renumber(BodyCore & body);
    /// The object with this number that exists in `deviant`, or else one that does not; null if there is none.
    [[nodiscard]] BodyCore * bodyById(Deviant deviant, std::int32_t id) const;
    /// The next number as a plain value.
    [[nodiscard]] std::int32_t nextId() const noexcept { return fNextId; }
    /// The id that the object with this number has in the file from which the model was read, if a writer would give
    /// another one; null if none was noted.
    [[nodiscard]] std::string const * fileIdOf(std::int32_t id) const;
    /// All such ids by number.
    [[nodiscard]] std::unordered_map<std::int32_t, std::string> const & fileIds() const noexcept { return fFileIds; }
    void noteFileId(std::int32_t id, std::string fileId) { fFileIds.insert_or_assign(id, std::move(fileId)); }
    /// The model has been written, by the ids that a writer gives.
    void forgetFileIds() noexcept { fFileIds.clear(); }
    /// What is kept of metaclasses has been read from this model: it is forgotten at the next change.
    void noteViewed() noexcept { fIsViewed = true; }
    [[nodiscard]] bool isViewed() const noexcept { return fIsViewed; }
    /// Makes `factory` the factory of this model, held until the model goes.
    void holdFactory(BodyCore & factory);
    [[nodiscard]] bool holds(BodyCore const & factory) const noexcept { return fHeldFactory == &factory; }

    void destroy(Deviant deviant) override;

    // --- deviants ----------------------------------------------------------------------------------------------------
    Deviant createDeviantWithName(Deviant deviant, String const & name) override;
    [[nodiscard]] Deviant getRootDeviant(Deviant deviant) const override;
    void removeDeviantWithName(Deviant deviant, String const & name) override;

    // --- identity ----------------------------------------------------------------------------------------------------
    [[nodiscard]] ClassObject handleObjectById(Deviant deviant, Integer const & id, ClassObject const & object,
                                               Integer const & mode) override;
    void setObjectId(Deviant deviant, ClassObject const & object, Integer const & id) override;
    [[nodiscard]] Integer getNextIdValue(Deviant deviant) const override;
    void setNextIdValue(Deviant deviant, Integer const & value) override;

protected:
    void internal_released() override;

private:
    static constexpr std::int32_t kPageSize = 1024;

    [[nodiscard]] BodyCore * entry(std::int32_t id) const noexcept;
    void enter(std::int32_t id, BodyCore & body);
    /// Gives the body its number, for which it has been entered.
    void giveNumber(BodyCore & body, std::int32_t id) noexcept;
    /// Saves in the open transaction of `deviant` that the body was not there before: until the transaction ends,
    /// writing to the object need not ask whether an old state is saved.
    void markCreated(BodyCore & body, Deviant deviant);
    /// Whether no other deviant than this one has anything to say of a new object.
    [[nodiscard]] bool isAlone(DeviantImpl const & deviant) const noexcept;
    /// The body of an object of this model; throws "An Internal Error has occurred" for one of another model.
    [[nodiscard]] BodyCore & ownBody(ClassObject const & object) const;
    [[nodiscard]] bool isValidAnywhere(BodyCore const & body) const;
    /// Calls `visit(body)` for all bodies that have a number, in the order of their numbers.
    template <class Visit> void visitNumbered(Visit visit) const;
    /// The same for all bodies of the model but its own. They must not be given up meanwhile.
    template <class Visit> void visitBodies(Visit visit) const;
    void release() noexcept;

    DeviantManager fManager;
    std::vector<std::unique_ptr<BodyCore *[]>> fPages; ///< bodies by number, pages of `kPageSize`
    /// Bodies that gave their number to another object after they had ended everywhere; undo may bring them back.
    std::unordered_multimap<std::int32_t, BodyCore *> fFormer;
    std::unordered_set<BodyCore *> fUnnumbered;
    std::unordered_set<BodyCore *> fForeign;
    BodyCore * fHeldFactory = nullptr;
    std::int32_t fNextId = 1;
    bool fIsViewed = false;
    std::unordered_map<std::int32_t, std::string> fFileIds;
};

} // namespace ZEL::internal
