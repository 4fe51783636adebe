#pragma once

#include <ZEL/metamodel/PropertyDescriptor.h>

#include <utility>

namespace ZEL {

/// One property of one object, named at compile time: what the generated `P_()` operations return.
///
/// `Tag` names the property and the types of its values; `H` is the handle class of the object. A plain pair for
/// application code that treats properties alike without giving up their types. Every operation throws the NULL text on
/// a null handle.
template <class Tag, class H> class PropertyAndObject {
public:
    explicit PropertyAndObject(H object) : fObject(std::move(object)) {}

    [[nodiscard]] H const & getObject() const noexcept { return fObject; }
    [[nodiscard]] static internal::PropertyDescriptor const & descriptor() noexcept { return Tag::descriptor(); }
    [[nodiscard]] static char const * getName() noexcept { return Tag::descriptor().name; }
    /// The value, or the sequence of a multi-valued property.
    [[nodiscard]] auto get() const { return Tag::get(fObject); }
    [[nodiscard]] bool has() const { return Tag::has(fObject); }
    /// Sets the value, or appends to a multi-valued property.
    template <class V> void setOrAdd(V const & value) const { Tag::setOrAdd(fObject, value); }
    void remove() const requires requires(H const & object) { Tag::remove(object); }
    { Tag::remove(fObject); }

private:
    H fObject;
};

} // namespace ZEL
