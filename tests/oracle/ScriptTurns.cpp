// The turns of listeners in a random script: decided on the naive side, repeated on the kernel's.

#include "Script.h"
#include "Telling.h"

#include <ZEL/ListenerHolder.h>

#include <utility>

namespace ZEL::oracle {

namespace {

constexpr int kListeners = 3; ///< of each deviant, in any roles
constexpr std::size_t kMostTurns = 12;

State withoutRiding(State state) {
    for (EndRule const & rule : endsOf(state.kind)) {
        if (rule.form == Form::Riding) {
            state.references.erase(rule.property);
        }
    }
    return state;
}

} // namespace

/// A listener of the kernel for one deviant; modifier, validator and observer as it is registered.
class Script::Listener : public ListenerBase {
public:
    Listener(Script & script, Deviant deviant, int number) : fScript(script), fDeviant(deviant), fNumber(number) {}

    [[nodiscard]] Deviant deviant() const { return fDeviant; }
    [[nodiscard]] int number() const { return fNumber; }

    void enlist(Role role) {
        switch (role) {
        case Role::Modifier:
            return registerModifierOnCommit(fDeviant, *this);
        case Role::Validator:
            return registerValidatorOnCommit(fDeviant, *this);
        case Role::Observer:
            return registerObservingListener(fDeviant, *this);
        }
    }
    void dismiss(Role role) {
        switch (role) {
        case Role::Modifier:
            return fDeviant.unregisterModifierOnCommit(this);
        case Role::Validator:
            return fDeviant.unregisterValidatorOnCommit(this);
        case Role::Observer:
            return fDeviant.unregisterObservingListener(this);
        }
    }

    void modifyOnCommit(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) {
        fScript.replayTurn("modifier", *this, fScript.changesIn(report), report.sourceDeviant);
    }
    bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        return fScript.replayTurn("validator", *this, fScript.changesIn(report), report.sourceDeviant);
    }
    void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        fScript.replayTurn("observer", *this, fScript.changesIn(report), report.sourceDeviant);
    }
    void onDeviantDestroyed() override { fScript.replayTurn("leaver", *this, Changes(), fDeviant); }

private:
    Script & fScript;
    Deviant fDeviant;
    int fNumber;
};

// --- the naive side ----------------------------------------------------------------------------------------------------

Script::Turn & Script::newTurn(char const * phase, std::string const & deviant, int listener, Changes const & changes,
                               Slots const & before) {
    Turn turn;
    turn.phase = phase;
    turn.deviant = deviant;
    turn.listener = listener;
    turn.changes = changes;
    turn.before = before;
    return fTurns.emplace_back(std::move(turn));
}

void Script::take(Turn & turn, Step const & step) {
    std::string const outer = std::exchange(fPhase, turn.phase);
    count(step);
    turn.steps.emplace_back(step, std::string());
    std::size_t const place = turn.steps.size() - 1;
    fLast.push_back("  (" + turn.phase + " " + std::to_string(turn.listener) + ") " + describe(step));
    std::string const outcome = outcomeOf([&] { performOnNaive(step); });
    turn.steps[place].second = outcome;
    fPhase = outer;
}

Step Script::nextOnListeners(std::string const & deviant) {
    return {.what = chance(60) ? What::Listen : What::Unlisten,
            .deviant = deviant,
            .value = below(kListeners),
            .index = below(static_cast<int>(std::size(kRoles)))};
}

void Script::takeListening(Turn & turn) {
    while (chance(15)) {
        take(turn, nextOnListeners(turn.deviant));
    }
}

void Script::modify(std::string const & deviant, int listener, Changes const & changes, Slots const & before) {
    Turn & turn = newTurn("modifier", deviant, listener, changes, before);
    takeListening(turn);
    int const choice = below(100);
    if (choice < 25) {
        for (int i = 0; i < 2; ++i) {
            take(turn, nextWrite(deviant));
        }
    } else if (choice < 28) {
        take(turn, {.what = What::Cancel, .deviant = deviant});
    } else if (choice < 31) {
        take(turn, {.what = What::Begin, .deviant = deviant, .text = "left open"});
    } else if (choice < 33) {
        take(turn, {.what = What::DisableUndo, .deviant = deviant});
    } else if (choice < 37) {
        turn.throws = true;
        throw ListenerFailure();
    }
}

bool Script::validate(std::string const & deviant, int listener, Changes const & changes, Slots const & before) {
    Turn & turn = newTurn("validator", deviant, listener, changes, before);
    takeListening(turn);
    int const choice = below(100);
    if (choice < 4) {
        turn.throws = true;
        throw ListenerFailure();
    }
    turn.isRefused = choice < 16;
    return !turn.isRefused;
}

