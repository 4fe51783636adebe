#pragma once

#include "KernelModel.h"
#include "NaiveModel.h"

#include <ZEL/ListenerBase.h>
#include <ZEL/ReportOfChanges.h>

#include <cstdint>
#include <deque>
#include <random>

namespace ZEL::oracle {

enum class What {
    Create,
    SetFlag,
    SetText,
    RemoveText,
    SetNumber,
    RemoveNumber,
    SetReference,
    RemoveReference,
    Link,
    Unlink,
    AddBody,
    EraseBody,
    SetContainer,
    RemoveContainer,
    Destroy,
    Begin,
    Commit,
    Cancel,
    Undo,
    Redo,
    UndoToLevel,
    RedoToLevel,
    SetMaximum,
    DisableUndo,
    ClearUndo,
    ClearRedo,
    Sync,
    Assign,
    CreateDeviant,
    RemoveDeviant,
    Listen, ///< the listener `value`, in the role `index`
    Unlisten,
    ReplaceForeign, ///< the other model, by one whose objects are numbered from `value` on
    Last = ReplaceForeign
};

char const * nameOf(What what);

struct Step {
    What what = What::Begin;
    std::string deviant{};
    int object = kNothing;
    std::string property{};
    long long value = 0;
    int index = 0;
    std::string text{};
    Kind kind = Kind::Package;
};

std::string describe(Step const & step);

/// How often each operation met each phase of a transaction.
using PhaseCounts = std::map<What, std::map<std::string, int>>;

/// A random script that runs on the naive model and on the kernel, step by step, and compares all that can be seen.
///
/// The naive model goes first. What its listeners decide is noted down, and the listeners of the kernel do the same and
/// check that they have been called in the same order with the same changes.
class Script : private NaiveListener {
public:
    explicit Script(std::uint32_t seed);
    ~Script() override;
    Script(Script const &) = delete;
    Script & operator=(Script const &) = delete;

    /// Stops at the first difference.
    void run(int steps);
    /// Empty, or the differences with the seed and the last steps.
    [[nodiscard]] std::string const & problems() const { return fProblems; }
    [[nodiscard]] PhaseCounts const & counts() const { return fCounts; }

private:
    class Listener;
    struct Turn {
        std::string phase;
        std::string deviant;
        int listener = 0;
        Changes changes;
        Slots before;
        std::vector<std::pair<Step, std::string>> steps; ///< with the outcome of each
        bool isRefused = false;
        bool throws = false;
    };

    // --- the naive side ------------------------------------------------------------------------------------------------
    void modify(std::string const & deviant, int listener, Changes const & changes, Slots const & before) override;
    bool validate(std::string const & deviant, int listener, Changes const & changes, Slots const & before) override;
    void observe(std::string const & deviant, int listener, Changes const & changes, Slots const & before) override;
    void leave(std::string const & deviant, int listener) override;
    Turn & newTurn(char const * phase, std::string const & deviant, int listener, Changes const & changes,
                   Slots const & before);
    /// Comings and goings of listeners, the one whose turn it is included.
    void takeListening(Turn & turn);
    void take(Turn & turn, Step const & step);
    void performOnNaive(Step const & step);

    // --- the kernel's side -----------------------------------------------------------------------------------------------
    bool replayTurn(char const * phase, Listener const & listener, Changes const & changes, Deviant view);
    void performOnKernel(Step const & step);
    void performOnListener(Step const & step);
    void unregisterAll();
    template <class Report> Changes changesIn(Report const & report) const;

    // --- what next -------------------------------------------------------------------------------------------------------
    int below(int limit) { return static_cast<int>(fRandom() % static_cast<std::uint32_t>(limit)); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T> T const & any(std::vector<T> const & list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }
    Step nextStep();
    Step nextInIdle(std::string const & deviant);
    Step nextOnHistory();
    Step nextOnStack(std::string const & deviant);
    Step nextOnListeners(std::string const & deviant);
    Step nextInTransaction(std::string const & deviant);
    Step nextWrite(std::string const & deviant);
    std::optional<Step> tryWrite(std::string const & deviant, std::vector<int> const & objects);
    std::optional<Step> tryValue(std::string const & deviant, int object);
    std::optional<Step> tryReference(std::string const & deviant, int object, std::vector<int> const & objects);
    std::optional<Step> tryList(std::string const & deviant, int object, std::vector<int> const & objects);
    std::optional<Step> tryContainer(std::string const & deviant, int object, std::vector<int> const & objects);
    std::vector<int> foreignOf(std::set<Kind> const & kinds) const;
    std::vector<int> validIn(std::string const & deviant) const;
    std::vector<int> ofKinds(std::vector<int> const & objects, std::set<Kind> const & kinds) const;
    [[nodiscard]] bool isAnchored(std::string const & deviant, int object) const;
    [[nodiscard]] bool isSound(std::string const & deviant, int object) const;

    void perform(Step const & step);
    void count(Step const & step);
    void compare(bool everything, std::string const & deviant);
    void compareProtocol(NaiveDeviant const & expected);
    void compareObjects(std::string const & deviant);
    void problem(std::string const & text);

    std::uint32_t fSeed;
    std::mt19937 fRandom;
    NaiveModel fNaive;
    KernelModel fKernel;
    int fFirstForeign = kFirstForeign; ///< of the other model that there is now
    std::map<std::string, std::vector<std::shared_ptr<Listener>>> fListeners;
    std::deque<Turn> fTurns;
    std::size_t fNextTurn = 0;
    std::string fPhase; ///< of the listener that is running
    bool fIsJumping = false;
    std::deque<std::string> fLast;
    std::string fProblems;
    PhaseCounts fCounts;
};

} // namespace ZEL::oracle
