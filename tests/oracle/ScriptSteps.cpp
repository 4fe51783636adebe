// What a random script does next.

#include "Script.h"

#include <algorithm>

namespace ZEL::oracle {

namespace {

constexpr int kMostObjects = 160; ///< of a script, the dead ones too
constexpr int kMostAlive = 30;    ///< in one deviant

std::vector<Kind> const kKinds{Kind::Package,     Kind::Class,      Kind::Class,      Kind::Property,  Kind::Property,
                               Kind::Association, Kind::Constraint, Kind::Expression, Kind::Operation, Kind::Comment};
std::vector<std::string> const kTexts{"", "a", "b", "c", "d"};

} // namespace

Step Script::nextStep() {
    std::vector<std::string> names{kRoot, kRoot};
    for (auto const & [name, deviant] : fNaive.deviants()) {
        names.push_back(name);
        if (deviant.depth > 0) {
            names.insert(names.end(), 3, name);
        }
    }
    std::string const name = any(names);
    return fNaive.deviant(name).depth == 0 ? nextInIdle(name) : nextInTransaction(name);
}

Step Script::nextInIdle(std::string const & name) {
    int const choice = below(100);
    if (choice < (name == kRoot ? 25 : 80)) {
        return {.what = What::Begin, .deviant = name, .text = "begun " + std::to_string(below(1000))};
    }
    if (choice < 80 && name == kRoot) {
        return nextOnHistory();
    }
    if (choice >= 80 && choice < 83) {
        static std::vector<std::string> const more{"echo", "sierra", "zulu"};
        std::string const other = any(more);
        return {.what = fNaive.deviants().count(other) == 0 ? What::CreateDeviant : What::RemoveDeviant,
                .deviant = other};
    }
    if (choice < 85) {
        return nextOnListeners(name);
    }
    if (choice < 87) {
        return chance(70) ? Step{.what = What::ReplaceForeign, .deviant = kRoot, .value = fFirstForeign + 10}
                          : nextOnStack(name);
    }
    if (choice < 92) {
        return {.what = chance(50) ? What::Cancel : What::Commit, .deviant = name};
    }
    if (choice < 95 && name != kRoot) {
        return {.what = chance(50) ? What::Sync : What::Assign, .deviant = name};
    }
    return nextWrite(name); // refused, unless nothing changes
}

// On a deviant beside the root there is no way back from a disabled undo.
Step Script::nextOnStack(std::string const & name) {
    int const choice = below(100);
    return {.what = choice < 40 ? What::ClearUndo : choice < 80 ? What::ClearRedo : What::DisableUndo, .deviant = name};
}

Step Script::nextOnHistory() {
    NaiveDeviant const & root = fNaive.deviant(kRoot);
    int const choice = root.maximum == 0 ? 60 + below(40) : below(100);
    if (choice < 35) {
        return {.what = What::Undo, .deviant = kRoot};
    }
    if (choice < 65) {
        return {.what = What::Redo, .deviant = kRoot};
    }
    if (choice < 95) {
        long long const level =
            root.stack.empty() || chance(10)
                ? below(root.highestLevel + 2)
                : root.stack[static_cast<std::size_t>(below(static_cast<int>(root.stack.size())))]->level;
        return {.what = chance(50) ? What::UndoToLevel : What::RedoToLevel, .deviant = kRoot, .value = level};
    }
    long long const maximum = root.maximum > 0 && chance(20) ? -below(2) : chance(10) ? 50 : 3 + below(12);
    return {.what = What::SetMaximum, .deviant = kRoot, .value = maximum};
}

Step Script::nextInTransaction(std::string const & name) {
    int const choice = below(1000);
    if (choice < 100) {
        return {.what = What::Commit, .deviant = name};
    }
    if (choice < 120) {
        return {.what = What::Cancel, .deviant = name};
    }
    if (choice < 140 && fNaive.deviant(name).depth < 4) {
        return {.what = What::Begin, .deviant = name, .text = "nested"};
    }
    if (choice < 155) {
        return {.what = chance(50) ? What::Undo : What::Redo, .deviant = kRoot};
    }
    if (choice < 200) {
        std::vector<std::string> others;
        for (auto const & [other, deviant] : fNaive.deviants()) {
            if (!deviant.isRoot) {
                others.push_back(other);
            }
        }
        return name == kRoot ? Step{.what = What::Assign, .deviant = any(others)}
                             : Step{.what = What::Sync, .deviant = name};
    }
    if (choice < 204 && name != kRoot) {
        return {.what = What::RemoveDeviant, .deviant = name}; // refused within a transaction
    }
    if (choice < 210) {
        return nextOnStack(name);
    }
    if (choice < 215) {
        return nextOnListeners(name);
    }
    return nextWrite(name);
}

// --- writes ------------------------------------------------------------------------------------------------------------

Step Script::nextWrite(std::string const & name) {
    std::vector<int> const objects = validIn(name);
    bool const isOpen = fNaive.deviant(name).depth > 0;
    bool const mayCreate = isOpen && fNaive.numberOfObjects() < kMostObjects && objects.size() < kMostAlive;
    if (mayCreate && (objects.size() < 6 || chance(12))) {
        return {.what = What::Create, .deviant = name, .kind = any(kKinds)};
    }
    for (int i = 0; i < 50 && !objects.empty(); ++i) {
        if (std::optional<Step> const step = tryWrite(name, objects)) {
            return *step;
        }
    }
    // An object that may be there or not.
    for (int object = fNaive.numberOfObjects() - 1; object > kModel; --object) {
        if (!textsOf(fNaive.kindOf(object)).empty() && chance(20)) {
            return {.what = What::SetText,
                    .deviant = name,
                    .object = object,
                    .property = textsOf(fNaive.kindOf(object)).front(),
                    .text = any(kTexts)};
        }
    }
    return {.what = What::Begin, .deviant = name, .text = "nothing to write"};
}

std::optional<Step> Script::tryWrite(std::string const & name, std::vector<int> const & objects) {
    int const object = any(objects);
    int const choice = below(100);
    if (choice < 35) {
        return tryValue(name, object);
    }
    bool const isOpen = fNaive.deviant(name).depth > 0;
    if (!isOpen || !isAnchored(name, object)) {
        return std::nullopt;
    }
    if (choice < 55) {
        return tryReference(name, object, objects);
    }
    if (choice < 82) {
        return tryList(name, object, objects);
    }
    if (choice < 93) {
        return tryContainer(name, object, objects);
    }
    if (choice < 97 || objects.size() + 5 > kMostAlive) {
        return Step{.what = What::Destroy, .deviant = name, .object = object};
    }
    return std::nullopt;
}

std::optional<Step> Script::tryValue(std::string const & name, int object) {
    Kind const kind = fNaive.kindOf(object);
    Step step{.deviant = name, .object = object};
    std::vector<std::string> const & flags = flagsOf(kind);
    std::vector<std::string> const & texts = textsOf(kind);
    std::vector<std::string> const & numbers = numbersOf(kind);
    switch (kind == Kind::Expression && chance(60) ? 3 : below(4)) {
    case 0:
        if (flags.empty()) {
            return std::nullopt;
        }
        step.what = What::SetFlag;
        step.property = any(flags);
        step.value = below(2);
        return step;
    case 1:
        if (texts.empty()) {
            return std::nullopt;
        }
        step.what = chance(80) ? What::SetText : What::RemoveText;
        step.property = any(texts);
        step.text = any(kTexts);
        return step;
    case 2:
        if (numbers.empty()) {
            return std::nullopt;
        }
        step.what = chance(75) ? What::SetNumber : What::RemoveNumber;
        step.property = any(numbers);
        step.value = below(4);
        return step;
    default:
        if (kind != Kind::Expression) {
            return std::nullopt;
        }
        int const size = static_cast<int>(fNaive.read(name, object).body.size());
        step.what = size > 0 && chance(40) ? What::EraseBody : What::AddBody;
        step.index = below(step.what == What::AddBody ? size + 1 : size);
        step.text = any(kTexts);
        return step;
    }
}

std::optional<Step> Script::tryReference(std::string const & name, int object, std::vector<int> const & objects) {
    std::vector<EndRule> rules = endsOf(fNaive.kindOf(object));
    std::erase_if(rules, [](EndRule const & rule) { return rule.isMany; });
    if (rules.empty()) {
        return std::nullopt;
    }
    EndRule const & rule = any(rules);
    State const state = *fNaive.observed(name, object);
    auto const present = state.references.find(rule.property);
    bool const isSet = present != state.references.end();
    if (isSet && rule.form != Form::OneEnded && !isSound(name, present->second)) {
        return std::nullopt;
    }
    if (chance(25)) {
        if (rule.form == Form::Riding && !isSet && state.container != kNothing) {
            return std::nullopt; // contained by another kind of owner
        }
        return Step{.what = What::RemoveReference, .deviant = name, .object = object, .property = rule.property};
    }
    std::vector<int> values = ofKinds(objects, rule.accepts);
    bool const isForeign = rule.form == Form::OneEnded && chance(25);
    if (isForeign) {
        values = foreignOf(rule.accepts);
    }
    if (values.empty()) {
        return std::nullopt;
    }
    int const value = any(values);
    if (!isForeign && !isSound(name, value)) {
        return std::nullopt;
    }
    return Step{
        .what = What::SetReference, .deviant = name, .object = object, .property = rule.property, .value = value};
}

std::optional<Step> Script::tryList(std::string const & name, int object, std::vector<int> const & objects) {
    std::vector<EndRule> rules = endsOf(fNaive.kindOf(object));
    std::erase_if(rules, [](EndRule const & rule) { return !rule.isMany; });
    if (rules.empty()) {
        return std::nullopt;
    }
    EndRule const & rule = any(rules);
    std::vector<int> const & list = fNaive.read(name, object).lists.at(rule.property);
    if (!list.empty() && chance(30)) {
        int const index = below(static_cast<int>(list.size()));
        int const value = list[static_cast<std::size_t>(index)];
        if (rule.form != Form::OneEnded && !isSound(name, value)) {
            return std::nullopt;
        }
        return Step{.what = What::Unlink, .deviant = name, .object = object, .property = rule.property, .index = index};
    }
    std::vector<int> values = ofKinds(objects, rule.accepts);
    bool const isForeign = rule.form == Form::OneEnded && chance(25);
    if (isForeign) {
        values = foreignOf(rule.accepts);
    }
    if (values.empty()) {
        return std::nullopt;
    }
    int const value = any(values);
    if ((!isForeign && !isSound(name, value)) || (value == object && rule.form == Form::Linked)) {
        return std::nullopt;
    }
    return Step{.what = What::Link,
                .deviant = name,
                .object = object,
                .property = rule.property,
                .value = value,
                .index = chance(30) ? 1 : 0};
}

std::optional<Step> Script::tryContainer(std::string const & name, int object, std::vector<int> const & objects) {
    if (chance(25)) {
        return Step{.what = What::RemoveContainer, .deviant = name, .object = object};
    }
    int const container = any(objects);
    if (!isSound(name, container)) {
        return std::nullopt;
    }
    State const & state = fNaive.read(name, container);
    for (EndRule const & rule : endsOf(state.kind)) {
        if (rule.form != Form::Contained || rule.accepts.count(fNaive.kindOf(object)) == 0) {
            continue;
        }
        auto const displaced = state.references.find(rule.property);
        if (displaced != state.references.end() && !isSound(name, displaced->second)) {
            return std::nullopt;
        }
        return Step{.what = What::SetContainer, .deviant = name, .object = object, .value = container};
    }
    bool const isRefusedForItsKindOnly = chance(10) && container != object && fNaive.owners(name, container).empty();
    if (!isRefusedForItsKindOnly) {
        return std::nullopt;
    }
    return Step{.what = What::SetContainer, .deviant = name, .object = object, .value = container};
}

// --- what to choose from -------------------------------------------------------------------------------------------------

// One of each kind, as the kernel's side makes them.
std::vector<int> Script::foreignOf(std::set<Kind> const & kinds) const {
    std::vector<int> result;
    int number = fFirstForeign;
    for (Kind const kind : {Kind::Class, Kind::Property, Kind::Comment}) {
        if (kinds.count(kind) != 0) {
            result.push_back(number);
        }
        ++number;
    }
    return result;
}

std::vector<int> Script::validIn(std::string const & name) const {
    std::vector<int> result;
    for (int object = kModel + 1; object < fNaive.numberOfObjects(); ++object) {
        if (fNaive.isValid(name, object)) {
            result.push_back(object);
        }
    }
    return result;
}

std::vector<int> Script::ofKinds(std::vector<int> const & objects, std::set<Kind> const & kinds) const {
    std::vector<int> result = objects;
    std::erase_if(result, [&](int object) { return kinds.count(fNaive.kindOf(object)) == 0; });
    return result;
}

// Deviants that stopped early hold objects whose owners are absent or own each other; clients keep off them.
bool Script::isAnchored(std::string const & name, int object) const {
    std::vector<int> const owners = fNaive.owners(name, object);
    return std::all_of(owners.begin(), owners.end(),
                       [&](int owner) { return owner != object && fNaive.isValid(name, owner); }) &&
           (owners.empty() || fNaive.read(name, owners.back()).container == kNothing);
}

bool Script::isSound(std::string const & name, int object) const {
    return object != kNothing && fNaive.isValid(name, object) && isAnchored(name, object);
}

} // namespace ZEL::oracle
