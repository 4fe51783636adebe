#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/Type.h>

#include <uml/Classifier.h>

#include <algorithm>
#include <string_view>
#include <vector>

/// What the constraints of UML share. A constraint speaks of what is there: what is missing is told by the bounds of its
/// property, so that nothing is told twice.
namespace uml::internal {

template <class Sequence, class Predicate> bool allOf(Sequence const & elements, Predicate holds) {
    for (auto const & element : elements) {
        if (!holds(element)) {
            return false;
        }
    }
    return true;
}

template <class Sequence, class Predicate> int countOf(Sequence const & elements, Predicate holds) {
    int count = 0;
    for (auto const & element : elements) {
        count += holds(element) ? 1 : 0;
    }
    return count;
}

/// What the classifier inherits from, at any distance; each once, also where generalizations form a cycle.
[[nodiscard]] std::vector<Classifier> allGenerals(Classifier const & classifier);

/// Whether one is the other or inherits from it.
[[nodiscard]] bool conforms(ZEL::Type const & type, ZEL::Type const & other);

/// Whether the file states a link of the property that leads to nothing that was read, so that nobody knows its target.
[[nodiscard]] inline bool hasUnknownTarget(ZEL::ImmutableClassObject const & object, std::string_view property) {
    std::vector<ZEL::Remainder::Link> const & links = ZEL::remainderOf(object).links;
    return std::any_of(links.begin(), links.end(),
                       [property](ZEL::Remainder::Link const & link) { return link.property == property; });
}

/// The nearest object around this one that is a `T`; an invalid handle if there is none.
template <class T> [[nodiscard]] T nearestAround(ZEL::ClassObject const & object) {
    for (ZEL::ClassObject at = object.getContainerZEL(); at.isValid();) {
        if (T const found(at); found.isValid()) {
            return found;
        }
        ZEL::ClassObject const container = at.getContainerZEL();
        at = ZEL::ClassObject(); // a handle keeps its deviant when it gets the same body
        at = container;
    }
    return T();
}

} // namespace uml::internal
