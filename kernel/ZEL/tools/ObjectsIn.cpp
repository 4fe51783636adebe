#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <iterator>

namespace ZEL {

std::vector<ImmutableClassObject> objectsIn(ImmutableClassObject const & root) {
    std::vector<ImmutableClassObject> found;
    std::vector<ImmutableClassObject> open{root};
    while (!open.empty()) {
        found.push_back(open.back());
        open.pop_back();
        std::vector<ImmutableClassObject> const children = found.back().getContaineeZELs().toVector();
        std::copy_if(children.rbegin(), children.rend(), std::back_inserter(open),
                     [](ImmutableClassObject const & child) { return !ImmutableFactoryObject(child).isValid(); });
    }
    return found;
}

} // namespace ZEL
