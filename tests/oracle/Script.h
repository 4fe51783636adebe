#pragma once

#include "KernelModel.h"

#include <cstdint>
#include <random>

namespace ZEL::tests::oracle {

/// How often each operation met each phase of a transaction.
using PhaseCounts = std::map<std::string, std::map<std::string, int>>;

/// A random script that runs on the naive model and on the kernel, step by step, and compares all that can be seen.
///
/// The naive model goes first. What its listeners decide is noted down, and the listeners of the kernel do the same and
/// check that they have been called in the same order with the same changes.
class Script {
public:
    /// Adds to the counts.
    Script(std::uint32_t seed, PhaseCounts & counts);
    Script(Script const &) = delete;
    Script & operator=(Script const &) = delete;

    /// Stops at the first difference.
    void run(int steps);
    /// Empty, or the differences with the seed and the last steps.
    [[nodiscard]] std::string const & problems() const { return fProblems; }

private:
    struct Turn {
        Hearing hearing;
        Slots before;
        std::vector<std::pair<Step, std::string>> steps{}; ///< with the outcome of each
        bool isRefused = false;
        bool throws = false;
    };

    // --- running -------------------------------------------------------------------------------------------------------
    void perform(Step const & step);
    void compareOutcome(std::string const & given, std::string const & expected);
    void compare(bool everything, std::string const & deviant);
    void compareProtocol(NaiveDeviant const & expected);
    void compareObjects(std::string const & deviant);
    void problem(std::string const & text);

    // --- the turns of listeners: decided on the naive side, repeated on the kernel's -------------------------------------
    bool decide(Hearing const & hearing, Slots const & before);
    bool repeat(Hearing const & hearing, Deviant view);
    void take(Turn & turn, Step const & step);
    void modify(Turn & turn);
    void observe(Turn & turn);

    // --- what next -------------------------------------------------------------------------------------------------------
    int below(int limit) { return static_cast<int>(fRandom() % static_cast<std::uint32_t>(limit)); }
    bool chance(int percent) { return below(100) < percent; }
    template <class List> auto const & any(List const & list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }
    /// One of the steps, each as often as its share is large.
    Step choose(std::vector<std::pair<int, Step>> const & shares);
    Step nextStep();
    Step nextInIdle(std::string const & deviant);
    Step nextInTransaction(std::string const & deviant);
    Step nextOnHistory();
    Step nextOnStack(std::string const & deviant);
    Step nextOnListeners(std::string const & deviant);
    Step nextWrite(std::string const & deviant);
    std::optional<Step> tryWrite(std::string const & deviant, std::vector<int> const & objects);
    Step anyValue(std::string const & deviant, int object);
    std::optional<Step> tryEnd(std::string const & deviant, int object, std::vector<int> const & objects);
    std::optional<Step> tryContainer(std::string const & deviant, int object, std::vector<int> const & objects);
    std::vector<int> validIn(std::string const & deviant) const;
    [[nodiscard]] bool isAnchored(std::string const & deviant, int object) const;
    [[nodiscard]] bool isSound(std::string const & deviant, int object) const;

    std::uint32_t fSeed;
    std::mt19937 fRandom;
    PhaseCounts & fCounts;
    NaiveModel fNaive;
    KernelModel fKernel;
    int fFirstForeign = kFirstForeign; ///< of the other model that there is now
    std::deque<Turn> fTurns;
    std::size_t fNextTurn = 0;
    bool fIsJumping = false;
    std::deque<std::string> fLast;
    std::string fProblems;
};

} // namespace ZEL::tests::oracle
