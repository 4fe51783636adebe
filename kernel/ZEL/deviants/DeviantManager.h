#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/SoleOwner.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/ListenerBase.h>
#include <ZEL/deviants/Replay.h>

#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace ZEL {

class DeviantManagerHelper;

namespace NSInterface {
class ModelIntf;
} // namespace NSInterface

/// Owns all deviants of one model. A model's body embeds it.
///
/// The body of a removed deviant is kept until the manager goes. A manager without a model serves tests and state that
/// is kept outside of models.
class ZEL_API DeviantManager : public ListenerBase {
public:
    DeviantManager();
    /// `body` is the same object as `model`. Nothing takes a count on it.
    DeviantManager(NSInterface::ModelIntf * model, NSInterface::ClassObjectIntf * body);
    /// As `destroy`, if that has not been called.
    ~DeviantManager() override;
    DeviantManager(DeviantManager const &) = delete;
    DeviantManager & operator=(DeviantManager const &) = delete;

    [[nodiscard]] NSInterface::ModelIntf * getModelIntf() const noexcept { return fModel; }
    [[nodiscard]] Deviant getRootDeviant() const noexcept;
    template <class Helper = DeviantManagerHelper> [[nodiscard]] Helper * getHelper() const noexcept {
        return static_cast<Helper *>(fReplayer.get());
    }
    /// Takes ownership of `helper` and deletes the former one. Null makes the deviants replay by themselves.
    template <class Helper = DeviantManagerHelper> void setHelper(std::type_identity_t<Helper> * helper) {
        internal_setReplayer(helper);
    }

    /// A name in use returns the deviant of that name. The id is the number of deviants that there have been, with the
    /// new one; the first is 2.
    Deviant createDeviantWithName(std::string const & name);
    /// An unknown name returns the null deviant and stays entered with it.
    Deviant getDeviantWithName(std::string const & name);
    /// Throws "removeDeviantWithName: deviant does not exist" for an unknown name, and "An Internal Error has occurred"
    /// for the root deviant.
    void removeDeviantWithName(std::string const & name);
    /// In name order, the root among them, with null deviants for names that have none.
    [[nodiscard]] std::vector<Deviant> getDeviants() const;

    /// Ends all deviants: open transactions are committed, listeners of named deviants told, stacks and states given
    /// back. All `Deviant` values of the model say from now on that it has gone. Nothing that a listener throws leaves
    /// it. The states of the root belong to the bodies and stay.
    void destroy() noexcept;

    // --- for the kernel's own use ----------------------------------------------------------------------------------
    [[nodiscard]] NSInterface::ClassObjectIntf * internal_body() const noexcept { return fBody; }
    /// The live deviants but the root, in name order; kept in place, so a walk over all of them costs no copy.
    [[nodiscard]] std::vector<Deviant> const & internal_namedDeviants() const noexcept { return fNamed; }
    [[nodiscard]] internal::DeviantImpl & internal_root() const noexcept { return *fRoot; }
    /// Whether some name has the null deviant.
    [[nodiscard]] bool internal_hasNullEntries() const noexcept { return fByName.size() != fNamed.size() + 1; }
    /// Whether the client has no part in replays, so that the deviants may do without the helper.
    [[nodiscard]] bool internal_replaysPlainly() const noexcept { return fReplayer == nullptr || fReplayer->isPlain(); }
    /// The helper as the deviants know it, or null.
    [[nodiscard]] internal::Replayer * internal_replayer() const noexcept { return fReplayer.get(); }
    void internal_setReplayer(internal::Replayer * replayer);

private:
    /// From here on a deviant can be entered, and any be removed, without memory for the lists of deviants.
    void makeRoomForOneMore();
    void collectNamed() noexcept;
    /// Puts the removed deviant with the others that are kept until the end.
    void shelve(std::string const & name, Deviant deviant) noexcept;
    void destroyNamed(internal::DeviantImpl & deviant) noexcept;

    NSInterface::ModelIntf * fModel = nullptr;
    NSInterface::ClassObjectIntf * fBody = nullptr;
    std::map<std::string, internal::SoleOwner<internal::DeviantImpl>> fByName;
    internal::DeviantImpl * fRoot = nullptr;
    std::vector<internal::SoleOwner<internal::DeviantImpl>> fRemoved;
    internal::SoleOwner<internal::Replayer> fReplayer; ///< a `DeviantManagerHelper`
    std::vector<Deviant> fNamed;
};

} // namespace ZEL
