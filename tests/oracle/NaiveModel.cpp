#include "NaiveModel.h"

#include <algorithm>

namespace ZEL::oracle {

namespace {

bool contains(std::vector<int> const & list, int object) {
    return std::find(list.begin(), list.end(), object) != list.end();
}

void erase(std::vector<int> & list, int object) {
    list.erase(std::remove(list.begin(), list.end(), object), list.end());
}

int referenceIn(State const & state, std::string const & property) {
    auto const found = state.references.find(property);
    return found == state.references.end() ? kNothing : found->second;
}

void setReferenceIn(State & state, std::string const & property, int value) {
    if (value == kNothing) {
        state.references.erase(property);
    } else {
        state.references[property] = value;
    }
}

State newState(Kind kind) {
    State state;
    state.kind = kind;
    for (std::string const & flag : flagsOf(kind)) {
        state.flags[flag] = flag == "isUnique";
    }
    if (kind == Kind::Property) {
        state.numbers = {{"lower", 1}, {"upper", 1}};
    }
    for (EndRule const & rule : endsOf(kind)) {
        if (rule.isMany) {
            state.lists[rule.property];
        }
    }
    if (kind == Kind::Model) {
        state.lists["unparented"];
    }
    return state;
}

} // namespace

NaiveModel::NaiveModel(NaiveListener & listener) : fListener(listener) {
    NaiveDeviant & root = fDeviants[kRoot];
    root.name = kRoot;
    root.isRoot = true;
    root.maximum = 50;
    root.slots[kModel] = {Slot::Present, newState(Kind::Model)};
    fKinds.push_back(Kind::Model);
}

// --- looking ---------------------------------------------------------------------------------------------------------

Slot NaiveModel::slotIn(NaiveDeviant const & deviant, int object) const {
    auto const found = deviant.slots.find(object);
    return found == deviant.slots.end() ? Slot() : found->second;
}

// Other deviants do not see what the root has written and not yet committed.
Slot NaiveModel::committedInRoot(int object) const {
    NaiveDeviant const & root = fDeviants.at(kRoot);
    auto const saved = root.saved.find(object);
    return saved != root.saved.end() ? saved->second : slotIn(root, object);
}

bool NaiveModel::isValid(std::string const & name, int object) const {
    Slot const own = slotIn(fDeviants.at(name), object);
    return (own.says == Slot::Nothing ? committedInRoot(object) : own).says == Slot::Present;
}

State const & NaiveModel::read(std::string const & name, int object) const {
    if (!isValid(name, object)) {
        throw Refusal("is not present");
    }
    NaiveDeviant const & deviant = fDeviants.at(name);
    NaiveDeviant const & root = fDeviants.at(kRoot);
    auto const own = deviant.slots.find(object);
    if (own != deviant.slots.end() && own->second.says == Slot::Present) {
        return own->second.state;
    }
    auto const saved = root.saved.find(object);
    return saved != root.saved.end() ? saved->second.state : root.slots.at(object).state;
}

std::optional<State> NaiveModel::observed(std::string const & name, int object) const {
    if (!isValid(name, object)) {
        return std::nullopt;
    }
    State state = read(name, object);
    for (EndRule const & rule : endsOf(state.kind)) {
        // The container can be absent in a deviant that the root has not told of it.
        if (rule.form == Form::Riding && state.container != kNothing &&
            rule.accepts.count(kindOf(state.container)) != 0 && isValid(name, state.container)) {
            state.references[rule.property] = state.container;
        }
    }
    return state;
}

std::set<int> NaiveModel::deviating(std::string const & name) const {
    std::set<int> result;
    for (auto const & [object, slot] : fDeviants.at(name).slots) {
        bool const isAbsentInBoth =
            slot.says == Slot::Absent && slotIn(fDeviants.at(kRoot), object).says != Slot::Present;
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
            std::vector<int> const elements =
                rule.isMany ? state.lists.at(rule.property) : std::vector<int>{referenceIn(state, rule.property)};
            for (int const element : elements) {
                if (element != kNothing && isValid(name, element) && !contains(result, element)) {
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
    save(deviant, object, slotIn(deviant, object));
    Slot & slot = deviant.slots[object];
    if (slot.says == Slot::Nothing) {
        slot = {Slot::Present, present};
    }
    return slot.state;
}

int NaiveModel::create(std::string const & name, Kind kind) {
    int const object = numberOfObjects();
    fKinds.push_back(kind);
    for (auto & [otherName, other] : fDeviants) {
        other.slots[object] = {Slot::Absent, State()};
    }
    at(name).saved[object] = {Slot::Absent, State()};
    at(name).slots[object] = {Slot::Present, newState(kind)};
    addUnparented(name, object);
    return object;
}

void NaiveModel::setFlag(std::string const & name, int object, std::string const & property, bool value) {
    if (read(name, object).flags.at(property) != value) {
        write(name, object).flags[property] = value;
    }
}

void NaiveModel::setText(std::string const & name, int object, std::string const & property,
                         std::string const & value) {
    State const & state = read(name, object);
    auto const present = state.texts.find(property);
    if ((present == state.texts.end() ? std::string() : present->second) == value) {
        return;
    }
    if (value.empty()) {
        write(name, object).texts.erase(property);
    } else {
        write(name, object).texts[property] = value;
    }
}

void NaiveModel::removeText(std::string const & name, int object, std::string const & property) {
    write(name, object).texts.erase(property);
}

void NaiveModel::setNumber(std::string const & name, int object, std::string const & property, long long value) {
    State const & state = read(name, object);
    auto const present = state.numbers.find(property);
    // A literal that is not set reads as the first one; a bound that is not set can still be set to what it reads as.
    bool const isLiteral = property == "visibility";
    if (present == state.numbers.end() ? isLiteral && value == 0 : present->second == value) {
        return;
    }
    if (isLiteral && value == 0) {
        write(name, object).numbers.erase(property);
    } else {
        write(name, object).numbers[property] = value;
    }
}

void NaiveModel::removeNumber(std::string const & name, int object, std::string const & property) {
    write(name, object).numbers.erase(property);
}

// --- containment -----------------------------------------------------------------------------------------------------

void NaiveModel::addUnparented(std::string const & name, int object) {
    if (!contains(read(name, kModel).lists.at("unparented"), object)) {
        write(name, kModel).lists["unparented"].push_back(object);
    }
}

void NaiveModel::eraseUnparented(std::string const & name, int object) {
    if (contains(read(name, kModel).lists.at("unparented"), object)) {
        erase(write(name, kModel).lists["unparented"], object);
    }
}

void NaiveModel::eraseContainee(std::string const & name, int container, int object) {
    for (EndRule const & rule : endsOf(kindOf(container))) {
        if (rule.form != Form::Contained) {
            continue;
        }
        State const & state = read(name, container);
        if (rule.isMany && contains(state.lists.at(rule.property), object)) {
            erase(write(name, container).lists[rule.property], object);
            return;
        }
        if (!rule.isMany && referenceIn(state, rule.property) == object) {
            write(name, container).references.erase(rule.property);
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
        eraseUnparented(name, object);
    } else if (isValid(name, old)) {
        eraseContainee(name, old, object);
    }
    write(name, object).container = container;
}

void NaiveModel::unparentOnly(std::string const & name, int object) {
    addUnparented(name, object);
    write(name, object).container = kNothing;
}

void NaiveModel::setContainer(std::string const & name, int object, int container) {
    if (read(name, object).container == container) {
        return;
    }
    for (EndRule const & rule : endsOf(kindOf(container))) {
        if (rule.form != Form::Contained || rule.accepts.count(kindOf(object)) == 0) {
            continue;
        }
        moveOnly(name, object, container);
        if (rule.isMany) {
            if (!contains(read(name, container).lists.at(rule.property), object)) {
                write(name, container).lists[rule.property].push_back(object);
            }
        } else {
            // It can be there already where a deviant and the root have combined to ends out of step.
            int const displaced = referenceIn(read(name, container), rule.property);
            if (displaced != kNothing && displaced != object) {
                unparentOnly(name, displaced);
            }
            write(name, container).references[rule.property] = object;
        }
        return;
    }
    throw Refusal("cannot insert value into the combined sequence");
}

void NaiveModel::removeContainer(std::string const & name, int object) {
    int const container = read(name, object).container;
    if (container != kNothing && isValid(name, container)) {
        eraseContainee(name, container, object);
    }
    unparentOnly(name, object);
}

void NaiveModel::destroy(std::string const & name, int object) {
    if (!isValid(name, object)) {
        return;
    }
    checkOpen(name);
    std::vector<int> const gone = subtree(name, object);
    for (int const each : gone) {
        State const state = read(name, each);
        for (EndRule const & rule : endsOf(state.kind)) {
            if (rule.form != Form::Linked) {
                continue;
            }
            std::vector<int> const partners =
                rule.isMany ? state.lists.at(rule.property) : std::vector<int>{referenceIn(state, rule.property)};
            for (int const partner : partners) {
                if (partner != kNothing && isValid(name, partner) && !contains(gone, partner)) {
                    eraseOpposite(name, partner, rule.opposite, each);
                }
            }
        }
    }
    int const container = read(name, object).container;
    if (container != kNothing && isValid(name, container)) {
        eraseContainee(name, container, object);
    }
    eraseUnparented(name, object);
    for (int const each : gone) {
        NaiveDeviant & deviant = at(name);
        save(deviant, each, slotIn(deviant, each));
        deviant.slots[each] = {Slot::Absent, State()};
    }
}

// --- references and lists ----------------------------------------------------------------------------------------------

void NaiveModel::addOpposite(std::string const & name, int object, std::string const & property, int value) {
    if (!endOf(kindOf(object), property).isMany) {
        write(name, object).references[property] = value;
    } else if (!contains(read(name, object).lists.at(property), value)) {
        write(name, object).lists[property].push_back(value);
    }
}

void NaiveModel::eraseOpposite(std::string const & name, int object, std::string const & property, int value) {
    State const & state = read(name, object);
    if (endOf(state.kind, property).isMany) {
        if (contains(state.lists.at(property), value)) {
            erase(write(name, object).lists[property], value);
        }
    } else if (referenceIn(state, property) == value) {
        write(name, object).references.erase(property);
    }
}

void NaiveModel::setReference(std::string const & name, int object, std::string const & property, int value) {
    EndRule const & rule = endOf(kindOf(object), property);
    int const present = referenceIn(*observed(name, object), property);
    if (present == value) {
        return;
    }
    switch (rule.form) {
    case Form::OneEnded:
        break;
    case Form::Riding:
        moveOnly(name, object, value);
        addOpposite(name, value, rule.opposite, object);
        return;
    case Form::Contained:
        if (read(name, value).container == object) {
            eraseContainee(name, object, value); // from the owner's other properties
        }
        moveOnly(name, value, object);
        if (present != kNothing) {
            unparentOnly(name, present);
        }
        break;
    case Form::Linked:
        addOpposite(name, value, rule.opposite, object);
        if (present != kNothing && isValid(name, present)) {
            eraseOpposite(name, present, rule.opposite, object);
        }
        break;
    }
    write(name, object).references[property] = value;
}

void NaiveModel::removeReference(std::string const & name, int object, std::string const & property) {
    EndRule const & rule = endOf(kindOf(object), property);
    int const present = referenceIn(*observed(name, object), property);
    bool const isSet = present != kNothing && isValid(name, present);
    if (rule.form == Form::Riding) {
        removeContainer(name, object); // also one of a kind that this end does not show
        return;
    }
    if (isSet && rule.form == Form::Linked) {
        eraseOpposite(name, present, rule.opposite, object);
    }
    if (isSet && rule.form == Form::Contained) {
        unparentOnly(name, present);
    }
    setReferenceIn(write(name, object), property, kNothing);
}

void NaiveModel::link(std::string const & name, int object, std::string const & property, int value, bool atFront) {
    EndRule const & rule = endOf(kindOf(object), property);
    if (rule.form == Form::Linked) {
        if (!endOf(kindOf(value), rule.opposite).isMany) {
            int const old = referenceIn(read(name, value), rule.opposite);
            if (old != kNothing && old != object && isValid(name, old)) {
                eraseOpposite(name, old, property, value);
            }
        }
        addOpposite(name, value, rule.opposite, object);
    }
    if (rule.form == Form::Contained) {
        if (read(name, value).container != object) {
            moveOnly(name, value, object);
        } else if (!contains(read(name, object).lists.at(property), value)) {
            eraseContainee(name, object, value); // from the owner's other properties
        }
    }
    // An element that is there already stays where it is, and nothing is written; but it is a write.
    checkOpen(name);
    if (!contains(read(name, object).lists.at(property), value)) {
        std::vector<int> & list = write(name, object).lists[property];
        list.insert(atFront ? list.begin() : list.end(), value);
    }
}

void NaiveModel::unlink(std::string const & name, int object, std::string const & property, int index) {
    EndRule const & rule = endOf(kindOf(object), property);
    int const value = read(name, object).lists.at(property).at(static_cast<std::size_t>(index));
    if (rule.form == Form::Linked) {
        eraseOpposite(name, value, rule.opposite, object);
    }
    if (rule.form == Form::Contained) {
        unparentOnly(name, value);
    }
    std::vector<int> & list = write(name, object).lists[property];
    list.erase(list.begin() + index);
}

void NaiveModel::addBody(std::string const & name, int object, int index, std::string const & text) {
    checkOpen(name);
    std::vector<std::string> const & present = read(name, object).body;
    if (std::find(present.begin(), present.end(), text) == present.end()) {
        std::vector<std::string> & body = write(name, object).body;
        body.insert(body.begin() + index, text);
    }
}

void NaiveModel::eraseBody(std::string const & name, int object, int index) {
    std::vector<std::string> & body = write(name, object).body;
    body.erase(body.begin() + index);
}

} // namespace ZEL::oracle
