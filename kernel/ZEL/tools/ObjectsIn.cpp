#include <ZEL/tools/ContentsWalk.h>
#include <ZEL/tools/ObjectsIn.h>

namespace ZEL {

std::vector<ImmutableClassObject> objectsIn(ImmutableClassObject const & root) {
    std::vector<ImmutableClassObject> found;
    for (ImmutableClassObject const & object : ContentsWalk(root)) {
        found.push_back(object);
    }
    return found;
}

} // namespace ZEL
