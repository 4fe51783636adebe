#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/ObjectId.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::Serializer {

struct MetaProperty;

/// The objects of one model by their ids in the file.
///
/// Nearly all ids of a file differ in the number behind the last underscore only; such ids take a slot of an array, all
/// others an entry of a hash.
class ObjectIds {
public:
    /// False if another object had the id; the new one takes its place.
    bool enter(ObjectId const & id, ClassObject const & object);
    /// Null if no object has the id. Good until the next `enter`.
    [[nodiscard]] ClassObject const * find(ObjectId const & id) const;
    [[nodiscard]] bool empty() const noexcept { return fCount == 0; }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
    };

    /// The slot of a regular id, or `npos`.
    [[nodiscard]] std::size_t slotOf(ObjectId const & id) const noexcept;

    std::string fHead; ///< what regular ids have in common, with the underscore
    std::vector<ClassObject> fSlots;
    std::unordered_map<std::string, ClassObject, Hash, std::equal_to<>> fOthers;
    std::size_t fCount = 0;
};

/// A link that waits for its target, in little space.
struct PendingLink {
    ClassObject object;
    MetaProperty const * property;
    std::size_t idBegin; ///< in the texts of its file
    std::uint32_t idSize;
    bool isFurther; ///< the file has another link before for this property, which takes one
};

/// What a run knows of one model: the objects by id, and the links that its file holds.
struct FileModel {
    std::string uri;
    ObjectIds objects;
    std::vector<PendingLink> links;
    std::string linkTexts;

    [[nodiscard]] std::string_view idOf(PendingLink const & link) const noexcept {
        return std::string_view(linkTexts).substr(link.idBegin, link.idSize);
    }
};

/// All models that a run has met, in that order.
class LinkTable {
public:
    /// That of the model with this URI; made on first use.
    [[nodiscard]] FileModel & of(std::string const & uri);
    /// Null if there is none.
    [[nodiscard]] FileModel * find(std::string const & uri);
    [[nodiscard]] std::deque<FileModel> & models() noexcept { return fModels; }
    void clear() noexcept;

private:
    std::deque<FileModel> fModels;
    std::unordered_map<std::string, FileModel *> fByUri;
};

} // namespace ZEL::Serializer
