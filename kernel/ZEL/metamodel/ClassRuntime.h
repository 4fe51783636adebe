#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>

namespace ZEL {

namespace NSInterface {
class ClassIntf;
} // namespace NSInterface

namespace internal {

/// What is known of a metamodel class once its metamodel has been built: the `Class` object that describes it.
///
/// One per class, static, filled by the bootstrap and emptied before the metamodel dies. Holds no count: the metamodel
/// owns the bodies, and whoever destroys it clears these first.
class ZEL_API ClassRuntime {
public:
    [[nodiscard]] NSInterface::ClassIntf * metaClass() const noexcept { return fMetaClass; }
    [[nodiscard]] Deviant deviant() const noexcept { return fDeviant; }
    void bind(NSInterface::ClassIntf * metaClass, Deviant deviant) noexcept {
        fMetaClass = metaClass;
        fDeviant = deviant;
    }
    void unbind() noexcept { *this = ClassRuntime(); }

private:
    NSInterface::ClassIntf * fMetaClass = nullptr;
    Deviant fDeviant;
};

} // namespace internal
} // namespace ZEL
