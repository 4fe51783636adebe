#include "Script.h"

#include <ZEL/Exception.h>
#include <ZEL/ListenerHolder.h>

#include <algorithm>
#include <sstream>

namespace ZEL::oracle {

namespace {

constexpr int kStepsTold = 40;

template <class Action> std::string outcomeOf(Action action) {
    try {
        action();
    } catch (Exception const & exception) {
        return exception.GetMessageTxt();
    } catch (std::exception const & exception) {
        return exception.what();
    }
    return std::string();
}

void print(std::ostream & out, State const & state) {
    for (auto const & [property, value] : state.flags) {
        out << ' ' << property << '=' << value;
    }
    for (auto const & [property, value] : state.texts) {
        out << ' ' << property << "='" << value << '\'';
    }
    for (auto const & [property, value] : state.numbers) {
        out << ' ' << property << '=' << value;
    }
    for (auto const & [property, value] : state.references) {
        out << ' ' << property << "=#" << value;
    }
    for (auto const & [property, list] : state.lists) {
        out << ' ' << property << "=[";
        for (int const value : list) {
            out << '#' << value << ' ';
        }
        out << ']';
    }
    for (std::string const & line : state.body) {
        out << " body='" << line << '\'';
    }
    out << " container=#" << state.container;
}

std::string told(std::optional<State> const & state) {
    std::ostringstream out;
    if (state) {
        print(out, *state);
    } else {
        out << " (absent)";
    }
    return out.str();
}

std::string told(std::set<int> const & numbers) {
    std::ostringstream out;
    for (int const number : numbers) {
        out << '#' << number << ' ';
    }
    return out.str();
}

std::string told(Changes const & changes) {
    return "created " + told(changes.created) + "deleted " + told(changes.deleted) + "modified " +
           told(changes.modified);
}

State withoutRiding(State state) {
    for (EndRule const & rule : endsOf(state.kind)) {
        if (rule.form == Form::Riding) {
            state.references.erase(rule.property);
        }
    }
    return state;
}

} // namespace

char const * nameOf(What what) {
    static char const * const names[] = {"create",        "set flag",         "set text",       "remove text",
                                         "set number",    "remove number",    "set reference",  "remove reference",
                                         "link",          "unlink",           "add body",       "erase body",
                                         "set container", "remove container", "destroy",        "begin",
                                         "commit",        "cancel",           "undo",           "redo",
                                         "undo to level", "redo to level",    "set maximum",    "sync",
                                         "assign",        "create deviant",   "remove deviant", "listen"};
    return names[static_cast<int>(what)];
}

std::string describe(Step const & step) {
    std::ostringstream out;
    out << step.deviant << ": " << nameOf(step.what);
    if (step.object != kNothing) {
        out << " #" << step.object;
    }
    out << ' ' << step.property << " value " << step.value << " index " << step.index << " '" << step.text << "' kind "
        << static_cast<int>(step.kind);
    return out.str();
}

// --- what both sides do alike ------------------------------------------------------------------------------------------

namespace {

/// Steps on objects. False for all others.
template <class Model> bool performOnObject(Model & model, Step const & s) {
    switch (s.what) {
    case What::Create:
        model.create(s.deviant, s.kind);
        return true;
    case What::SetFlag:
        model.setFlag(s.deviant, s.object, s.property, s.value != 0);
        return true;
    case What::SetText:
        model.setText(s.deviant, s.object, s.property, s.text);
        return true;
    case What::RemoveText:
        model.removeText(s.deviant, s.object, s.property);
        return true;
    case What::SetNumber:
        model.setNumber(s.deviant, s.object, s.property, s.value);
        return true;
    case What::RemoveNumber:
        model.removeNumber(s.deviant, s.object, s.property);
        return true;
    case What::SetReference:
        model.setReference(s.deviant, s.object, s.property, static_cast<int>(s.value));
        return true;
    case What::RemoveReference:
        model.removeReference(s.deviant, s.object, s.property);
        return true;
    case What::Link:
        model.link(s.deviant, s.object, s.property, static_cast<int>(s.value), s.index != 0);
        return true;
    case What::Unlink:
        model.unlink(s.deviant, s.object, s.property, s.index);
        return true;
    case What::AddBody:
        model.addBody(s.deviant, s.object, s.index, s.text);
        return true;
    case What::EraseBody:
        model.eraseBody(s.deviant, s.object, s.index);
        return true;
    case What::SetContainer:
        model.setContainer(s.deviant, s.object, static_cast<int>(s.value));
        return true;
    case What::RemoveContainer:
        model.removeContainer(s.deviant, s.object);
        return true;
    case What::Destroy:
        model.destroy(s.deviant, s.object);
        return true;
    case What::CreateDeviant:
        model.createDeviant(s.deviant);
        return true;
    case What::RemoveDeviant:
        model.removeDeviant(s.deviant);
        return true;
    default:
        return false;
    }
}

} // namespace

/// The kernel's listener for one deviant: modifier, validator and observer in one.
class Script::Listener : public ListenerBase {
public:
    Listener(Script & script, Deviant deviant) : fScript(script), fDeviant(deviant) {
        registerModifierOnCommit(deviant, *this);
        registerValidatorOnCommit(deviant, *this);
        registerObservingListener(deviant, *this);
    }
    void unregister() {
        fDeviant.unregisterModifierOnCommit(this);
        fDeviant.unregisterValidatorOnCommit(this);
        fDeviant.unregisterObservingListener(this);
    }
    void modifyOnCommit(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) {
        fScript.replayTurn("modifier", fDeviant, fScript.changesIn(report), report.sourceDeviant);
    }
    bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        return fScript.replayTurn("validator", fDeviant, fScript.changesIn(report), report.sourceDeviant);
    }
    void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        fScript.replayTurn("observer", fDeviant, fScript.changesIn(report), report.sourceDeviant);
    }

