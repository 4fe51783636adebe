#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>

namespace ZEL {

namespace NSInterface {
class ClassIntf;
class ObjectIntf;
} // namespace NSInterface

namespace internal {

struct ClassDescriptor;

/// What is known of a metamodel class once its metamodel has been built: the `Class` object that describes it.
///
/// One per class, static, filled by the bootstrap and emptied before the metamodel dies. Holds no count: the metamodel
/// owns the bodies, and whoever destroys it clears these first.
class ZEL_API ClassRuntime {
public:
    [[nodiscard]] NSInterface::ClassIntf * metaClass() const noexcept { return fMetaClass; }
    [[nodiscard]] Deviant deviant() const noexcept { return fDeviant; }
    /// `descriptor` is that of the class.
    void bind(ClassDescriptor const & descriptor, NSInterface::ClassIntf * metaClass, Deviant deviant);
    void unbind() noexcept;
    /// The class that `metaClass` describes; null if it is no class of a metamodel that has been built.
    [[nodiscard]] static ClassDescriptor const * described(NSInterface::ObjectIntf const * metaClass) noexcept;

private:
    NSInterface::ClassIntf * fMetaClass = nullptr;
    Deviant fDeviant;
};

} // namespace internal
} // namespace ZEL
