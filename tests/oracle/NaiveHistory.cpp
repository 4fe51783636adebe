// Transactions, history and the roads between deviants of the naive model.

#include "NaiveModel.h"

#include <algorithm>
#include <iterator>

namespace ZEL::oracle {

// --- deviants --------------------------------------------------------------------------------------------------------

void NaiveModel::createDeviant(std::string const & name) {
    if (fDeviants.count(name) == 0) {
        fDeviants[name].name = name;
    }
}

void NaiveModel::removeDeviant(std::string const & name) {
    if (at(name).depth != 0) {
        throw Refusal("cannot remove deviant when it is within a transaction");
    }
    for (Role const role : kRoles) {
        callAll(name, role, [&](int listener) {
            fListener.leave(name, listener);
            std::erase_if(at(name).listeners[role], [&](auto const & each) { return each.listener == listener; });
            return true;
        });
        at(name).listeners[role].clear(); // who came meanwhile
    }
    fDeviants.erase(name);
}

// --- listeners -------------------------------------------------------------------------------------------------------

void NaiveModel::listen(std::string const & name, int listener, Role role) {
    std::vector<Registration> & registered = at(name).listeners[role];
    for (Registration const & each : registered) {
        if (each.listener == listener) {
            throw Refusal("listener already registered with deviant");
        }
    }
    registered.push_back({listener, ++fRegistrations});
}

void NaiveModel::unlisten(std::string const & name, int listener, Role role) {
    if (std::erase_if(at(name).listeners[role], [&](auto const & each) { return each.listener == listener; }) == 0) {
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

// --- transactions ----------------------------------------------------------------------------------------------------

void NaiveModel::begin(std::string const & name, std::string const & title) {
    NaiveDeviant & deviant = at(name);
    finish(deviant);
    if (deviant.depth == 0) {
        deviant.transactionName = title;
        deviant.transactionLevel = deviant.level;
        deviant.isWithin = true;
    }
    ++deviant.depth;
}

void NaiveModel::commit(std::string const & name) {
    NaiveDeviant & deviant = at(name);
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
        Changes const modified = prepare(deviant, Role::Modifier, deviant.saved);
        callAll(name, Role::Modifier, [&](int listener) {
            fListener.modify(name, listener, modified, deviant.saved);
            return true;
        });
        if (!isStillCommitting(deviant)) {
            return;
        }
        Changes const offered = prepare(deviant, Role::Validator, deviant.saved);
        bool const isAgreed = callAll(name, Role::Validator, [&](int listener) {
            return fListener.validate(name, listener, offered, deviant.saved);
        });
        if (!isAgreed) {
            cancel(name);
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
    deviant.unfinished = [this, &deviant, entry] { push(deviant, entry); };
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

void NaiveModel::cancel(std::string const & name) {
    NaiveDeviant & deviant = at(name);
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
            fListener.observe(deviant.name, listener, all, before);
            return true;
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
            if (slotIn(other, object).says == Slot::Nothing) {
                other.slots[object] = slot;
            }
        }
    }
}

Changes NaiveModel::changes(Slots const & before, NaiveDeviant const & after) const {
    Changes result;
    for (auto const & [object, slot] : before) {
        bool const was = slot.says != Slot::Absent;
        bool const is = slotIn(after, object).says != Slot::Absent;
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

void NaiveModel::requireIdle(char const * operation) const {
    if (fDeviants.at(kRoot).depth != 0) {
        throw Refusal(std::string("cannot ") + operation + " within a transaction");
    }
}

void NaiveModel::undo() {
    requireIdle("undo");
    NaiveDeviant & root = at(kRoot);
    finish(root);
    if (root.position > 0) {
        run(root, true);
    }
}

void NaiveModel::redo() {
    requireIdle("redo");
    NaiveDeviant & root = at(kRoot);
    finish(root);
    if (root.position < static_cast<int>(root.stack.size())) {
        run(root, false);
    }
}

// The objects of the entry and the root exchange their states, whole.
void NaiveModel::run(NaiveDeviant & root, bool isUndo) {
    if (isUndo) {
        --root.position;
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

void NaiveModel::undoToLevel(int level) {
    requireIdle("undoToChangeLevel");
    NaiveDeviant & root = at(kRoot);
    if (level == root.level) {
        return;
    }
    auto const end = root.stack.begin() + root.position;
    if (std::none_of(root.stack.begin(), end, [level](Entry const & entry) { return entry->level == level; })) {
        throw Refusal("invalid change level for undoToChangeLevel");
    }
    while (root.level != level) {
        undo();
    }
}

void NaiveModel::redoToLevel(int level) {
    requireIdle("redoToChangeLevel");
    NaiveDeviant & root = at(kRoot);
    if (level == root.level) {
        return;
    }
    auto const begin = root.stack.begin() + root.position;
    if (std::none_of(begin, root.stack.end(), [level](Entry const & entry) { return entry->level == level; })) {
        throw Refusal("invalid change level for redoToChangeLevel");
    }
    while (root.level != level) {
        redo();
    }
}

void NaiveModel::setMaximum(int length) {
    requireIdle("setMaximumUndoStackLength");
    NaiveDeviant & root = at(kRoot);
    finish(root);
    root.maximum = std::max(0, length);
    trim(root);
}

void NaiveModel::clearRedo(std::string const & name) {
    NaiveDeviant & deviant = at(name);
    finish(deviant);
    deviant.stack.resize(static_cast<std::size_t>(deviant.position));
}

void NaiveModel::clearUndo(std::string const & name) {
    clearRedo(name);
    at(name).stack.clear();
    at(name).position = 0;
}

// Nothing is recorded from here on, so nothing can be cancelled, and other deviants see the root's writes at once.
void NaiveModel::disableUndo(std::string const & name) {
    clearUndo(name);
    at(name).maximum = 0;
}

// The divider stays where it is when entries go from the old end, as long as there are that many.
void NaiveModel::trim(NaiveDeviant & deviant) {
    while (static_cast<int>(deviant.stack.size()) > deviant.maximum) {
        deviant.stack.pop_front();
    }
    deviant.position = std::min(deviant.position, static_cast<int>(deviant.stack.size()));
}

// --- to and from the root ----------------------------------------------------------------------------------------------

void NaiveModel::sync(std::string const & name) {
    NaiveDeviant & deviant = at(name);
    if (deviant.depth == 0) {
        throw Refusal("syncFromRoot outside a transaction");
    }
    for (auto & [object, slot] : deviant.slots) {
        deviant.saved.emplace(object, slot);
        slot = Slot();
    }
}

// The root gets all that the deviant says; of a deviant in a transaction, what it said before.
void NaiveModel::assign(std::string const & name) {
    NaiveDeviant const & deviant = at(name);
    NaiveDeviant & root = at(kRoot);
    if (root.depth == 0) {
        throw Refusal("assignToRoot outside a transaction");
    }
    for (auto const & [object, slot] : deviant.slots) {
        auto const saved = deviant.saved.find(object);
        Slot const & said = saved != deviant.saved.end() ? saved->second : slot;
        Slot const present = slotIn(root, object);
        if (said.says == Slot::Nothing || (said.says == Slot::Absent && present.says != Slot::Present)) {
            continue;
        }
        root.saved.emplace(object, present);
        root.slots[object] = said;
    }
}

} // namespace ZEL::oracle
