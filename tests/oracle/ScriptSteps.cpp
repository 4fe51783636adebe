// What a random script does next.

#include "Script.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace ZEL::tests::oracle {

namespace {

constexpr int kMostObjects = 160; ///< of a script, the dead ones too
constexpr int kMostAlive = 30;    ///< in one deviant
constexpr std::size_t kMostTurns = 12;

std::vector<Kind> const kKinds{Kind::Package,     Kind::Class,      Kind::Class,      Kind::Property,  Kind::Property,
                               Kind::Association, Kind::Constraint, Kind::Expression, Kind::Operation, Kind::Comment};
std::vector<std::string> const kLines{"", "a", "b", "c", "d"};

} // namespace

Step Script::choose(std::vector<std::pair<int, Step>> const & shares) {
    int const all =
        std::accumulate(shares.begin(), shares.end(), 0, [](int sum, auto const & s) { return sum + s.first; });
    int rest = below(all);
    auto const chosen =
        std::find_if(shares.begin(), shares.end(), [&](auto const & s) { return (rest -= s.first) < 0; });
    return chosen->second;
}

Step Script::nextStep() {
    std::vector<std::string> names{kRoot, kRoot};
    for (auto const & [name, deviant] : fNaive.deviants()) {
        names.insert(names.end(), deviant.depth > 0 ? 4 : 1, name);
    }
    std::string const name = any(names);
    return fNaive.deviant(name).depth == 0 ? nextInIdle(name) : nextInTransaction(name);
}

Step Script::nextInIdle(std::string const & name) {
    static std::vector<std::string> const more{"echo", "sierra", "zulu"};
    std::string const other = any(more);
    bool const isThere = fNaive.deviants().count(other) != 0;
    bool const isRoot = name == kRoot;
    return choose({
        {isRoot ? 25 : 80, {.what = "begin", .deviant = name, .text = "begun " + std::to_string(below(1000))}},
        {isRoot ? 55 : 0, nextOnHistory()},
        {3, {.what = isThere ? "remove deviant" : "create deviant", .deviant = other}},
        {2, nextOnListeners(name)},
        {1, {.what = "replace foreign", .deviant = kRoot, .value = fFirstForeign + 10}},
        {1, nextOnStack(name)},
        {3, {.what = "cancel", .deviant = name}},
        {2, {.what = "commit", .deviant = name}},
        {isRoot ? 0 : 2, {.what = "sync", .deviant = name}},
        {isRoot ? 0 : 2, {.what = "assign", .deviant = name}},
        {6, nextWrite(name)}, // refused, unless nothing changes
    });
}

Step Script::nextInTransaction(std::string const & name) {
    std::vector<std::string> others;
    for (auto const & [other, deviant] : fNaive.deviants()) {
        if (!deviant.isRoot) {
            others.push_back(other);
        }
    }
    bool const isRoot = name == kRoot;
    return choose({
        {100, {.what = "commit", .deviant = name}},
        {20, {.what = "cancel", .deviant = name}},
        {fNaive.deviant(name).depth < 4 ? 20 : 0, {.what = "begin", .deviant = name, .text = "nested"}},
        {8, {.what = "undo", .deviant = kRoot}},
        {8, {.what = "redo", .deviant = kRoot}},
        {45, {.what = isRoot ? "assign" : "sync", .deviant = isRoot ? any(others) : name}},
        {isRoot ? 0 : 4, {.what = "remove deviant", .deviant = name}}, // refused within a transaction
        {6, nextOnStack(name)},
        {5, nextOnListeners(name)},
        {780, nextWrite(name)},
    });
}

// On a deviant beside the root there is no way back from a disabled undo.
Step Script::nextOnStack(std::string const & name) {
    return choose({{2, {.what = "clear undo", .deviant = name}},
                   {2, {.what = "clear redo", .deviant = name}},
                   {1, {.what = "disable undo", .deviant = name}}});
}

