// How a random script runs, and what its problems look like.

#include "Script.h"

#include <gtest/gtest.h>

#include <sstream>

namespace ZEL::tests::oracle {

namespace {

using testing::PrintToString;

constexpr std::size_t kStepsTold = 40;

/// The text of what the step throws; empty if it returns.
template <class Model> std::string outcomeOf(Model & model, Step const & step) {
    try {
        model.perform(step);
    } catch (Exception const & exception) {
        return exception.GetMessageTxt();
    } catch (std::exception const & exception) {
        return exception.what();
    }
    return std::string();
}

/// What a listener of the script throws, on both sides.
struct ListenerFailure : std::runtime_error {
    ListenerFailure() : std::runtime_error("listener failure") {}
};

// --- telling -----------------------------------------------------------------------------------------------------------

std::string told(std::optional<State> const & state) {
    return !state ? " (absent)"
                  : " values " + PrintToString(state->values) + " ends " + PrintToString(state->ends) + " body " +
                        PrintToString(state->body) + " container #" + std::to_string(state->container);
}

char const * told(Role role) {
    static char const * const names[] = {"modifier", "validator", "observer", "leaver"};
    return names[static_cast<std::size_t>(role)];
}

std::string told(Hearing const & hearing) {
    return std::string(told(hearing.role)) + ' ' + std::to_string(hearing.listener) + " of " + hearing.deviant +
           ", created " + PrintToString(hearing.changes.created) + ", deleted " +
           PrintToString(hearing.changes.deleted) + ", modified " + PrintToString(hearing.changes.modified);
}

std::string told(Step const & step) {
    std::ostringstream out;
    out << step.deviant << ": " << step.what << " #" << step.object << ' ' << step.property << " value " << step.value
        << " index " << step.index << " '" << step.text << "' kind " << static_cast<int>(step.kind);
    return out.str();
}

State withoutRiding(State state) {
    for (EndRule const & rule : endsOf(state.kind)) {
        if (rule.form == Form::Riding) {
            state.ends.erase(rule.property);
        }
    }
    return state;
}

} // namespace

// --- running -----------------------------------------------------------------------------------------------------------

Script::Script(std::uint32_t seed, PhaseCounts & counts)
    : fSeed(seed),
      fRandom(seed),
      fCounts(counts),
      fNaive([this](Hearing const & hearing, Slots const & before) { return decide(hearing, before); }),
      fKernel([this](Hearing const & hearing, Deviant view) { return repeat(hearing, view); }) {
    perform({.what = "replace foreign", .deviant = kRoot, .value = kFirstForeign});
    for (char const * const name : {"alpha", "bravo", "kilo", "tango"}) {
        perform({.what = "create deviant", .deviant = name});
    }
    for (char const * const name : {kRoot, "bravo"}) {
        for (Role const role : kRoles) {
            perform({.what = "listen", .deviant = name, .value = 0, .index = static_cast<int>(role)});
        }
    }
}

void Script::run(int steps) {
    for (int i = 0; i < steps && fProblems.empty(); ++i) {
        Step const step = nextStep();
        perform(step);
        bool const isOnHistory = !NaiveModel::isOnObject(step) && step.what != "begin";
        compare(isOnHistory || i % 8 == 0 || i + 1 == steps, step.deviant);
    }
}

void Script::perform(Step const & step) {
    int const depth = step.what == "create deviant" ? 0 : fNaive.deviant(step.deviant).depth;
    ++fCounts[step.what][depth == 0 ? "idle" : depth == 1 ? "transaction" : "nested"];
    fLast.push_back(told(step));
    if (fLast.size() > kStepsTold) {
        fLast.pop_front();
    }
    fIsJumping = step.what == "undo to level" || step.what == "redo to level";
    fFirstForeign = step.what == "replace foreign" ? step.value : fFirstForeign;
    fTurns.clear();
    fNextTurn = 0;
    std::string const expected = outcomeOf(fNaive, step);
    fLast.back() += expected.empty() ? "" : " -> " + expected;
    compareOutcome(outcomeOf(fKernel, step), expected);
    if (fNextTurn != fTurns.size()) {
        problem("a listener has not been called");
    }
}

void Script::problem(std::string const & text) {
    if (fProblems.empty()) {
        fProblems = "seed " + std::to_string(fSeed) + ", last steps:\n";
        for (std::string const & step : fLast) {
            fProblems += "  " + step + '\n';
        }
    }
    fProblems += text + '\n';
}

// --- the turns of listeners ----------------------------------------------------------------------------------------------

void Script::take(Turn & turn, Step const & step) {
    if (step.what.empty()) {
        return;
    }
    ++fCounts[step.what][told(turn.hearing.role)];
    fLast.push_back(std::string("  (") + told(turn.hearing.role) + ' ' + std::to_string(turn.hearing.listener) + ") " +
                    told(step));
    turn.steps.emplace_back(step, outcomeOf(fNaive, step));
}

bool Script::decide(Hearing const & hearing, Slots const & before) {
    Turn & turn = fTurns.emplace_back(Turn{hearing, before});
    while (chance(15)) {
        take(turn, nextOnListeners(hearing.deviant)); // the one whose turn it is comes and goes, too
    }
    turn.throws = hearing.role != Role::Leaver && chance(5);
    if (turn.throws) {
        throw ListenerFailure();
    }
    if (hearing.role == Role::Modifier) {
        modify(turn);
    } else if (hearing.role == Role::Observer) {
        observe(turn);
    }
    turn.isRefused = hearing.role == Role::Validator && chance(12);
    return !turn.isRefused;
}

bool Script::repeat(Hearing const & hearing, Deviant view) {
    if (fNextTurn == fTurns.size()) {
        problem("called and should not be: " + told(hearing));
        return true;
    }
    Turn const & turn = fTurns[fNextTurn++];
    if (hearing != turn.hearing) {
        problem(told(hearing) + "\n    in place of " + told(turn.hearing));
        return true;
    }
    for (auto const & [object, slot] : turn.before) {
        std::optional<State> const seen = fKernel.observed(view, object, fNaive.kindOf(object));
        if (slot.says == Slot::Present && (!seen || withoutRiding(*seen) != slot.state)) {
            problem(told(hearing) + " sees before #" + std::to_string(object) + told(seen) + "\n    in place of" +
                    told(slot.state));
        }
    }
    for (auto const & [step, expected] : turn.steps) {
        compareOutcome(outcomeOf(fKernel, step), expected);
    }
    if (turn.throws) {
        throw ListenerFailure();
    }
    return !turn.isRefused;
}

// --- comparing -----------------------------------------------------------------------------------------------------------

void Script::compareOutcome(std::string const & given, std::string const & expected) {
    if (expected.empty() != given.empty() || given.find(expected) == std::string::npos) {
        problem("outcome '" + given + "' in place of '" + expected + "'");
    }
}

void Script::compare(bool everything, std::string const & changed) {
    for (auto const & [name, expected] : fNaive.deviants()) {
        compareProtocol(expected);
        if (everything || name == changed) {
            compareObjects(name);
        }
    }
}

void Script::compareProtocol(NaiveDeviant const & expected) {
    Deviant const given = fKernel.deviant(expected.name);
    auto const differs = [&](char const * what, auto const & is, auto const & shouldBe) {
        if (is != shouldBe) {
            problem(expected.name + ": " + what + " is " + PrintToString(is) + " in place of " +
                    PrintToString(shouldBe));
        }
    };
    differs("within a transaction", given.isWithinTransaction(), expected.depth > 0);
    differs("within transaction, undo or redo", given.isWithinTransactionUndoOrRedo(), expected.isWithin);
    differs("change level", given.getCurrentChangeLevel(), expected.level);
    differs("maximum", given.getMaximumUndoStackLength(), expected.maximum);
    differs("undo length", given.getUndoStackLength(), expected.position);
    int const size = static_cast<int>(expected.stack.size());
    differs("redo length", given.getRedoStackLength(), size - expected.position);
    for (int i = 0; i < size; ++i) {
        NaiveEntry const & entry = *expected.stack[static_cast<std::size_t>(i)];
        int const undo = expected.position - 1 - i;
        int const redo = i - expected.position;
        differs("name", undo >= 0 ? given.getUndoNameAt(undo) : given.getRedoNameAt(redo), entry.name);
        differs("level", undo >= 0 ? given.getUndoChangeLevelAt(undo) : given.getRedoChangeLevelAt(redo), entry.level);
    }
    if (!expected.isRoot) {
        differs("deviating", fKernel.deviating(expected.name), fNaive.deviating(expected.name));
    }
}

void Script::compareObjects(std::string const & name) {
    for (int object = 0; object < fNaive.numberOfObjects(); ++object) {
        std::optional<State> const expected = fNaive.observed(name, object);
        std::optional<State> const given = fKernel.observed(fKernel.deviant(name), object, fNaive.kindOf(object));
        if (given != expected) {
            problem(name + ": #" + std::to_string(object) + " is" + told(given) + "\n    in place of" + told(expected));
        }
    }
}

} // namespace ZEL::tests::oracle
