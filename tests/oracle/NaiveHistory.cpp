// Transactions, history and the roads between deviants of the naive model.

#include "NaiveModel.h"

#include <algorithm>

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
    fDeviants.erase(name);
    fListened.erase(name);
}

void NaiveModel::listen(std::string const & name) {
    if (fListened.erase(name) == 0) {
        fListened.insert(name);
    }
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
    if (isListenedTo(name)) {
        fListener.modify(name, changes(deviant.saved, deviant), deviant.saved);
        if (!isStillCommitting(deviant)) {
            return;
        }
        if (!fListener.validate(name, changes(deviant.saved, deviant), deviant.saved)) {
            cancel(name);
            return;
        }
    }
    Changes const all = changes(deviant.saved, deviant);
    if (deviant.isRoot) {
        isolateOthers(deviant.saved);
    }
    deviant.depth = 0;
    deviant.isWithin = false;
    NaiveEntry const entry{++fEntries, deviant.transactionName, deviant.transactionLevel, std::move(deviant.saved)};
    deviant.saved.clear();
    deviant.unfinished = [this, &deviant, entry] { push(deviant, entry); };
    observe(deviant, all, entry.slots);
}

// A listener may have cancelled, which ends the commit, or have left a transaction open, which the next commit ends.
bool NaiveModel::isStillCommitting(NaiveDeviant & deviant) {
    if (deviant.depth == 1 && !deviant.saved.empty()) {
        return true;
    }
    deviant.depth = std::max(0, deviant.depth - 1);
    return false;
}

void NaiveModel::push(NaiveDeviant & deviant, NaiveEntry entry) {
    std::erase_if(deviant.slots, [](auto const & each) { return each.second.says == Slot::Nothing; });
    deviant.stack.resize(static_cast<std::size_t>(deviant.position));
    deviant.stack.push_back(std::move(entry));
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

void NaiveModel::observe(NaiveDeviant & deviant, Changes const & all, Slots const & before) {
    try {
        if (isListenedTo(deviant.name)) {
            fListener.observe(deviant.name, all, before);
        }
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
    NaiveEntry & entry = root.stack[static_cast<std::size_t>(root.position)];
    for (auto & [object, slot] : entry.slots) {
        std::swap(root.slots[object], slot);
    }
    isolateOthers(entry.slots);
    root.isWithin = false;
    int const number = entry.number;
    root.unfinished = [&root, number, isUndo] {
        auto const index = static_cast<std::size_t>(root.position);
        if (index >= root.stack.size() || root.stack[index].number != number) {
            return; // an observer has removed the entry
        }
        std::swap(root.stack[index].level, root.level);
        root.position += isUndo ? 0 : 1;
    };
    Slots const before = entry.slots;
    observe(root, changes(before, root), before);
}

void NaiveModel::undoToLevel(int level) {
    requireIdle("undoToChangeLevel");
    NaiveDeviant & root = at(kRoot);
    if (level == root.level) {
        return;
    }
    auto const end = root.stack.begin() + root.position;
    if (std::none_of(root.stack.begin(), end, [level](NaiveEntry const & entry) { return entry.level == level; })) {
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
    if (std::none_of(begin, root.stack.end(), [level](NaiveEntry const & entry) { return entry.level == level; })) {
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
