#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/ObjectsIn.h>

namespace ZEL {

std::vector<ImmutableClassObject> objectsIn(ImmutableClassObject const & root) {
    std::vector<ImmutableClassObject> found;
    std::vector<ImmutableClassObject> open{root};
    while (!open.empty()) {
        found.push_back(open.back());
        open.pop_back();
        std::vector<ImmutableClassObject> const children = found.back().getContaineeZELs().toVector();
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    return found;
}

} // namespace ZEL
