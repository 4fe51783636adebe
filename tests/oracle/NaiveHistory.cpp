// Transactions, history and the roads between deviants of the naive model.

#include "NaiveModel.h"

#include <algorithm>
#include <iterator>

namespace ZEL::tests::oracle {

// --- deviants --------------------------------------------------------------------------------------------------------

void NaiveModel::createDeviant(Step const & s) {
    if (fDeviants.count(s.deviant) == 0) {
        fDeviants[s.deviant].name = s.deviant;
    }
}

void NaiveModel::removeDeviant(Step const & s) {
    NaiveDeviant & deviant = at(s.deviant);
    if (deviant.depth != 0) {
        throw Refusal("cannot remove deviant when it is within a transaction");
    }
    for (Role const role : kRoles) {
        callAll(s.deviant, role, [&](int listener) {
            fListeners({Role::Leaver, s.deviant, listener}, {});
            std::erase_if(deviant.listeners[role], [&](auto const & each) { return each.listener == listener; });
            return true;
        });
        deviant.listeners[role].clear(); // who came meanwhile
    }
    fDeviants.erase(s.deviant);
}

// --- listeners -------------------------------------------------------------------------------------------------------

void NaiveModel::listen(Step const & s) {
    std::vector<Registration> & registered = at(s.deviant).listeners[static_cast<Role>(s.index)];
    if (std::any_of(registered.begin(), registered.end(),
                    [&](auto const & each) { return each.listener == s.value; })) {
        throw Refusal("listener already registered with deviant");
    }
    registered.push_back({s.value, ++fRegistrations});
}

void NaiveModel::unlisten(Step const & s) {
    std::vector<Registration> & registered = at(s.deviant).listeners[static_cast<Role>(s.index)];
    if (std::erase_if(registered, [&](auto const & each) { return each.listener == s.value; }) == 0) {
        throw Refusal("listener not registered with deviant");
    }
}

Changes NaiveModel::prepare(NaiveDeviant & deviant, Role role, Slots const & before) {
    deviant.preparations += deviant.listeners[role].empty() ? 0 : 1;
    return changes(before, deviant);
}

template <class Call> bool NaiveModel::callAll(std::string const & name, Role role, Call call) {
    std::vector<Registration> const registered = at(name).listeners[role];
    return std::all_of(registered.begin(), registered.end(), [&](Registration const & each) {
        std::vector<Registration> const & now = at(name).listeners[role];
        return std::find(now.begin(), now.end(), each) == now.end() || call(each.listener);
    });
}

bool NaiveModel::askAll(NaiveDeviant & deviant, Role role) {
    Changes const heard = prepare(deviant, role, deviant.saved);
    return callAll(deviant.name, role, [&](int listener) {
        return fListeners({role, deviant.name, listener, heard}, deviant.saved);
    });
}

// --- transactions ----------------------------------------------------------------------------------------------------

void NaiveModel::begin(Step const & s) {
    NaiveDeviant & deviant = at(s.deviant);
    finish(deviant);
    if (deviant.depth == 0) {
        deviant.transactionName = s.text;
        deviant.transactionLevel = deviant.level;
        deviant.isWithin = true;
    }
    ++deviant.depth;
}

void NaiveModel::commit(Step const & s) {
    NaiveDeviant & deviant = at(s.deviant);
    if (deviant.depth < 1) {
        throw Refusal("transaction not started");
    }
    if (deviant.depth > 1 || deviant.saved.empty()) {
        --deviant.depth;
        return;
    }
    bool const isRecorded = deviant.maximum > 0;
    bool const isListenedTo =
        std::any_of(std::begin(kRoles), std::end(kRoles), [&](Role role) { return !deviant.listeners[role].empty(); });
    if (isRecorded && isListenedTo) {
        askAll(deviant, Role::Modifier);
        if (!isStillCommitting(deviant)) {
            return;
        }
        if (!askAll(deviant, Role::Validator)) {
            cancel(s);
            return;
        }
    }
    Changes const all = isRecorded ? prepare(deviant, Role::Observer, deviant.saved) : Changes();
    if (deviant.isRoot && isRecorded) {
        isolateOthers(deviant.saved);
    }
    deviant.depth = 0;
    deviant.isWithin = false;
    Entry const entry = std::make_shared<NaiveEntry>(
        NaiveEntry{deviant.transactionName, deviant.transactionLevel, std::move(deviant.saved)});
    deviant.saved.clear();
    if (!isRecorded) {
        push(deviant, entry); // and nobody hears of it
        return;
    }
    deviant.unfinished = [&deviant, entry] { push(deviant, entry); };
    observe(deviant, all, entry);
}

// A listener may have cancelled, which ends the commit, or have left a transaction open, which the next commit ends.
bool NaiveModel::isStillCommitting(NaiveDeviant & deviant) {
    if (deviant.depth == 1 && !deviant.saved.empty()) {
        return true;
    }
    deviant.depth = std::max(0, deviant.depth - 1);
    return false;
}

void NaiveModel::push(NaiveDeviant & deviant, Entry const & entry) {
    std::erase_if(deviant.slots, [](auto const & each) { return each.second.says == Slot::Nothing; });
    deviant.stack.resize(static_cast<std::size_t>(deviant.position));
    deviant.stack.push_back(entry);
    if (deviant.isRoot) {
        trim(deviant);
    }
    deviant.position = static_cast<int>(deviant.stack.size());
    deviant.level = ++deviant.highestLevel;
    if (!deviant.isRoot) {
        deviant.stack.clear();
        deviant.position = 0;
    }
}

void NaiveModel::cancel(Step const & s) {
    NaiveDeviant & deviant = at(s.deviant);
    if (deviant.depth == 0) {
        return;
    }
    if (deviant.maximum == 0) {
        throw Refusal("cancelTransaction on deviant without undo stack");
    }
    for (auto const & [object, slot] : deviant.saved) {
        deviant.slots[object] = slot;
    }
    std::erase_if(deviant.slots, [](auto const & each) { return each.second.says == Slot::Nothing; });
    deviant.saved.clear();
    deviant.depth = 0;
}

void NaiveModel::finish(NaiveDeviant & deviant) {
    if (std::function<void()> const unfinished = std::exchange(deviant.unfinished, nullptr)) {
        unfinished();
    }
}

// Observers that have committed or replayed in the deviant have used up what the others were to hear: it is told anew. One
// that has run the entry itself has exchanged its states, and so what the others see as the time before.
void NaiveModel::observe(NaiveDeviant & deviant, Changes all, Entry const & entry) {
    int const preparations = deviant.preparations;
    try {
        callAll(deviant.name, Role::Observer, [&](int listener) {
            if (deviant.preparations != preparations) {
                all = changes(entry->slots, deviant);
            }
            Slots const before = entry->slots;
            return fListeners({Role::Observer, deviant.name, listener, all}, before);
        });
    } catch (...) {
        finish(deviant);
        throw;
    }
    finish(deviant);
}

// Whoever follows the root gets a copy of what the root said before. But a deviant that is just changing the object keeps
// the copy as what to go back to, and those after it in the order of the names get nothing.
void NaiveModel::isolateOthers(Slots const & old) {
    for (auto const & [object, slot] : old) {
        for (auto & [name, other] : fDeviants) {
            if (other.isRoot) {
                continue;
            }
            auto const saved = other.saved.find(object);
            if (other.depth > 0 && saved != other.saved.end() && saved->second.says == Slot::Nothing) {
                saved->second = slot;
                break;
            }
            if (slotIn(other.slots, object).says == Slot::Nothing) {
                other.slots[object] = slot;
            }
        }
    }
}

Changes NaiveModel::changes(Slots const & before, NaiveDeviant const & after) {
    Changes result;
    for (auto const & [object, slot] : before) {
        bool const was = slot.says != Slot::Absent;
        bool const is = slotIn(after.slots, object).says != Slot::Absent;
        if (was && is) {
            result.modified.insert(object);
        } else if (was) {
            result.deleted.insert(object);
        } else if (is) {
            result.created.insert(object);
        }
    }
    return result;
}

// --- history ---------------------------------------------------------------------------------------------------------

void NaiveModel::requireIdle(std::string const & operation) const {
    if (fDeviants.at(kRoot).depth != 0) {
        throw Refusal("cannot " + operation + " within a transaction");
    }
}

// The objects of the entry and the root exchange their states, whole.
void NaiveModel::replay(Step const & s) {
    bool const isUndo = s.what.starts_with("undo");
    requireIdle(isUndo ? "undo" : "redo");
    NaiveDeviant & root = at(kRoot);
    finish(root);
    root.position -= isUndo ? 1 : 0;
    if (root.position < 0 || root.position == static_cast<int>(root.stack.size())) {
        root.position = std::max(0, root.position);
        return; // nothing to undo or redo
    }
    Entry const entry = root.stack[static_cast<std::size_t>(root.position)];
    for (auto & [object, slot] : entry->slots) {
        std::swap(root.slots[object], slot);
    }
    Changes const all = prepare(root, Role::Observer, entry->slots);
    isolateOthers(entry->slots);
    root.isWithin = false;
    root.unfinished = [&root, entry, isUndo] {
        auto const index = static_cast<std::size_t>(root.position);
        if (index >= root.stack.size() || root.stack[index] != entry) {
            return; // an observer has removed the entry
        }
        std::swap(entry->level, root.level);
        root.position += isUndo ? 0 : 1;
    };
    observe(root, all, entry);
}

void NaiveModel::replayToLevel(Step const & s) {
    bool const isUndo = s.what.starts_with("undo");
    std::string const operation = isUndo ? "undoToChangeLevel" : "redoToChangeLevel";
    requireIdle(operation);
    NaiveDeviant & root = at(kRoot);
    auto const divider = root.stack.begin() + root.position;
    bool const isAhead = std::any_of(isUndo ? root.stack.begin() : divider, isUndo ? divider : root.stack.end(),
                                     [&](Entry const & entry) { return entry->level == s.value; });
    if (!isAhead && s.value != root.level) {
        throw Refusal("invalid change level for " + operation);
    }
    while (root.level != s.value) {
        replay(s);
    }
}

void NaiveModel::setMaximum(Step const & s) {
    requireIdle("setMaximumUndoStackLength");
    NaiveDeviant & root = at(kRoot);
    finish(root);
    root.maximum = std::max(0, s.value);
    trim(root);
}

void NaiveModel::clearRedo(Step const & s) {
    NaiveDeviant & deviant = at(s.deviant);
    finish(deviant);
    deviant.stack.resize(static_cast<std::size_t>(deviant.position));
}

void NaiveModel::clearUndo(Step const & s) {
    clearRedo(s);
    at(s.deviant).stack.clear();
    at(s.deviant).position = 0;
}

// Nothing is recorded from here on, so nothing can be cancelled, and other deviants see the root's writes at once.
void NaiveModel::disableUndo(Step const & s) {
    clearUndo(s);
    at(s.deviant).maximum = 0;
}

// The divider stays where it is when entries go from the old end, as long as there are that many.
void NaiveModel::trim(NaiveDeviant & deviant) {
    while (static_cast<int>(deviant.stack.size()) > deviant.maximum) {
        deviant.stack.pop_front();
    }
    deviant.position = std::min(deviant.position, static_cast<int>(deviant.stack.size()));
}

// --- to and from the root ----------------------------------------------------------------------------------------------

void NaiveModel::sync(Step const & s) {
    NaiveDeviant & deviant = at(s.deviant);
    if (deviant.depth == 0) {
        throw Refusal("syncFromRoot outside a transaction");
    }
    for (auto & [object, slot] : deviant.slots) {
        deviant.saved.emplace(object, slot);
        slot = Slot();
    }
}

// The root gets all that the deviant says; of a deviant in a transaction, what it said before.
void NaiveModel::assign(Step const & s) {
    NaiveDeviant const & deviant = at(s.deviant);
    NaiveDeviant & root = at(kRoot);
    if (root.depth == 0) {
        throw Refusal("assignToRoot outside a transaction");
    }
    for (auto const & [object, slot] : deviant.slots) {
        auto const saved = deviant.saved.find(object);
        Slot const & said = saved != deviant.saved.end() ? saved->second : slot;
        Slot const & present = slotIn(root.slots, object);
        if (said.says == Slot::Nothing || (said.says == Slot::Absent && present.says != Slot::Present)) {
            continue;
        }
        root.saved.emplace(object, present);
        root.slots[object] = said;
    }
}

} // namespace ZEL::tests::oracle