Step Script::nextOnHistory() {
    NaiveDeviant const & root = fNaive.deviant(kRoot);
    int const runs = root.maximum == 0 ? 0 : 35;
    bool const isAnyLevel = root.stack.empty() || chance(10);
    int const level = isAnyLevel ? below(root.highestLevel + 2) : any(root.stack)->level;
    int const maximum = root.maximum > 0 && chance(20) ? -below(2) : chance(10) ? 50 : 3 + below(12);
    return choose({{runs, {.what = "undo", .deviant = kRoot}},
                   {runs, {.what = "redo", .deviant = kRoot}},
                   {15, {.what = "undo to level", .deviant = kRoot, .value = level}},
                   {15, {.what = "redo to level", .deviant = kRoot, .value = level}},
                   {5, {.what = "set maximum", .deviant = kRoot, .value = maximum}}});
}

Step Script::nextOnListeners(std::string const & name) {
    return {.what = chance(60) ? "listen" : "unlisten",
            .deviant = name,
            .value = below(kListeners),
            .index = below(static_cast<int>(std::size(kRoles)))};
}

// --- listeners ---------------------------------------------------------------------------------------------------------

void Script::modify(Turn & turn) {
    std::string const & name = turn.hearing.deviant;
    Step const first = choose({{67, {}},
                               {25, nextWrite(name)},
                               {3, {.what = "cancel", .deviant = name}},
                               {3, {.what = "begin", .deviant = name, .text = "left open"}},
                               {2, {.what = "disable undo", .deviant = name}}});
    take(turn, first);
    if (NaiveModel::isOnObject(first)) {
        take(turn, nextWrite(name));
    }
}

void Script::observe(Turn & turn) {
    std::string const & name = turn.hearing.deviant;
    if (fIsJumping || fTurns.size() >= kMostTurns) {
        return;
    }
    int const runs = name == kRoot ? 2 : 0;
    Step const first = choose({{75, {}},
                               {12, {.what = "begin", .deviant = name, .text = "by an observer"}},
                               {runs, {.what = "undo", .deviant = kRoot}},
                               {runs, {.what = "redo", .deviant = kRoot}},
                               {3, nextOnStack(name)}});
    take(turn, first);
    if (first.what == "begin") {
        take(turn, nextWrite(name));
        take(turn, {.what = chance(80) ? "commit" : "cancel", .deviant = name});
    }
}

// --- writes ------------------------------------------------------------------------------------------------------------

Step Script::nextWrite(std::string const & name) {
    std::vector<int> const objects = validIn(name);
    bool const isOpen = fNaive.deviant(name).depth > 0;
    bool const mayCreate = isOpen && fNaive.numberOfObjects() < kMostObjects && objects.size() < kMostAlive;
    if (mayCreate && (objects.size() < 6 || chance(12))) {
        return {.what = "create", .deviant = name, .kind = any(kKinds)};
    }
    for (int i = 0; i < 50 && !objects.empty(); ++i) {
        if (std::optional<Step> const step = tryWrite(name, objects)) {
            return *step;
        }
    }
    // An object that may be there or not.
    for (int object = fNaive.numberOfObjects() - 1; object > kModel; --object) {
        if (chance(20)) {
            return anyValue(name, object);
        }
    }
    return {.what = "begin", .deviant = name, .text = "nothing to write"};
}

std::optional<Step> Script::tryWrite(std::string const & name, std::vector<int> const & objects) {
    int const object = any(objects);
    if (chance(35)) {
        return anyValue(name, object);
    }
    bool const isOpen = fNaive.deviant(name).depth > 0;
    if (!isOpen || !isAnchored(name, object)) {
        return std::nullopt;
    }
    if (chance(72)) {
        return tryEnd(name, object, objects);
    }
    if (chance(60)) {
        return tryContainer(name, object, objects);
    }
    if (chance(60) || objects.size() + 5 > kMostAlive) {
        return Step{.what = "destroy", .deviant = name, .object = object};
    }
    return std::nullopt;
}

