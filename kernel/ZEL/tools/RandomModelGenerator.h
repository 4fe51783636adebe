#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/sequences/Sequence.h>

#include <hasp_util/GList.h>

#include <cstdint>
#include <map>
#include <vector>

namespace ZEL {

/// Fills a model with random objects of a metamodel, to exercise readers, writers and comparisons on models of any
/// shape.
///
/// Works by reflection and a factory alone, so any registered metamodel will do. The caller must have a transaction
/// open. The same seed, arguments and state of the model lead to the same objects, values and links, on one platform:
/// the numbers come from the process's `rand`, so two generators must not take turns. What has a value already is left
/// as it is, and what no file holds (derived and transient properties) is left out. What was made is known as long as
/// the generator lives, so links of a later run may lead to objects of an earlier one.
class ZEL_API RandomModelGenerator {
public:
    /// The seed is made of the present time.
    explicit RandomModelGenerator(FactoryObject factory);

    /// Below `root`, `depth` levels of up to `breadth` children for each object; then `associations` attempts to set a
    /// value or a link. Returns the root. A seed of 0 keeps the stored one. Cost is exponential in `depth`, unless
    /// `breadth` is 1. Throws if the metamodel has a property without a type, a type without an instantiable class, or
    /// an enumeration without literals.
    ClassObject createRandomModel(ClassObject const & root, int depth, int breadth, int associations,
                                  unsigned int seed);
    /// What reproduces the last run.
    [[nodiscard]] unsigned int getSeed() const noexcept { return fSeed; }

    /// The positions, in `properties`, of those that are composite. `properties` are all of the class.
    HASP::GList<int> const & getCompositionMetaPropertyVector(ImmutableClass const & metaClass,
                                                              ImmutableSequence<ImmutableProperty> const & properties);
    /// The positions of those that may hold a value or a link.
    HASP::GList<int> const & getAssociationMetaPropertyVector(ImmutableClass const & metaClass,
                                                              ImmutableSequence<ImmutableProperty> const & properties);
    /// One of the objects made of the class and of its subclasses; an invalid handle if there is none.
    [[nodiscard]] ClassObject getRandomObjectForClass(ImmutableClass const & metaClass) const;
    /// Enters the object under this class, and no other.
    void addObjectToMap(ImmutableClass const & metaClass, ClassObject const & object);
    /// Adds the class, if it is not abstract, and those of its subclasses that are not, each once.
    Sequence<ImmutableClass> getNonAbstractSubClasses(ImmutableClass const & metaClass,
                                                      Sequence<ImmutableClass> const & found) const;
    /// Sets a name made of the object's place, class and id: "0-2-Class-[17]". Throws the NULL text on an invalid
    /// object.
    void createNameStringAndSet(ClassObject const & object, ImmutableProperty const & property) const;

protected:
    /// Fills the tree below `parent`; returns the last object made directly below it, or `parent` if `depth` is below
    /// 1.
    ClassObject createRandomModelComposition(ClassObject const & parent, int depth, int breadth);
    void createRandomModelAssociation(int count);
    /// Sets or adds a value of the property's type; an object is filled further. Returns the object; an invalid handle
    /// for a value that is none.
    ClassObject createValueForProperty(ClassObject const & parent, int depth, int breadth,
                                       ImmutableProperty const & property);
    void createCompositionAssociationMetaPropertyVectors(ImmutableClass const & metaClass,
                                                         ImmutableSequence<ImmutableProperty> const & properties);

private:
    struct Frame;
    /// Positions of properties of a class.
    struct Vectors {
        HASP::GList<int> compositions;
        HASP::GList<int> associations;
    };

    Vectors const & vectorsOf(ImmutableClass const & metaClass,
                              ImmutableSequence<ImmutableProperty> const & properties);
    ClassObject makeValue(ClassObject const & parent, ImmutableProperty const & property);
    [[nodiscard]] Object makeData(ImmutableType const & type) const;
    ClassObject makeObject(ImmutableClass const & type);
    void rememberObject(ClassObject const & object);
    [[nodiscard]] std::vector<ImmutableClass> const & instantiableClasses(ImmutableClass const & type);
    [[nodiscard]] FactoryObject factoryFor(ImmutableClass const & metaClass);

    FactoryObject fFactory;
    std::uint32_t fSeed;
    std::vector<int> fPositions; ///< of the object being made, among the children of each of its containers
    std::map<ImmutableClass, std::vector<ClassObject>>
        fObjectsByClass; ///< under superclasses too, in order of creation
    std::map<ImmutableClass, Vectors> fVectors;
    std::vector<ClassObject> fObjects;                                          ///< all, in order of creation
    std::map<ImmutableClass, std::vector<ImmutableClass>> fInstantiableClasses; ///< by type of a property
    std::map<ImmutableModel, FactoryObject> fFactories;                         ///< by metamodel
};

/// Makes a generator of the factory of the root's model, and runs it.
ZEL_API ClassObject createRandomModel(ClassObject const & root, int depth, int breadth, int associations,
                                      unsigned int seed);

} // namespace ZEL
