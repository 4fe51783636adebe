#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/SoleOwner.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/serializer/ObjectId.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZEL::internal {
class BodyCore;
class ModelCore;
struct ClassDescriptor;
struct FieldDescriptor;
} // namespace ZEL::internal

namespace ZEL::Serializer {

class MetaClassCache;
struct MetaProperty;

/// Makes the objects and sets the values that a reader finds in files.
///
/// Without models it makes new ones. Given existing models, it turns a read into a merge: an object whose external id
/// is met is kept and filled anew, one that is not met is destroyed at the end. Either way the read is one transaction
/// per model, which `teardown` commits and `abort` cancels; if a model is in a transaction of its caller, the commit
/// ends only the inner one, while a cancel ends all of them. Kept children keep their place in their container,
/// whatever the order in the file.
///
/// Meant to be derived from. A run is `initialize`, any number of creations and settings, then `teardown` or `abort`,
/// after which the Merger has no model: add the models again for the next run.
class ZEL_API Merger {
public:
    Merger();
    /// Throws "Input model is invalid!".
    explicit Merger(Model const & model);
    Merger(Merger const & other);
    Merger & operator=(Merger const & other);
    virtual ~Merger();

    /// The text by which a file names the object: the one that a writer uses.
    [[nodiscard]] virtual std::string getExternalId(ClassObject object);

    /// Throws "Input model is invalid!".
    void addReferredModel(Model const & model);
    /// The models of this run: those that were added, and those that were made.
    [[nodiscard]] std::vector<Model> const & getReferredModels() const noexcept { return fReferredModels; }

    /// Opens the transactions and notes all that the models contain; plain values and links that are not compositions
    /// are cleared. Linear in the size of the models.
    bool initialize();
    /// Destroys what was not met, and commits. A given model itself is never destroyed.
    bool teardown();
    /// Cancels, and restores the id counters of the models. If one of them throws, continues with the others and throws
    /// the first failure at the end. Without models it only calls `abortImpl`.
    bool abort();

    /// The known object with this id, or else a new one. With an invalid `model` a new model is made, and takes part in
    /// the run. An invalid handle if nothing could be made.
    [[nodiscard]] ClassObject createObject(Model const & model, std::string const & uri, std::string const & roleName,
                                           std::string const & typeUri, std::string const & typeName,
                                           std::string const & id);

    /// Sets or adds the value of the property's type that the text stands for. False, and a log entry, on failure.
    bool setProperty(ClassObject const & object, ImmutableProperty const & property, std::string const & value);
    bool setProperty(ClassObject const & object, ImmutableProperty const & property, char const * value) {
        return setProperty(object, property, std::string(value));
    }
    /// Sets or adds the object, which thereby outlives `teardown`. False, and a log entry, on failure.
    bool setProperty(ClassObject const & object, ImmutableProperty const & property, ClassObject const & value);

protected:
    // All three do nothing and return true. `abortImpl` is also called after a teardown.
    virtual bool initializeImpl() { return true; }
    virtual bool teardownImpl() { return true; }
    virtual bool abortImpl() { return true; }
    /// Makes an object by the factory for `typeUri`, or else by that for `uri` under the name of the role; a model by
    /// `uri` if `model` is invalid. A number in the id becomes the object's; an object of the run that has this number
    /// because its own id had none moves to a free one.
    [[nodiscard]] virtual ClassObject createObjectImpl(Model model, std::string const & uri,
                                                       std::string const & roleName, std::string const & typeUri,
                                                       std::string const & typeName, std::string const & id);

private:
    friend class ValueSetter;
    friend class XmiReaderImpl;

    struct Found {
        ClassObject object;
        bool isNew;
    };
    struct Collected {
        ClassObject object;
        std::size_t number; ///< in order of collection
    };
    struct OpenTransaction {
        Model model;
        std::int32_t nextId; ///< before the run
        bool isMade;         ///< by the run
    };
    /// An object that was numbered by its model.
    struct Numbered {
        ClassObject object;
        std::int32_t number;
    };
    struct OfModel;
    struct CollectedObjects;
    struct ByModel;

    [[nodiscard]] MetaClassCache & metaClasses() noexcept { return *fMetaClasses; }
    bool setProperty(ClassObject const & object, MetaProperty const & property, std::string_view value);
    /// `isNew`: the value has been created for this and stands nowhere yet.
    bool setProperty(ClassObject const & object, MetaProperty const & property, ClassObject const & value, bool isNew);

    /// `createObject`, where `id` is `text`, parsed.
    [[nodiscard]] Found findOrCreate(Model const & model, std::string const & uri, std::string const & roleName,
                                     std::string const & typeUri, std::string const & typeName,
                                     std::string const & text, ObjectId const & id);
    /// Whether each object is made by the factories alone: nothing is to be found again, and no subclass has a say.
    [[nodiscard]] bool makesAllAnew() const noexcept;
    /// What `createObject` and a `setProperty` on the owner come to for a part of a class that the factories have made
    /// for the same names before, in the model of the part. Null where they are to be asked; the number is free then.
    [[nodiscard]] internal::BodyCore * createPart(ClassObject const & owner, internal::FieldDescriptor const & field,
                                                  internal::ModelCore & model,
                                                  internal::ClassDescriptor const & descriptor, ObjectId const & id);
    /// An object that has the number from the model, not from a file, gets another one.
    static void freeNumber(std::vector<Numbered> & numbered, std::int32_t number);
    /// Cancels what was done to a model that the run has made; the model takes part no longer. False, and nothing done,
    /// for any other model.
    bool giveUp(Model const & model);
    void open(Model const & model, bool isMade);
    void collectClassObjectInfo(ClassObject const & root);
    void collect(ClassObject const & object, std::vector<ClassObject> & children);
    void clearProperty(ClassObject const & object, MetaProperty const & property);
    [[nodiscard]] bool isReferredModel(ClassObject const & object) const;
    void destroyCollected();
    [[nodiscard]] static FactoryObject findFactory(OfModel & known, Model const & model, std::string const & uri);
    void cleanup();

    std::vector<Model> fReferredModels;
    internal::SoleOwner<CollectedObjects> fCollectedObjects; ///< not met yet
    internal::SoleOwner<ByModel> fByModel;
    std::vector<OpenTransaction> fOpen;
    ObjectId fIdAtHand; ///< of the object that is being made
    internal::SoleOwner<MetaClassCache> fMetaClasses;
};

} // namespace ZEL::Serializer
