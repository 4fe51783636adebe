#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/reader/LinkEnds.h>
#include <ZEL/serializer/reader/MetaClassCache.h>

#include <algorithm>
#include <functional>
#include <unordered_set>
#include <utility>

namespace ZEL::Serializer {
namespace {

/// Looks where the links lie, if they can be read there, as most ends stand as the file lists them already.
bool standsAsListed(ClassObject const & object, MetaProperty const & property,
                    std::vector<ClassObject> const & listed) {
    if (property.links == nullptr || property.links->sequence == nullptr) {
        return false;
    }
    internal::BodyCore const & body = *object.getImplementation()->internal_body();
    internal::PersistentSequence const & present = property.linksIn(*body.readState(object.getDeviant()));
    bool isSame = present.size() == listed.size();
    auto next = listed.begin();
    present.forEach([&](void * target) {
        isSame = isSame && static_cast<NSInterface::ObjectIntf *>(target) == (next++)->getImplementation();
    });
    return isSame;
}

} // namespace

void LinkEnds::note(ClassObject const & object, MetaProperty const & property, ClassObject const & target) {
    if (!property.hasOpposite) {
        return;
    }
    if (fRuns.empty() || fRuns.back().property != &property || fRuns.back().object != object) {
        fRuns.push_back({object, &property, fTargets.size(), 0});
    }
    fTargets.push_back(target);
    ++fRuns.back().count;
}

void LinkEnds::clear() noexcept {
    fRuns.clear();
    fTargets.clear();
}

void LinkEnds::restore() const {
    std::vector<Run const *> runs;
    runs.reserve(fRuns.size());
    for (Run const & run : fRuns) {
        runs.push_back(&run);
    }
    // What a file lists of one end may stand apart, with links of contained objects in between. Which end goes first
    // does not matter: none touches another.
    auto const endOf = [](Run const * run) {
        return std::pair(run->property, run->object.getImplementationWithoutAssert());
    };
    std::stable_sort(runs.begin(), runs.end(),
                     [&](Run const * left, Run const * right) { return std::less<>()(endOf(left), endOf(right)); });
    std::vector<ClassObject> listed;
    for (auto run = runs.begin(); run != runs.end();) {
        Run const & end = **run;
        listed.clear();
        for (; run != runs.end() && endOf(*run) == endOf(&end); ++run) {
            auto const first = fTargets.begin() + static_cast<std::ptrdiff_t>((*run)->firstTarget);
            listed.insert(listed.end(), first, first + static_cast<std::ptrdiff_t>((*run)->count));
        }
        restoreOne(end.object, *end.property, listed);
    }
}

void LinkEnds::restoreOne(ClassObject const & object, MetaProperty const & property,
                          std::vector<ClassObject> const & listed) {
    PropertyStorage const & storage = property.storage;
    if (!property.isMany) {
        if (storage.getOne(object) != listed.back()) {
            storage.setOrAddEndOnly(object, listed.back());
        }
        return;
    }
    if (standsAsListed(object, property, listed)) {
        return;
    }
    std::vector<Object> const present = storage.get(object).toVector();
    std::vector<Object> wanted;
    std::unordered_set<NSInterface::ObjectIntf const *> seen;
    for (ClassObject const & target : listed) {
        if (seen.insert(target.getImplementation()).second) {
            wanted.emplace_back(target);
        }
    }
    // What the file does not list here comes last, as it stands.
    for (Object const & value : present) {
        if (seen.count(value.getImplementation()) == 0) {
            wanted.push_back(value);
        }
    }
    if (std::equal(present.begin(), present.end(), wanted.begin(), wanted.end())) {
        return;
    }
    for (std::size_t i = 0; i < present.size(); ++i) {
        storage.removeOneEndOnly(object);
    }
    for (Object const & value : wanted) {
        storage.setOrAddEndOnly(object, value);
    }
}

} // namespace ZEL::Serializer
