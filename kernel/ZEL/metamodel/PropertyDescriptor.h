#pragma once

#include <cstdint>

namespace ZEL {

class ImmutableClassObject;
class Object;
template <class T> class Sequence;

namespace Generic {
struct PropertyToSequenceMethods;
} // namespace Generic

namespace internal {

struct ClassDescriptor;

/// How the two ends of a property's association are kept in step.
enum class OtherEnd : std::uint8_t {
    None,      ///< no association, or the other end is owned by it and this end is not composite: this end alone
    Property,  ///< the other end is a property of another class: `PropertyDescriptor::opposite`
    Container, ///< composite, and the other end is owned by the association: the element's container
};

/// Where the values of a property live.
enum class Storage : std::uint8_t {
    Field,     ///< in the state of the object
    Body,      ///< in the body (`id`)
    Container, ///< a single end whose other end is composite: the object's container, narrowed to the type
    Derived,   ///< computed
};

/// One property, as the class that introduces it declares it.
struct PropertyDescriptor {
    char const * name; ///< its model name, such as "isComposite"
    ClassDescriptor const * owner;
    char const * typeName;             ///< its type's registered name, such as "ZEL.Boolean"
    ClassDescriptor const * typeClass; ///< null for data types
    std::int32_t lower;
    std::uint32_t upper; ///< 0xFFFFFFFF is unlimited
    bool isReadOnly;
    bool isDerived;
    bool isComposite;
    bool isOrdered;
    bool isUnique;
    char const * defaultValue; ///< "" for none
    std::uint8_t persistence;  ///< a `PersistenceKind::Value`
    char const * association;  ///< its name; null without association
    char const * ownedEnd;     ///< name of the end that the association owns; null if the other end is a property
    PropertyDescriptor const * opposite; ///< the other end if that is a property
    char const * key;                    ///< "ZEL.X::ZEL.X.p", or the irregular form
    char const * description;            ///< "" for none
    OtherEnd otherEnd;
    Storage storage;
    /// Access of a single-valued property; null for a multi-valued one.
    Generic::PropertyToSequenceMethods const * single;
    /// Access of a multi-valued property, null for a single-valued one.
    Sequence<Object> (*many)(ImmutableClassObject const & object);
    Sequence<Object> (*manyWithoutAssociation)(ImmutableClassObject const & object);

    [[nodiscard]] bool isMany() const noexcept { return single == nullptr; }
};

} // namespace internal
} // namespace ZEL
