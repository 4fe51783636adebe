#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/reader/TextHash.h>

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZEL::Serializer {

/// The objects of one file by their ids there.
///
/// Nearly all ids of a file differ in the number after the last underscore only; such ids take a slot of an array, all
/// others an entry of a hash.
class ZEL_API ObjectsById {
public:
    /// False if another object had the id; the new one takes its place.
    bool enter(ObjectId const & id, ClassObject const & object);
    /// Null if no object has the id. Valid until the next `enter`.
    [[nodiscard]] ClassObject const * find(ObjectId const & id) const;
    [[nodiscard]] bool empty() const noexcept { return fCount == 0; }

private:
    static constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

    [[nodiscard]] std::size_t slotOf(ObjectId const & id) const noexcept {
        return id.isRegular() && id.head() == fHead ? id.serial() : kNoSlot;
    }

    std::string fHead; ///< that of the first regular id
    std::vector<ClassObject> fSlots;
    std::unordered_map<std::string, ClassObject, TextHash, std::equal_to<>> fOthers;
    std::size_t fCount = 0;
};

} // namespace ZEL::Serializer
