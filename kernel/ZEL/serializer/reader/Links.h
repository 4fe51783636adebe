#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/QualifiedName.h>
#include <ZEL/serializer/reader/LinkEnds.h>
#include <ZEL/serializer/reader/ObjectsById.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

class TransformerRegistry;
class ValueSetter;
struct MetaProperty;
struct Reference;

/// What a run knows about one file: its objects by their ids there, and its links that wait for their targets.
class ZEL_API FileLinks {
public:
    explicit FileLinks(std::string uri) : fUri(std::move(uri)) {}

    /// That of the file's model.
    [[nodiscard]] std::string const & uri() const noexcept { return fUri; }
    /// False if another object of the file had the id; links lead to the new one.
    bool enter(ObjectId const & id, ClassObject const & object) { return fObjects.enter(id, object); }
    /// Null if no object of the file has had the id so far. Valid until the next `enter`.
    [[nodiscard]] ClassObject const * find(ObjectId const & id) const { return fObjects.find(id); }
    /// `target` is an id in this file, or a URI with a fragment. `isFurther`: the file has another link before for this
    /// property, which takes one.
    /// `type`: the target's class as far as the file names it.
    void add(ClassObject const & object, MetaProperty const & property, std::string_view target, QualifiedName type,
             bool isFurther);
    /// How many links have been added.
    [[nodiscard]] std::size_t size() const noexcept { return fWaiting.size(); }
    /// Elements that stand in the element of the link added at `place`, as text.
    void addContent(std::size_t place, std::string const & elements) { fContents[place] += elements; }
    /// The file is given up: none of its links is resolved, nor any that leads to it.
    void forget();

private:
    friend class Links;

    /// A link in little space.
    struct Waiting {
        ClassObject object;
        MetaProperty const * property;
        QualifiedName type;
        std::size_t targetBegin; ///< in the texts of the file
        std::uint32_t targetSize;
        bool isFurther;
    };

    [[nodiscard]] std::string_view targetOf(Waiting const & link) const noexcept {
        return std::string_view(fTexts).substr(link.targetBegin, link.targetSize);
    }

    std::string fUri;
    ObjectsById fObjects;
    std::vector<Waiting> fWaiting;
    std::string fTexts;
    std::unordered_map<std::size_t, std::string> fContents; ///< by place in `fWaiting`
};

/// The links of a run: noted while files are read, resolved when the outermost one has been read.
class ZEL_API Links {
public:
    /// Both must outlive it.
    Links(TransformerRegistry const & rules, ValueSetter & values) : fRules(rules), fValues(values) {}

    /// Those of the file with this URI, made on first use. References stay valid until `clear`.
    [[nodiscard]] FileLinks & of(std::string const & uri);
    /// The same, null if there are none.
    [[nodiscard]] FileLinks const * find(std::string const & uri) const;
    /// Sets all links, file by file in the order in which these were met, each as a rule resolves it or else to the
    /// object with its id: in a registered metamodel, then in the file that it leads to. Logs and reports what cannot
    /// be set.
    void resolve();
    /// Gives up the handles on all objects.
    void clear() noexcept;

private:
    /// Where links with a certain URI lead.
    struct Place {
        Model registered; ///< a metamodel that is in memory; else invalid
        FileLinks * file = nullptr;
        /// By the ids in the file from which `registered` was read.
        std::unordered_map<std::string, std::int32_t> numbers;
    };

    void resolve(FileLinks & file, FileLinks::Waiting const & link, Reference & scratch);
    /// The link leads to nothing that it could be set to.
    void keep(FileLinks const & file, FileLinks::Waiting const & link);
    /// The link is set: what stood in its element has no place but that of its object.
    void keepContent(FileLinks const & file, FileLinks::Waiting const & link);
    [[nodiscard]] static std::string contentOf(FileLinks const & file, FileLinks::Waiting const & link);
    [[nodiscard]] bool resolveByRules(FileLinks const & file, FileLinks::Waiting const & link, Reference & scratch);
    [[nodiscard]] ClassObject find(FileLinks & file, FileLinks::Waiting const & link);
    [[nodiscard]] static ClassObject findRegistered(Place const & place, std::string_view uri, ObjectId const & id);
    [[nodiscard]] Place const & placeOf(std::string_view uri);

    TransformerRegistry const & fRules;
    ValueSetter & fValues;
    std::deque<FileLinks> fFiles; ///< in the order in which they were met
    std::unordered_map<std::string, FileLinks *> fByUri;
    LinkEnds fEnds;
    std::unordered_map<std::string, Place> fPlaces;
    std::pair<std::string const, Place> const * fLastPlace = nullptr;
};

/// Lets a writer that leaves the file of the object as it is link to it by this id.
void noteFileId(ClassObject const & object, ObjectId const & id);

} // namespace ZEL::Serializer