Step Script::anyValue(std::string const & name, int object) {
    Kind const kind = fNaive.kindOf(object);
    if (kind == Kind::Expression && fNaive.isValid(name, object) && chance(70)) {
        int const size = static_cast<int>(fNaive.read(name, object).body.size());
        bool const isErased = size > 0 && chance(40);
        return {.what = isErased ? "erase body" : "add body",
                .deviant = name,
                .object = object,
                .index = below(isErased ? size : size + 1),
                .text = any(kLines)};
    }
    ValueRule const & rule = any(valuesOf(kind));
    return {.what = !rule.isRequired && chance(20) ? "remove value" : "set value",
            .deviant = name,
            .object = object,
            .property = rule.property,
            .text = any(rule.choices)};
}

std::optional<Step> Script::tryEnd(std::string const & name, int object, std::vector<int> const & objects) {
    EndRule const & rule = any(endsOf(fNaive.kindOf(object)));
    State const state = *fNaive.observed(name, object);
    std::vector<int> const & present = state.ends.at(rule.property);
    bool const isOneEnded = rule.form == Form::OneEnded;
    Step step{.deviant = name, .object = object, .property = rule.property};
    bool const isErased = chance(27) && (!rule.isMany || !present.empty());
    if (rule.isMany && isErased) {
        step.index = below(static_cast<int>(present.size()));
    }
    bool const isReplaced = !present.empty() && (isErased || !rule.isMany);
    if (isReplaced && !isOneEnded && !isSound(name, present[static_cast<std::size_t>(step.index)])) {
        return std::nullopt;
    }
    if (isErased) {
        bool const hasOtherOwner = rule.form == Form::Riding && present.empty() && state.container != kNothing;
        step.what = rule.isMany ? "unlink" : "remove reference";
        return hasOtherOwner ? std::nullopt : std::optional<Step>(step);
    }
    std::vector<int> values;
    bool const isForeign = isOneEnded && chance(25);
    if (isForeign) {
        for (int i = 0; i < static_cast<int>(std::size(kForeignKinds)); ++i) {
            values.insert(values.end(), rule.accepts.count(kForeignKinds[i]), fFirstForeign + i);
        }
    } else {
        std::copy_if(objects.begin(), objects.end(), std::back_inserter(values),
                     [&](int value) { return rule.accepts.count(fNaive.kindOf(value)) != 0; });
    }
    if (values.empty()) {
        return std::nullopt;
    }
    step.what = rule.isMany ? "link" : "set reference";
    step.value = any(values);
    step.index = rule.isMany && chance(30) ? 1 : 0;
    bool const isFit = isForeign || (isSound(name, step.value) && (rule.form != Form::Linked || step.value != object));
    return isFit ? std::optional<Step>(step) : std::nullopt;
}

std::optional<Step> Script::tryContainer(std::string const & name, int object, std::vector<int> const & objects) {
    if (chance(25)) {
        return Step{.what = "remove container", .deviant = name, .object = object};
    }
    int const container = any(objects);
    if (!isSound(name, container)) {
        return std::nullopt;
    }
    Step const step{.what = "set container", .deviant = name, .object = object, .value = container};
    State const & state = fNaive.read(name, container);
    for (EndRule const & rule : endsOf(state.kind)) {
        if (rule.form == Form::Contained && rule.accepts.count(fNaive.kindOf(object)) != 0) {
            std::vector<int> const & present = state.ends.at(rule.property);
            bool const isFit = rule.isMany || present.empty() || isSound(name, present.front());
            return isFit ? std::optional<Step>(step) : std::nullopt;
        }
    }
    bool const isRefusedForItsKindOnly = container != object && fNaive.owners(name, container).empty();
    return isRefusedForItsKindOnly && chance(10) ? std::optional<Step>(step) : std::nullopt;
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

} // namespace ZEL::tests::oracle