private:
    Script & fScript;
    Deviant fDeviant;
};

Script::Script(std::uint32_t seed) : fSeed(seed), fRandom(seed), fNaive(*this) {
    for (char const * const name : {"alpha", "bravo", "kilo", "tango"}) {
        perform({.what = What::CreateDeviant, .deviant = name});
    }
    perform({.what = What::Listen, .deviant = kRoot});
    perform({.what = What::Listen, .deviant = "bravo"});
}

Script::~Script() {
    for (auto const & [name, listener] : fListeners) {
        listener->unregister();
    }
}

void Script::run(int steps) {
    for (int i = 0; i < steps && fProblems.empty(); ++i) {
        Step const step = nextStep();
        perform(step);
        bool const isProtocol = step.what >= What::Begin && step.what != What::Begin;
        compare(isProtocol || i % 8 == 0 || i + 1 == steps, step.deviant);
    }
}

void Script::perform(Step const & step) {
    count(step);
    fLast.push_back(describe(step));
    if (fLast.size() > kStepsTold) {
        fLast.pop_front();
    }
    fIsJumping = step.what == What::UndoToLevel || step.what == What::RedoToLevel;
    fTurns.clear();
    fNextTurn = 0;
    std::string const expected = outcomeOf([&] { performOnNaive(step); });
    std::string const given = outcomeOf([&] { performOnKernel(step); });
    if (!expected.empty()) {
        fLast.back() += " -> " + expected;
    }
    if (expected.empty() != given.empty() || given.find(expected) == std::string::npos) {
        problem("outcome '" + given + "' in place of '" + expected + "'");
    }
    if (fNextTurn != fTurns.size()) {
        problem("a listener has not been called");
    }
}

