#pragma once

#include "NaiveModel.h"

#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>

#include <unordered_map>

namespace ZEL::oracle {

/// What listeners do; they see what was before through `view`.
using KernelListeners = std::function<bool(Hearing const & hearing, Deviant view)>;
inline constexpr int kListeners = 3; ///< of each deviant, in any roles

/// A model of the kernel whose objects have the numbers of the naive model.
class KernelModel {
public:
    explicit KernelModel(KernelListeners listeners);
    ~KernelModel();
    KernelModel(KernelModel const &) = delete;
    KernelModel & operator=(KernelModel const &) = delete;

    [[nodiscard]] Deviant deviant(std::string const & name) const { return fDeviants.at(name).getDeviant(); }
    /// The object as a client sees it through `deviant`, which may be a view; nothing if it is absent.
    [[nodiscard]] std::optional<State> observed(Deviant deviant, int object, Kind kind) const;
    [[nodiscard]] std::set<int> deviating(std::string const & deviant) const;

    void create(Step const & s);
    void setValue(Step const & s);
    void removeValue(Step const & s);
    void setReference(Step const & s) { link(s); }
    void removeReference(Step const & s) { unlink(s); }
    void link(Step const & s);
    void unlink(Step const & s);
    void addBody(Step const & s);
    void eraseBody(Step const & s);
    void setContainer(Step const & s);
    void removeContainer(Step const & s);
    void destroy(Step const & s);

    void begin(Step const & s) { deviant(s.deviant).beginTransaction(s.text); }
    void commit(Step const & s) { deviant(s.deviant).commitTransaction(); }
    void cancel(Step const & s) { deviant(s.deviant).cancelTransaction(); }
    void undo(Step const & s) { deviant(s.deviant).undo(); }
    void redo(Step const & s) { deviant(s.deviant).redo(); }
    void undoToLevel(Step const & s) { deviant(s.deviant).undoToChangeLevel(s.value); }
    void redoToLevel(Step const & s) { deviant(s.deviant).redoToChangeLevel(s.value); }
    void setMaximum(Step const & s) { deviant(s.deviant).setMaximumUndoStackLength(s.value); }
    void disableUndo(Step const & s) { deviant(s.deviant).disableUndo(); }
    void clearUndo(Step const & s) { deviant(s.deviant).clearUndoStack(); }
    void clearRedo(Step const & s) { deviant(s.deviant).clearRedoStack(); }
    void sync(Step const & s) { deviant(s.deviant).syncFromRoot(); }
    void assign(Step const & s) { deviant(s.deviant).assignToRoot(); }
    void createDeviant(Step const & s);
    void removeDeviant(Step const & s);
    void listen(Step const & s);
    void unlisten(Step const & s);
    /// Another model with an object of each kind that one-ended ends accept; the one before it ends, whoever refers to
    /// its objects.
    void replaceForeign(Step const & s);

private:
    class Listener;

    [[nodiscard]] ClassObject object(Deviant deviant, int number) const;
    [[nodiscard]] ClassObject object(Step const & s) const { return object(deviant(s.deviant), s.object); }
    [[nodiscard]] int numberOf(ImmutableClassObject const & object) const;
    [[nodiscard]] Listener & listener(Step const & s);

    KernelListeners fCall;
    std::map<std::string, std::vector<std::shared_ptr<Listener>>> fListeners;
    std::map<std::string, MetaModel> fDeviants;
    std::vector<ClassObject> fObjects;
    std::map<int, ClassObject> fForeignObjects;
    MetaModel fForeign;
    std::unordered_map<NSInterface::ClassObjectIntf const *, int> fNumbers;
};

} // namespace ZEL::oracle
