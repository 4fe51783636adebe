#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>

namespace ZEL {

namespace NSInterface {
class ClassIntf;
class ObjectIntf;
} // namespace NSInterface

namespace internal {

class MetaClassView;
struct ClassDescriptor;

/// What is known of a metamodel class once its metamodel has been built: the `Class` object that describes it, and what
/// that says as long as it stays the same.
///
/// One per class, static, filled by the bootstrap and emptied before the metamodel dies. Holds no count: the metamodel
/// owns the bodies, and whoever destroys it clears these first.
class ZEL_API ClassRuntime {
public:
    [[nodiscard]] NSInterface::ClassIntf * metaClass() const noexcept { return fMetaClass; }
    [[nodiscard]] Deviant deviant() const noexcept { return fDeviant; }
    /// The one that `MetaClassView` keeps of the class, which sets it; null if it keeps none.
    [[nodiscard]] MetaClassView const * view() const noexcept { return fView; }
    void setView(MetaClassView const * view) noexcept { fView = view; }
    /// `descriptor` is that of the class.
    void bind(ClassDescriptor const & descriptor, NSInterface::ClassIntf * metaClass, Deviant deviant);
    void unbind() noexcept;
    /// The class that `metaClass` describes; null if it is no class of a metamodel that has been built.
    [[nodiscard]] static ClassDescriptor const * described(NSInterface::ObjectIntf const * metaClass) noexcept;

private:
    NSInterface::ClassIntf * fMetaClass = nullptr;
    Deviant fDeviant;
    MetaClassView const * fView = nullptr;
};

} // namespace internal
} // namespace ZEL
