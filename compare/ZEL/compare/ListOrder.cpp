#include <ZEL/compare/ListOrder.h>

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>

namespace ZEL::Compare {
namespace {

using Elements = std::vector<ObjectIntf *>;
using Set = std::unordered_set<ObjectIntf const *>;
/// What follows each old element, null for what stands ahead of them all.
using Runs = std::unordered_map<ObjectIntf const *, Elements>;

Runs runsOf(Elements const & list, Set const & old, Set const & isNew) {
    Runs runs;
    ObjectIntf const * last = nullptr;
    for (ObjectIntf * const element : list) {
        if (old.count(element) != 0) {
            last = element;
        } else if (isNew.count(element) != 0) {
            runs[last].push_back(element);
        }
    }
    return runs;
}

} // namespace

Elements inOrder(ListStates const & states, bool isTheirs,
                 std::function<bool(ObjectIntf *, ObjectIntf *)> const & isLess) {
    Set const before(states.before.begin(), states.before.end());
    Set const theirs(states.theirs.begin(), states.theirs.end());
    Set old;
    Set newOfTheirs;
    Set newOfOurs;
    for (ObjectIntf * const element : states.ours) {
        if (before.count(element) != 0 && (theirs.count(element) != 0 || !isTheirs)) {
            old.insert(element);
        } else {
            (theirs.count(element) != 0 ? newOfTheirs : newOfOurs).insert(element);
        }
    }
    Runs ofOurs = runsOf(states.ours, old, newOfOurs);
    Runs ofTheirs = runsOf(states.theirs, old, newOfTheirs);

    Elements result;
    auto const append = [&result](Elements const & run) { result.insert(result.end(), run.begin(), run.end()); };
    auto const appendRuns = [&](ObjectIntf const * element) {
        Elements const & a = ofOurs[element];
        Elements const & b = ofTheirs[element];
        bool const isOursFirst = !a.empty() && !b.empty() && !isLess(b.front(), a.front());
        append(isOursFirst ? a : b);
        append(isOursFirst ? b : a);
    };
    appendRuns(nullptr);
    for (ObjectIntf * const element : isTheirs ? states.theirs : states.ours) {
        if (old.count(element) != 0) {
            result.push_back(element);
            appendRuns(element);
        }
    }
    return result;
}

} // namespace ZEL::Compare
