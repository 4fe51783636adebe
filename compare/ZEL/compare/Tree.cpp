#include <ZEL/compare/Tree.h>

#include <algorithm>
#include <iterator>

namespace ZEL::Compare {

Tree::Index Tree::add(ImmutableClassObject const & root) {
    struct Open {
        ObjectIntf * object;
        PropertyView const * property;
        Index container;
    };
    Index const first = size();
    Deviant const deviant = root.getDeviant();
    std::vector<Open> open{{ImmutableObject(root).getImplementation(), nullptr, first}};
    std::vector<Open> children;
    while (!open.empty()) {
        Open const next = open.back();
        open.pop_back();
        internal::BodyCore const * const body = next.object->internal_body();
        if (body == nullptr || !body->deviant_isValid(deviant) || !fIndexes.add(next.object, size())) {
            continue; // nothing to look into, or a containment that variants of the state have joined to a ring
        }
        ComparedClass const & metaClass = fClasses.of(body->internal_descriptor());
        Index const index = size();
        fNodes.push_back(
            {ImmutableObject(next.object, deviant), body, &metaClass, next.property, next.container, index + 1});
        children.clear();
        for (PropertyView const * const part : metaClass.parts) {
            forEachTarget(*part, *body, deviant, [&](ObjectIntf * child) { children.push_back({child, part, index}); });
        }
        std::copy(children.rbegin(), children.rend(), std::back_inserter(open));
    }
    for (Index index = size(); index-- > first + 1;) {
        Index & end = fNodes[fNodes[index].container].end;
        end = std::max(end, fNodes[index].end);
    }
    return indexOf(ImmutableObject(root).getImplementation());
}

} // namespace ZEL::Compare