void Script::observe(std::string const & deviant, int listener, Changes const & changes, Slots const & before) {
    Turn & turn = newTurn("observer", deviant, listener, changes, before);
    takeListening(turn);
    int const choice = below(100);
    if (choice < 6) {
        turn.throws = true;
        throw ListenerFailure();
    }
    if (fIsJumping || fTurns.size() >= kMostTurns) {
        return;
    }
    if (choice < 18) {
        take(turn, {.what = What::Begin, .deviant = deviant, .text = "by an observer"});
        take(turn, nextWrite(deviant));
        take(turn, {.what = chance(80) ? What::Commit : What::Cancel, .deviant = deviant});
    } else if (choice < 22 && deviant == kRoot) {
        take(turn, {.what = chance(50) ? What::Undo : What::Redo, .deviant = kRoot});
    } else if (choice < 25) {
        std::vector<What> const endings{What::ClearUndo, What::ClearRedo, What::DisableUndo};
        take(turn, {.what = any(endings), .deviant = deviant});
    }
}

void Script::leave(std::string const & deviant, int listener) {
    takeListening(newTurn("leaver", deviant, listener, Changes(), Slots()));
}

// --- the kernel's side ---------------------------------------------------------------------------------------------------

void Script::performOnListener(Step const & s) {
    std::vector<std::shared_ptr<Listener>> & listeners = fListeners[s.deviant];
    for (int number = static_cast<int>(listeners.size()); number < kListeners; ++number) {
        listeners.push_back(std::make_shared<Listener>(*this, fKernel.deviant(s.deviant), number));
    }
    Listener & listener = *listeners[static_cast<std::size_t>(s.value)];
    if (s.what == What::Listen) {
        listener.enlist(static_cast<Role>(s.index));
    } else {
        listener.dismiss(static_cast<Role>(s.index));
    }
}

void Script::unregisterAll() {
    for (auto const & [name, deviant] : fNaive.deviants()) {
        for (auto const & [role, registered] : deviant.listeners) {
            for (Registration const & each : registered) {
                fListeners.at(name).at(static_cast<std::size_t>(each.listener))->dismiss(role);
            }
        }
    }
}

template <class Report> Changes Script::changesIn(Report const & report) const {
    Changes result;
    for (auto const & object : report.created) {
        result.created.insert(fKernel.numberOf(object.getImplementationWithoutAssert()));
    }
    for (auto const & object : report.deleted) {
        result.deleted.insert(fKernel.numberOf(object.getImplementationWithoutAssert()));
    }
    for (auto const & object : report.modified) {
        result.modified.insert(fKernel.numberOf(object.getImplementationWithoutAssert()));
    }
    return result;
}

bool Script::replayTurn(char const * phase, Listener const & listener, Changes const & changes, Deviant view) {
    std::string const deviant = listener.deviant().getName();
    if (fNextTurn == fTurns.size()) {
        problem(std::string("a ") + phase + " is called that should not be");
        return true;
    }
    Turn const & turn = fTurns[fNextTurn++];
    if (turn.phase != phase || turn.deviant != deviant || turn.listener != listener.number()) {
        problem(std::string(phase) + ' ' + std::to_string(listener.number()) + " of " + deviant + " in place of " +
                turn.phase + ' ' + std::to_string(turn.listener) + " of " + turn.deviant);
        return true;
    }
    if (!(turn.changes == changes)) {
        problem(turn.phase + " hears: " + told(changes) + "\n    in place of: " + told(turn.changes));
    }
    for (auto const & [object, slot] : turn.before) {
        std::optional<State> seen = fKernel.observed(view, object, fNaive.kindOf(object));
        if (slot.says == Slot::Present && (!seen || withoutRiding(*seen) != slot.state)) {
            problem(turn.phase + " sees before #" + std::to_string(object) + told(seen) + "\n    in place of" +
                    told(slot.state));
        }
    }
    for (auto const & [step, expected] : turn.steps) {
        std::string const given = outcomeOf([&step = step, this] { performOnKernel(step); });
        if (expected.empty() != given.empty() || given.find(expected) == std::string::npos) {
            problem(turn.phase + ": outcome '" + given + "' in place of '" + expected + "'");
        }
    }
    if (turn.throws) {
        throw ListenerFailure();
    }
    return !turn.isRefused;
}

} // namespace ZEL::oracle
