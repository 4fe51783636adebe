#include "Script.h"

#include "Telling.h"

#include <algorithm>
#include <sstream>

namespace ZEL::oracle {

namespace {

constexpr int kStepsTold = 40;

} // namespace

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

Script::Script(std::uint32_t seed) : fSeed(seed), fRandom(seed), fNaive(*this) {
    perform({.what = What::ReplaceForeign, .deviant = kRoot, .value = kFirstForeign});
    for (char const * const name : {"alpha", "bravo", "kilo", "tango"}) {
        perform({.what = What::CreateDeviant, .deviant = name});
    }
    for (char const * const name : {kRoot, "bravo"}) {
        for (Role const role : kRoles) {
            perform({.what = What::Listen, .deviant = name, .value = 0, .index = static_cast<int>(role)});
        }
    }
}

Script::~Script() { unregisterAll(); }

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
    case What::DisableUndo:
        fNaive.disableUndo(s.deviant);
        break;
    case What::ClearUndo:
        fNaive.clearUndo(s.deviant);
        break;
    case What::ClearRedo:
        fNaive.clearRedo(s.deviant);
        break;
    case What::Listen:
        fNaive.listen(s.deviant, static_cast<int>(s.value), static_cast<Role>(s.index));
        break;
    case What::Unlisten:
        fNaive.unlisten(s.deviant, static_cast<int>(s.value), static_cast<Role>(s.index));
        break;
    case What::Sync:
        fNaive.sync(s.deviant);
        break;
    case What::Assign:
        fNaive.assign(s.deviant);
        break;
    default:
        break; // the naive model knows nothing of other models
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
    case What::DisableUndo:
        deviant.disableUndo();
        break;
    case What::ClearUndo:
        deviant.clearUndoStack();
        break;
    case What::ClearRedo:
        deviant.clearRedoStack();
        break;
    case What::Sync:
        deviant.syncFromRoot();
        break;
    case What::Assign:
        deviant.assignToRoot();
        break;
    case What::Listen:
    case What::Unlisten:
        performOnListener(s);
        break;
    default:
        fFirstForeign = static_cast<int>(s.value);
        fKernel.replaceForeign(fFirstForeign);
        break;
    }
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
        NaiveEntry const & entry = *expected.stack[static_cast<std::size_t>(i)];
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
