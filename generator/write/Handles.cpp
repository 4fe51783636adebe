#include "write/Handles.h"

#include "write/Operations.h"

#include <algorithm>
#include <set>
#include <string>

namespace zelgen {

std::vector<Property const *> handleProperties(Class const & of) {
    std::vector<Property const *> result;
    std::set<std::string> seen;
    auto const add = [&](Property const & p) {
        if (seen.insert(p.capital).second) {
            result.push_back(&p);
        }
    };
    std::for_each(of.own.begin(), of.own.end(), add);
    for (Property const * const p : of.inherited) {
        add(*p);
    }
    return result;
}

std::vector<Operation const *> handleOperations(Class const & of) {
    std::vector<Operation const *> result;
    std::vector<Class const *> classes{&of};
    classes.insert(classes.end(), of.ancestors.begin(), of.ancestors.end());
    for (Class const * const c : classes) {
        for (Operation const & operation : c->operations) {
            bool const isPresent = std::any_of(result.begin(), result.end(), [&](Operation const * other) {
                return other->name == operation.name && other->isConst == operation.isConst &&
                       std::equal(other->parameters.begin(), other->parameters.end(), operation.parameters.begin(),
                                  operation.parameters.end(),
                                  [](auto const & a, auto const & b) { return a.type == b.type && a.form == b.form; });
            });
            if (!isPresent && operationText::isOnHandles(operation)) {
                result.push_back(&operation);
            }
        }
    }
    return result;
}

} // namespace zelgen
