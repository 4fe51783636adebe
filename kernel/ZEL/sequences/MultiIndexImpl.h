#pragma once

#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceIntf.h>

#include <boost/multi_index/identity_fwd.hpp>

namespace ZEL {
struct TRUE_TYPE;
struct FALSE_TYPE;
class Class;
class ClassObject;
class Classifier;
class Comment;
class Constraint;
class Element;
class ElementImport;
class EnumerationLiteral;
class ImmutableClass;
class ImmutableClassObject;
class ImmutableObject;
class ImmutableProperty;
class Operation;
class PackageImport;
class PackageMerge;
class PackageableElement;
class Parameter;
class Property;
class StereotypeObject;
class String;
class Type;
class ValueSpecification;
} // namespace ZEL

namespace ZEL::Generic {

namespace MultiIndexImplInternal {

/// A stand-alone storage with two indices: by position, and ordered by `Key` for quick search and, if `aIsUnique` is 1,
/// for the refusal of a second element with an equal key, which is silent.
///
/// The key of an element must not change while it is stored. The members are defined in `MultiIndexImpl.ipp`, so that
/// the container stays out of sight; the library instantiates them for the element types of its own metamodel.
template <class T, int aIsUnique, class Key> class ZEL_API MultiIndexImplForPrimitives : public SequenceIntf {
public:
    class Iterator;

    ~MultiIndexImplForPrimitives() override;

    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override;
    [[nodiscard]] Ref generic_front(Deviant deviant) const override;
    [[nodiscard]] Ref generic_back(Deviant deviant) const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_begin(Deviant deviant) const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_end(Deviant deviant) const override;
    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant deviant) const override;
    std::unique_ptr<IteratorIntf> generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override;
    void generic_insert(Deviant deviant, int index, Ref element) override;
    void generic_erase(Deviant deviant, int index) override;
    std::unique_ptr<IteratorIntf> generic_erase(Deviant deviant, IteratorIntf const * first,
                                                IteratorIntf const * last) override;
    std::unique_ptr<IteratorIntf> generic_erase(Deviant deviant, IteratorIntf const * where) override;
    void generic_pop_back(Deviant deviant) override;
    void generic_pop_front(Deviant deviant) override;
    void generic_push_back(Deviant deviant, Ref element) override;
    void generic_push_front(Deviant deviant, Ref element) override;
    void generic_replace(Deviant deviant, int index, Ref element) override;
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override;
    [[nodiscard]] char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                   char const * fallback) const override;
    [[nodiscard]] bool generic_isRandomAccess() const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_iteratorAt(Deviant deviant, int index) const override;
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    [[nodiscard]] bool generic_isUnique() const override;
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override;

protected:
    MultiIndexImplForPrimitives();

private:
    struct Storage;
    struct Place;

    [[nodiscard]] std::size_t checkedIndex(int index) const;
    void checkNotEmpty() const;
    [[nodiscard]] Ref refOf(T const & element, Deviant deviant) const;
    /// Where the element stands afterwards, which is another place if an equal one was there before.
    Place insertBefore(Place const & where, Ref const & element);
    [[nodiscard]] Place placeAt(std::size_t index) const;
    [[nodiscard]] Place placeOf(IteratorIntf const * iterator) const;

    std::unique_ptr<Storage> fStorage;
};

// Made once, in the library, and shown by it: wherever else one of them would be made it would be hidden, and the
// strictest of several visibilities wins.
extern template class ZEL_API MultiIndexImplForPrimitives<ClassObject, 0, boost::multi_index::identity<ClassObject>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableProperty, 0, boost::multi_index::identity<ImmutableProperty>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableObject, 0, boost::multi_index::identity<ImmutableObject>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableClassObject, 0, boost::multi_index::identity<ImmutableClassObject>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableClass, 0, boost::multi_index::identity<ImmutableClass>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableObject, 1, boost::multi_index::identity<ImmutableObject>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableClass, 1, boost::multi_index::identity<ImmutableClass>>;
extern template class ZEL_API MultiIndexImplForPrimitives<String, 1, boost::multi_index::identity<String>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Class, 1, boost::multi_index::identity<Class>>;
extern template class ZEL_API MultiIndexImplForPrimitives<ClassObject, 1, boost::multi_index::identity<ClassObject>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableProperty, 1, boost::multi_index::identity<ImmutableProperty>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ImmutableClassObject, 1, boost::multi_index::identity<ImmutableClassObject>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Classifier, 1, boost::multi_index::identity<Classifier>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Comment, 1, boost::multi_index::identity<Comment>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ElementImport, 1, boost::multi_index::identity<ElementImport>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<PackageImport, 1, boost::multi_index::identity<PackageImport>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Constraint, 1, boost::multi_index::identity<Constraint>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<StereotypeObject, 1, boost::multi_index::identity<StereotypeObject>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Operation, 1, boost::multi_index::identity<Operation>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Property, 1, boost::multi_index::identity<Property>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<EnumerationLiteral, 1, boost::multi_index::identity<EnumerationLiteral>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<ValueSpecification, 1, boost::multi_index::identity<ValueSpecification>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Type, 1, boost::multi_index::identity<Type>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Parameter, 1, boost::multi_index::identity<Parameter>>;
extern template class ZEL_API
    MultiIndexImplForPrimitives<PackageableElement, 1, boost::multi_index::identity<PackageableElement>>;
extern template class ZEL_API MultiIndexImplForPrimitives<PackageMerge, 1, boost::multi_index::identity<PackageMerge>>;
extern template class ZEL_API MultiIndexImplForPrimitives<Element, 1, boost::multi_index::identity<Element>>;

} // namespace MultiIndexImplInternal

/// The part that knows whether handles on the sequence only read. `Immutable` is `FALSE_TYPE`.
template <class T, int aIsUnique, class Key, class Immutable>
class ZEL_API MultiIndexImplBase : public MultiIndexImplInternal::MultiIndexImplForPrimitives<T, aIsUnique, Key> {
protected:
    MultiIndexImplBase() = default;
};

/// See `MultiIndexImplForPrimitives`.
template <class T, int aIsUnique, class Key = boost::multi_index::identity<T>>
class ZEL_API MultiIndexImpl final : public MultiIndexImplBase<T, aIsUnique, Key, FALSE_TYPE> {
public:
    MultiIndexImpl() = default;
};

} // namespace ZEL::Generic
