#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/writer/ObjectView.h>
#include <ZEL/serializer/writer/PropertyPartition.h>

#include <hasp_util/Uri.h>

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZEL::Serializer {

/// Makes Contexts of objects: an element, its attributes and its links.
class ObjectContexts {
public:
    /// `keepsFileIds`: objects of other models are named by the ids that they have in the files of those.
    ObjectContexts(PartitionCache & partitions, bool keepsFileIds)
        : fPartitions(partitions), fKeepsFileIds(keepsFileIds) {}

    /// Whether links that have to be left out are logged; off at first.
    void setWarnings(bool warns) noexcept { fWarns = warns; }

    /// Where an object is: reached by `property` from the object whose Context is `parent`; both null at the top of the
    /// file.
    struct Place {
        WrittenProperty const * property = nullptr;
        Context const * parent = nullptr;
    };

    /// Appends the element, attributes and links of the object. Returns whether any of them will be a child element.
    bool append(ObjectView const & object, PropertyPartition const & partition, Place const & place,
                ContextSequence & sequence);

    // The parts of that, for who writes the rest without Contexts.
    /// Makes the object's model the one at hand, against which links are made. False if it has no URI: without one there
    /// are no links.
    bool selectModel(ImmutableClassObject const & object);
    /// The links of the property, null if none are to be written. The model at hand must have a URI.
    [[nodiscard]] std::optional<Context> referenceOf(ObjectView const & object, WrittenProperty const & property,
                                                     Context const & parent);
    /// Appends the values of a property that has many of a data type. Returns whether there are any.
    static bool appendValues(ObjectView const & object, WrittenProperty const & property, Context const & parent,
                             ContextSequence & sequence);
    /// The class that the file names for an object with this remainder: the object's own one, unless the file from which
    /// it was read has another, and is kept to.
    [[nodiscard]] QualifiedName typeOf(Remainder const & remainder, QualifiedName own) const;
    /// Appends the object's id in files.
    void appendId(internal::BodyCore const & object, Deviant deviant, std::string & text);

    /// The absolute URI of a file, with a fragment, as it is written in the file of the model at hand; others unchanged.
    [[nodiscard]] std::string relativeTo(std::string const & target) const;

    /// An object is to be written: where ids of files are kept, the next id is the first one after those of objects that
    /// have none of these, so that reading and writing a file do not change it.
    void noteNumber(internal::BodyCore const & object);
    /// The block with which the standard dialect begins a file: the next id of the object's model. Nothing for an
    /// object without a model.
    void appendHead(ImmutableClassObject const & object, ContextSequence & sequence);

private:
    /// The id that the object has in the file from which it was read, if that is to be kept; else null.
    [[nodiscard]] std::string const * keptIdOf(internal::BodyCore const & object) const;

    struct ModelUri {
        std::string text;
        HASP::Uri uri;
    };

    static void appendValue(ObjectView const & object, WrittenProperty const & property, Context const & parent,
                            ContextSequence & sequence);
    bool appendReferences(ObjectView const & object, PropertyPartition const & partition, Context const & parent,
                          ContextSequence & sequence);
    [[nodiscard]] std::optional<Context> referenceTo(std::vector<ImmutableClassObject> const & targets,
                                                     WrittenProperty const & property, Context const & parent);
    /// The text by which a file of the model at hand names an object of another; empty if it cannot be named.
    [[nodiscard]] std::string externalReference(ImmutableClassObject const & target);
    [[nodiscard]] HASP::Uri linkTo(HASP::Uri const & target) const;
    [[nodiscard]] std::string idOf(ImmutableClassObject const & object);
    [[nodiscard]] bool isOfModelAtHand(ImmutableClassObject const & object) const;
    [[nodiscard]] ModelUri const & uriOfModel(ImmutableModel const & model);

    PartitionCache & fPartitions;
    bool const fKeepsFileIds;
    std::int32_t fNextNumber = 1; ///< after those noted
    bool fWarns = false;
    std::unordered_map<void const *, ModelUri> fModelUris; ///< by the model's body, which its objects keep alive

    // The model of the object at hand, against which links are written.
    internal::ModelCore const * fModelCore = nullptr;
    ImmutableModel fModel;
    ModelUri const * fModelUri = nullptr;

    // The model whose object got an id last, and what stands before the number in its ids.
    internal::ModelCore const * fIdModel = nullptr;
    std::string fIdPrefix;
};

} // namespace ZEL::Serializer