void Script::count(Step const & step) {
    std::string phase = fPhase;
    if (phase.empty() && step.what != What::CreateDeviant) {
        NaiveDeviant const & deviant = fNaive.deviant(step.deviant);
        phase = deviant.depth == 0 ? "idle" : deviant.depth == 1 ? "transaction" : "nested";
    }
    ++fCounts[step.what][phase.empty() ? "idle" : phase];
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

// --- the naive side ----------------------------------------------------------------------------------------------------

void Script::performOnNaive(Step const & s) {
    if (performOnObject(fNaive, s)) {
        return;
    }
    switch (s.what) {
    case What::Begin:
        fNaive.begin(s.deviant, s.text);
        break;
    case What::Commit:
        fNaive.commit(s.deviant);
        break;
    case What::Cancel:
        fNaive.cancel(s.deviant);
        break;
    case What::Undo:
        fNaive.undo();
        break;
    case What::Redo:
        fNaive.redo();
        break;
    case What::UndoToLevel:
        fNaive.undoToLevel(static_cast<int>(s.value));
        break;
    case What::RedoToLevel:
        fNaive.redoToLevel(static_cast<int>(s.value));
        break;
    case What::SetMaximum:
        fNaive.setMaximum(static_cast<int>(s.value));
        break;
    case What::Sync:
        fNaive.sync(s.deviant);
        break;
    case What::Assign:
        fNaive.assign(s.deviant);
        break;
    default:
        fNaive.listen(s.deviant);
        break;
    }
}

Script::Turn & Script::newTurn(char const * phase, std::string const & deviant, Changes const & changes,
                               Slots const & before) {
    Turn turn;
    turn.phase = phase;
    turn.deviant = deviant;
    turn.changes = changes;
    turn.before = before;
    return fTurns.emplace_back(std::move(turn));
}

void Script::take(Turn & turn, Step const & step) {
    std::string const outer = std::exchange(fPhase, turn.phase);
    count(step);
    turn.steps.emplace_back(step, std::string());
    std::size_t const place = turn.steps.size() - 1;
    fLast.push_back("  (" + turn.phase + ") " + describe(step));
    std::string const outcome = outcomeOf([&] { performOnNaive(step); });
    turn.steps[place].second = outcome;
    fPhase = outer;
}

void Script::modify(std::string const & deviant, Changes const & changes, Slots const & before) {
    Turn & turn = newTurn("modifier", deviant, changes, before);
    int const choice = below(100);
    if (choice < 25) {
        for (int i = 0; i < 2; ++i) {
            take(turn, nextWrite(deviant));
        }
    } else if (choice < 28) {
        take(turn, {.what = What::Cancel, .deviant = deviant});
    } else if (choice < 31) {
        take(turn, {.what = What::Begin, .deviant = deviant, .text = "left open"});
    } else if (choice < 35) {
        turn.throws = true;
        throw ListenerFailure();
    }
}

bool Script::validate(std::string const & deviant, Changes const & changes, Slots const & before) {
    Turn & turn = newTurn("validator", deviant, changes, before);
    int const choice = below(100);
    if (choice < 4) {
        turn.throws = true;
        throw ListenerFailure();
    }
    turn.isRefused = choice < 16;
    return !turn.isRefused;
}

void Script::observe(std::string const & deviant, Changes const & changes, Slots const & before) {
    Turn & turn = newTurn("observer", deviant, changes, before);
    int const choice = below(100);
    if (choice < 6) {
        turn.throws = true;
        throw ListenerFailure();
    }
    if (choice < 18 && !fIsJumping && fTurns.size() < 8) {
        take(turn, {.what = What::Begin, .deviant = deviant, .text = "by an observer"});
        take(turn, nextWrite(deviant));
        take(turn, {.what = chance(80) ? What::Commit : What::Cancel, .deviant = deviant});
    } else if (choice < 22 && !fIsJumping && deviant == kRoot && fTurns.size() < 8) {
        take(turn, {.what = chance(50) ? What::Undo : What::Redo, .deviant = kRoot});
    }
}

// --- the kernel's side ---------------------------------------------------------------------------------------------------

void Script::performOnKernel(Step const & s) {
    if (s.what == What::RemoveDeviant) {
        // The kernel deletes the holders; the listener itself goes only if the deviant went.
        fKernel.removeDeviant(s.deviant);
        fListeners.erase(s.deviant);
        return;
    }
    if (performOnObject(fKernel, s)) {
        return;
    }
    Deviant const deviant = fKernel.deviant(s.deviant);
    switch (s.what) {
    case What::Begin:
        deviant.beginTransaction(s.text);
        break;
    case What::Commit:
        deviant.commitTransaction();
        break;
    case What::Cancel:
        deviant.cancelTransaction();
        break;
    case What::Undo:
        deviant.undo();
        break;
    case What::Redo:
        deviant.redo();
        break;
    case What::UndoToLevel:
        deviant.undoToChangeLevel(static_cast<int>(s.value));
        break;
    case What::RedoToLevel:
        deviant.redoToChangeLevel(static_cast<int>(s.value));
        break;
    case What::SetMaximum:
        deviant.setMaximumUndoStackLength(static_cast<int>(s.value));
        break;
    case What::Sync:
        deviant.syncFromRoot();
        break;
    case What::Assign:
        deviant.assignToRoot();
        break;
    default:
        if (fListeners.count(s.deviant) == 0) {
            fListeners[s.deviant] = std::make_unique<Listener>(*this, deviant);
        } else {
            fListeners[s.deviant]->unregister();
            fListeners.erase(s.deviant);
        }
        break;
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

bool Script::replayTurn(char const * phase, Deviant deviant, Changes const & changes, Deviant view) {
    if (fNextTurn == fTurns.size()) {
        problem(std::string("a ") + phase + " is called that should not be");
        return true;
    }
    Turn const & turn = fTurns[fNextTurn++];
    if (turn.phase != phase || turn.deviant != deviant.getName()) {
        problem(std::string(phase) + " of " + deviant.getName() + " in place of " + turn.phase + " of " + turn.deviant);
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

// --- comparing -----------------------------------------------------------------------------------------------------------

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
            std::ostringstream out;
            out << expected.name << ": " << what << " is " << is << " in place of " << shouldBe;
            problem(out.str());
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
        NaiveEntry const & entry = expected.stack[static_cast<std::size_t>(i)];
        int const undo = expected.position - 1 - i;
        int const redo = i - expected.position;
        differs("name", undo >= 0 ? given.getUndoNameAt(undo) : given.getRedoNameAt(redo), entry.name);
        differs("level", undo >= 0 ? given.getUndoChangeLevelAt(undo) : given.getRedoChangeLevelAt(redo), entry.level);
    }
    if (!expected.isRoot) {
        std::set<int> const is = fKernel.deviating(expected.name);
        std::set<int> const shouldBe = fNaive.deviating(expected.name);
        if (is != shouldBe) {
            problem(expected.name + " deviates in " + told(is) + "in place of " + told(shouldBe));
        }
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

} // namespace ZEL::oracle
