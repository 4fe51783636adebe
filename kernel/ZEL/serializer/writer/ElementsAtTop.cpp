#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/serializer/writer/ElementsAtTop.h>

namespace ZEL::Serializer {
namespace {

internal::BodyCore const * bodyOf(ImmutableClassObject const & object) {
    return object.getImplementation()->internal_body();
}

} // namespace

void ElementsAtTop::find(ObjectView const & model, PropertyPartition const & partition, bool hasValues) {
    bool const areAll = !hasValues && remainderOf(model.handle()).standing == Remainder::Standing::Nowhere;
    for (WrittenProperty const * const property : partition.visitable) {
        if (!property->isPart()) {
            continue;
        }
        for (ImmutableClassObject const & part : model.objectsOf(*property)) {
            if (areAll || remainderOf(part).standing == Remainder::Standing::AtTop) {
                fObjects.push_back(part);
                fBodies.insert(bodyOf(part));
            } else {
                fLeaveParts = true;
            }
        }
    }
    fAreAll = areAll && !fObjects.empty();
}

void ElementsAtTop::removeFrom(std::vector<ImmutableClassObject> & parts) const {
    if (!fObjects.empty()) {
        std::erase_if(parts, [this](ImmutableClassObject const & part) { return has(*bodyOf(part)); });
    }
}

} // namespace ZEL::Serializer
