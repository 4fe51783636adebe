#include "NaiveModel.h"

#include <algorithm>

namespace ZEL::tests::oracle {

namespace {

template <class T> bool contains(std::vector<T> const & list, T const & value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

/// The value of an end that has at most one.
int onlyOf(std::vector<int> const & end) { return end.empty() ? kNothing : end.front(); }

State newState(Kind kind) {
    State state;
    state.kind = kind;
    for (ValueRule const & rule : valuesOf(kind)) {
        if (!rule.initial.empty()) {
            state.values[rule.property] = rule.initial;
        }
    }
    for (EndRule const & rule : endsOf(kind)) {
        if (rule.form != Form::Riding) {
            state.ends[rule.property];
        }
    }
    return state;
}

} // namespace

Slot const & slotIn(Slots const & slots, int object) {
    static Slot const nothing;
    auto const found = slots.find(object);
    return found == slots.end() ? nothing : found->second;
}

NaiveModel::NaiveModel(NaiveListeners listeners) : fListeners(std::move(listeners)) {
    NaiveDeviant & root = fDeviants[kRoot];
    root.name = kRoot;
    root.isRoot = true;
    root.maximum = 50;
    root.slots[kModel] = {Slot::Present, newState(Kind::Model)};
    fKinds.push_back(Kind::Model);
}

std::map<std::string, NaiveModel::Operation> const & NaiveModel::operations() {
    static std::map<std::string, Operation> const all{
        {"create", {true, &NaiveModel::create}},
        {"set value", {true, &NaiveModel::setValue}},
        {"remove value", {true, &NaiveModel::removeValue}},
        {"set reference", {true, &NaiveModel::setReference}},
        {"remove reference", {true, &NaiveModel::removeReference}},
        {"link", {true, &NaiveModel::link}},
        {"unlink", {true, &NaiveModel::unlink}},
        {"add body", {true, &NaiveModel::addBody}},
        {"erase body", {true, &NaiveModel::eraseBody}},
        {"set container", {true, &NaiveModel::setContainer}},
        {"remove container", {true, &NaiveModel::removeContainer}},
        {"destroy", {true, &NaiveModel::destroy}},
        {"begin", {false, &NaiveModel::begin}},
        {"commit", {false, &NaiveModel::commit}},
        {"cancel", {false, &NaiveModel::cancel}},
        {"undo", {false, &NaiveModel::replay}},
        {"redo", {false, &NaiveModel::replay}},
        {"undo to level", {false, &NaiveModel::replayToLevel}},
        {"redo to level", {false, &NaiveModel::replayToLevel}},
        {"set maximum", {false, &NaiveModel::setMaximum}},
        {"disable undo", {false, &NaiveModel::disableUndo}},
        {"clear undo", {false, &NaiveModel::clearUndo}},
        {"clear redo", {false, &NaiveModel::clearRedo}},
        {"sync", {false, &NaiveModel::sync}},
        {"assign", {false, &NaiveModel::assign}},
        {"create deviant", {false, &NaiveModel::createDeviant}},
        {"remove deviant", {false, &NaiveModel::removeDeviant}},
        {"listen", {false, &NaiveModel::listen}},
        {"unlisten", {false, &NaiveModel::unlisten}},
        {"replace foreign", {false, &NaiveModel::replaceForeign}},
    };
    return all;
}

// --- looking ---------------------------------------------------------------------------------------------------------

// Other deviants do not see what the root has written and not yet committed.
Slot const & NaiveModel::committedInRoot(int object) const {
    NaiveDeviant const & root = fDeviants.at(kRoot);
    auto const saved = root.saved.find(object);
    return saved != root.saved.end() ? saved->second : slotIn(root.slots, object);
}

Slot const & NaiveModel::seen(std::string const & name, int object) const {
    Slot const & own = slotIn(fDeviants.at(name).slots, object);
    return own.says == Slot::Nothing ? committedInRoot(object) : own;
}

bool NaiveModel::isValid(std::string const & name, int object) const {
    return seen(name, object).says == Slot::Present;
}

State const & NaiveModel::read(std::string const & name, int object) const {
    if (!isValid(name, object)) {
        throw Refusal("is not present");
    }
    return seen(name, object).state;
}

std::optional<State> NaiveModel::observed(std::string const & name, int object) const {
    if (!isValid(name, object)) {
        return std::nullopt;
    }
    State state = read(name, object);
    for (EndRule const & rule : endsOf(state.kind)) {
        if (rule.form == Form::Riding) {
            // The container can be absent in a deviant that the root has not told of it.
            bool const isShown = state.container != kNothing && rule.accepts.count(kindOf(state.container)) != 0 &&
                                 isValid(name, state.container);
            state.ends[rule.property] = isShown ? std::vector<int>{state.container} : std::vector<int>();
        }
    }
    return state;
}

std::set<int> NaiveModel::deviating(std::string const & name) const {
    std::set<int> result;
    for (auto const & [object, slot] : fDeviants.at(name).slots) {
        bool const isAbsentInBoth =
            slot.says == Slot::Absent && slotIn(fDeviants.at(kRoot).slots, object).says != Slot::Present;
        if (slot.says != Slot::Nothing && !isAbsentInBoth) {
            result.insert(object);
        }
    }
    return result;
}

std::vector<int> NaiveModel::subtree(std::string const & name, int object) const {
    std::vector<int> result{object};
    for (std::size_t i = 0; i < result.size(); ++i) {
        State const & state = read(name, result[i]);
        for (EndRule const & rule : endsOf(state.kind)) {
            if (rule.form != Form::Contained) {
                continue;
            }
            for (int const element : state.ends.at(rule.property)) {
                if (isValid(name, element) && !contains(result, element)) {
                    result.push_back(element);
                }
            }
        }
    }
    return result;
}

std::vector<int> NaiveModel::owners(std::string const & name, int object) const {
    std::vector<int> result;
    for (int next = read(name, object).container; next != kNothing && !contains(result, next);) {
        result.push_back(next);
        next = isValid(name, next) ? read(name, next).container : kNothing;
    }
    return result;
}

// --- writing ---------------------------------------------------------------------------------------------------------

void NaiveModel::save(NaiveDeviant & deviant, int object, Slot const & slot) {
    if (deviant.maximum > 0) {
        deviant.saved.emplace(object, slot);
    }
}

void NaiveModel::checkOpen(std::string const & name) {
    if (at(name).depth == 0) {
        throw Refusal("not opened for transactions");
    }
}

// The first write in a transaction keeps a full copy of what the deviant said before.
State & NaiveModel::write(std::string const & name, int object) {
    checkOpen(name);
    NaiveDeviant & deviant = at(name);
    State const present = read(name, object);
    save(deviant, object, slotIn(deviant.slots, object));
    Slot & slot = deviant.slots[object];
    if (slot.says == Slot::Nothing) {
        slot = {Slot::Present, present};
    }
    return slot.state;
}

void NaiveModel::create(Step const & s) {
    int const object = numberOfObjects();
    fKinds.push_back(s.kind);
    for (auto & [name, deviant] : fDeviants) {
        deviant.slots[object] = {Slot::Absent};
    }
    at(s.deviant).saved[object] = {Slot::Absent};
    at(s.deviant).slots[object] = {Slot::Present, newState(s.kind)};
    addTo(s.deviant, kModel, "unparented", object);
}

// Most values that are set to what they read as without being set stay unset.
void NaiveModel::setValue(Step const & s) {
    State const & state = read(s);
    std::vector<ValueRule> const & rules = valuesOf(state.kind);
    auto const rule =
        std::find_if(rules.begin(), rules.end(), [&](auto const & r) { return r.property == s.property; });
    bool const isUnset = s.text == rule->unset && !rule->isKept;
    auto const present = state.values.find(s.property);
    if (present == state.values.end() ? isUnset : present->second == s.text) {
        return;
    }
    if (isUnset) {
        write(s).values.erase(s.property);
    } else {
        write(s).values[s.property] = s.text;
    }
}

void NaiveModel::removeValue(Step const & s) { write(s).values.erase(s.property); }

void NaiveModel::addTo(std::string const & name, int object, std::string const & property, int value) {
    if (!endOf(kindOf(object), property).isMany) {
        write(name, object).ends[property] = {value};
    } else if (!contains(read(name, object).ends.at(property), value)) {
        write(name, object).ends[property].push_back(value);
    }
}

void NaiveModel::eraseFrom(std::string const & name, int object, std::string const & property, int value) {
    if (contains(read(name, object).ends.at(property), value)) {
        std::erase(write(name, object).ends[property], value);
    }
}

// --- containment -----------------------------------------------------------------------------------------------------

void NaiveModel::eraseContainee(std::string const & name, int container, int object) {
    for (EndRule const & rule : endsOf(kindOf(container))) {
        if (rule.form == Form::Contained && contains(read(name, container).ends.at(rule.property), object)) {
            eraseFrom(name, container, rule.property, object);
            return;
        }
    }
}

void NaiveModel::moveOnly(std::string const & name, int object, int container) {
    if (container == object || contains(owners(name, container), object)) {
        throw Refusal("Cyclic composition");
    }
    int const old = read(name, object).container;
    if (old == container) {
        return;
    }
    if (old == kNothing) {
        eraseFrom(name, kModel, "unparented", object);
    } else if (isValid(name, old)) {
        eraseContainee(name, old, object);
    }
    write(name, object).container = container;
}

void NaiveModel::unparentOnly(std::string const & name, int object) {
    addTo(name, kModel, "unparented", object);
    write(name, object).container = kNothing;
}

void NaiveModel::setContainer(Step const & s) {
    int const container = s.value;
    if (read(s).container == container) {
        return;
    }
    for (EndRule const & rule : endsOf(kindOf(container))) {
        if (rule.form != Form::Contained || rule.accepts.count(kindOf(s.object)) == 0) {
            continue;
        }
        moveOnly(s.deviant, s.object, container);
        std::vector<int> const present = read(s.deviant, container).ends.at(rule.property);
        if (contains(present, s.object)) {
            return; // it was there already, where a deviant and the root have combined to ends out of step
        }
        if (!rule.isMany && !present.empty()) {
            unparentOnly(s.deviant, present.front());
        }
        addTo(s.deviant, container, rule.property, s.object);
        return;
    }
    throw Refusal("cannot insert value into the combined sequence");
}

void NaiveModel::removeContainer(Step const & s) {
    int const container = read(s).container;
    if (container != kNothing && isValid(s.deviant, container)) {
        eraseContainee(s.deviant, container, s.object);
    }
    unparentOnly(s.deviant, s.object);
}

void NaiveModel::destroy(Step const & s) {
    if (!isValid(s.deviant, s.object)) {
        return;
    }
    checkOpen(s.deviant);
    std::vector<int> const gone = subtree(s.deviant, s.object);
    for (int const each : gone) {
        State const state = read(s.deviant, each);
        for (EndRule const & rule : endsOf(state.kind)) {
            if (rule.form != Form::Linked) {
                continue;
            }
            for (int const partner : state.ends.at(rule.property)) {
                if (isValid(s.deviant, partner) && !contains(gone, partner)) {
                    eraseFrom(s.deviant, partner, rule.opposite, each);
                }
            }
        }
    }
    int const container = read(s).container;
    if (container != kNothing && isValid(s.deviant, container)) {
        eraseContainee(s.deviant, container, s.object);
    }
    eraseFrom(s.deviant, kModel, "unparented", s.object);
    NaiveDeviant & deviant = at(s.deviant);
    for (int const each : gone) {
        save(deviant, each, slotIn(deviant.slots, each));
        deviant.slots[each] = {Slot::Absent};
    }
}

// --- references and lists ----------------------------------------------------------------------------------------------

void NaiveModel::setReference(Step const & s) {
    EndRule const & rule = endOf(kindOf(s.object), s.property);
    int const present = onlyOf(observed(s.deviant, s.object)->ends.at(s.property));
    if (present == s.value) {
        return;
    }
    switch (rule.form) {
    case Form::OneEnded:
        break;
    case Form::Riding:
        moveOnly(s.deviant, s.object, s.value);
        addTo(s.deviant, s.value, rule.opposite, s.object);
        return;
    case Form::Contained:
        if (read(s.deviant, s.value).container == s.object) {
            eraseContainee(s.deviant, s.object, s.value); // from the owner's other properties
        }
        moveOnly(s.deviant, s.value, s.object);
        if (present != kNothing) {
            unparentOnly(s.deviant, present);
        }
        break;
    case Form::Linked:
        addTo(s.deviant, s.value, rule.opposite, s.object);
        if (present != kNothing && isValid(s.deviant, present)) {
            eraseFrom(s.deviant, present, rule.opposite, s.object);
        }
        break;
    }
    write(s).ends[s.property] = {s.value};
}

void NaiveModel::removeReference(Step const & s) {
    EndRule const & rule = endOf(kindOf(s.object), s.property);
    if (rule.form == Form::Riding) {
        removeContainer(s); // also one of a kind that this end does not show
        return;
    }
    int const present = onlyOf(read(s).ends.at(s.property));
    bool const isSet = present != kNothing && isValid(s.deviant, present);
    if (isSet && rule.form == Form::Linked) {
        eraseFrom(s.deviant, present, rule.opposite, s.object);
    }
    if (isSet && rule.form == Form::Contained) {
        unparentOnly(s.deviant, present);
    }
    write(s).ends[s.property].clear();
}

void NaiveModel::link(Step const & s) {
    EndRule const & rule = endOf(kindOf(s.object), s.property);
    if (rule.form == Form::Linked) {
        if (!endOf(kindOf(s.value), rule.opposite).isMany) {
            int const old = onlyOf(read(s.deviant, s.value).ends.at(rule.opposite));
            if (old != kNothing && old != s.object && isValid(s.deviant, old)) {
                eraseFrom(s.deviant, old, s.property, s.value);
            }
        }
        addTo(s.deviant, s.value, rule.opposite, s.object);
    }
    if (rule.form == Form::Contained) {
        if (read(s.deviant, s.value).container != s.object) {
            moveOnly(s.deviant, s.value, s.object);
        } else if (!contains(read(s).ends.at(s.property), s.value)) {
            eraseContainee(s.deviant, s.object, s.value); // from the owner's other properties
        }
    }
    // An element that is there already stays where it is, and nothing is written; but it is a write.
    checkOpen(s.deviant);
    if (!contains(read(s).ends.at(s.property), s.value)) {
        std::vector<int> & list = write(s).ends[s.property];
        list.insert(s.index != 0 ? list.begin() : list.end(), s.value);
    }
}

void NaiveModel::unlink(Step const & s) {
    EndRule const & rule = endOf(kindOf(s.object), s.property);
    int const value = read(s).ends.at(s.property).at(static_cast<std::size_t>(s.index));
    if (rule.form == Form::Linked) {
        eraseFrom(s.deviant, value, rule.opposite, s.object);
    }
    if (rule.form == Form::Contained) {
        unparentOnly(s.deviant, value);
    }
    std::vector<int> & list = write(s).ends[s.property];
    list.erase(list.begin() + s.index);
}

void NaiveModel::addBody(Step const & s) {
    checkOpen(s.deviant);
    if (!contains(read(s).body, s.text)) {
        std::vector<std::string> & body = write(s).body;
        body.insert(body.begin() + s.index, s.text);
    }
}

void NaiveModel::eraseBody(Step const & s) {
    std::vector<std::string> & body = write(s).body;
    body.erase(body.begin() + s.index);
}

} // namespace ZEL::tests::oracle
