#include "write/Handles.h"

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
    for (Class const * const c : of.line()) {
        for (Operation const & operation : c->operations) {
            bool const isPresent = std::any_of(result.begin(), result.end(),
                                               [&](Operation const * other) { return other->isCalledAs(operation); });
            if (!isPresent && operation.body != OperationBody::BodyOnly) {
                result.push_back(&operation);
            }
        }
    }
    return result;
}

} // namespace zelgen
