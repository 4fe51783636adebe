#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace ZEL {

namespace internal {
struct ClassDescriptor;
struct PropertyDescriptor;

/// What the field of a state is asked for: one that few objects use is made for a write alone.
enum class FieldUse : std::uint8_t { Read, Write };
} // namespace internal

namespace NSInterface {

/// What all instances of metaclasses do alike: between `ClassObjectIntf` and the generated interfaces.
///
/// Bodies and states answer by it; a body finds the state to ask, a state is its own.
class ZEL_API ClassObjectOperations : public virtual ClassObjectIntf {
public:
    /// Pure, as those of all generated interfaces are: of an abstract class no compiler asks for what it takes to make or
    /// end an object of the class itself, which the libraries do not export.
    ~ClassObjectOperations() override = 0;

    static internal::ClassDescriptor const & descriptor() noexcept;
    static internal::PropertyDescriptor const & appliedStereotypeInstanceProperty() noexcept;
    static internal::PropertyDescriptor const & modelZELProperty() noexcept;
    static internal::PropertyDescriptor const & containerZELProperty() noexcept;
    static internal::PropertyDescriptor const & containeeZELProperty() noexcept;
    static internal::PropertyDescriptor const & rootModelProperty() noexcept;
    static internal::PropertyDescriptor const & idProperty() noexcept;
    static internal::PropertyDescriptor const & siidProperty() noexcept;

    [[nodiscard]] String toString(Deviant deviant) const override;
    Object fromString(Deviant deviant, String const & text) override;
    [[nodiscard]] ImmutableClass getMetaClass(Deviant deviant) const override;
    ClassObject clone(Deviant deviant, ClassObject const & target) override;
    [[nodiscard]] std::string internal_describe(Deviant deviant, WithoutClass orElse) const override;

    [[nodiscard]] Sequence<Object> get(Deviant deviant, ImmutableProperty const & property) override;
    [[nodiscard]] Sequence<Object> get(Deviant deviant, String const & name) override;
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(Deviant deviant,
                                                         ImmutableProperty const & property) const override;
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(Deviant deviant, String const & name) const override;
    [[nodiscard]] Object getOne(Deviant deviant, ImmutableProperty const & property) override;
    [[nodiscard]] Object getOne(Deviant deviant, String const & name) override;
    [[nodiscard]] ImmutableObject getOne(Deviant deviant, ImmutableProperty const & property) const override;
    [[nodiscard]] ImmutableObject getOne(Deviant deviant, String const & name) const override;
    [[nodiscard]] Boolean has(Deviant deviant, ImmutableProperty const & property) const override;
    [[nodiscard]] Boolean has(Deviant deviant, String const & name) const override;
    void setOrAdd(Deviant deviant, ImmutableProperty const & property, Object const & value) override;
    void setOrAdd(Deviant deviant, String const & name, Object const & value) override;
    void setOrAddOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) override;
    void setOrAddOnly(Deviant deviant, String const & name, Object const & value) override;
    void remove(Deviant deviant, ImmutableProperty const & property, Object const & value) override;
    void remove(Deviant deviant, String const & name, Object const & value) override;
    void removeOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) override;
    void removeOnly(Deviant deviant, String const & name, Object const & value) override;
    void removeOne(Deviant deviant, ImmutableProperty const & property) override;
    void removeOne(Deviant deviant, String const & name) override;
    void removeOneOnly(Deviant deviant, ImmutableProperty const & property) override;
    void removeOneOnly(Deviant deviant, String const & name) override;
    [[nodiscard]] Boolean hasId(Deviant deviant) const override;
    void removeId(Deviant deviant) override;
    void setId(Deviant deviant, Integer const & id) override;
    [[nodiscard]] Integer getId(Deviant deviant) const override;
    [[nodiscard]] Sequence<ClassObject> getContaineeZELs(Deviant deviant) const override;
    [[nodiscard]] Sequence<ClassObject> getContaineeZELsWithoutAssociation(Deviant deviant) const override;
    [[nodiscard]] Sequence<StereotypeObject> getAppliedStereotypeInstances(Deviant deviant) const override;
    [[nodiscard]] Sequence<StereotypeObject>
    getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const override;
    [[nodiscard]] Boolean hasModelZEL(Deviant deviant) const override;
    void removeModelZEL(Deviant deviant) override;
    void setModelZEL(Deviant deviant, Model const & model) override;
    [[nodiscard]] Model getModelZEL(Deviant deviant) const override;
    void removeOnlyModelZEL(Deviant deviant) override;
    void setOnlyModelZEL(Deviant deviant, Model const & model) override;
    [[nodiscard]] Boolean hasContainerZEL(Deviant deviant) const override;
    void removeContainerZEL(Deviant deviant) override;
    void setContainerZEL(Deviant deviant, ClassObject const & container) override;
    [[nodiscard]] ClassObject getContainerZEL(Deviant deviant) const override;
    void removeOnlyContainerZEL(Deviant deviant) override;
    void setOnlyContainerZEL(Deviant deviant, ClassObject const & container) override;
    [[nodiscard]] Boolean hasRootModel(Deviant deviant) const override;
    void removeRootModel(Deviant deviant) override;
    void setRootModel(Deviant deviant, Model const & model) override;
    [[nodiscard]] Model getRootModel(Deviant deviant) const override;
    void removeOnlyRootModel(Deviant deviant) override;
    void setOnlyRootModel(Deviant deviant, Model const & model) override;
    [[nodiscard]] Boolean hasSiid(Deviant deviant) const override;
    void removeSiid(Deviant deviant) override;
    void setSiid(Deviant deviant, String const & siid) override;
    [[nodiscard]] String getSiid(Deviant deviant) const override;
};

inline ClassObjectOperations::~ClassObjectOperations() = default;

} // namespace NSInterface

namespace internal {

/// Between the two parts of an object's siid.
inline constexpr char kSiidSeparator = '_';
/// The siid of the object with this number in a model: the model's own, the separator and the number.
[[nodiscard]] ZEL_API std::string siidOf(std::string const & siidOfModel, std::int32_t number);

/// The registered name of the handles on objects of the class.
[[nodiscard]] ZEL_API char const * orcaNameOf(ClassDescriptor const & of, bool immutable) noexcept;

/// What is known of the class of the interface `I`.
template <class I> [[nodiscard]] ClassDescriptor const & descriptorOf() noexcept {
    if constexpr (std::is_same_v<I, NSInterface::ClassObjectIntf>) {
        return NSInterface::ClassObjectOperations::descriptor();
    } else {
        return I::descriptor();
    }
}

} // namespace internal
} // namespace ZEL
