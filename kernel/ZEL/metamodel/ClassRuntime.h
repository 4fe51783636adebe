#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ZEL {

class Class;
class ImmutableProperty;

namespace NSInterface {
class ClassIntf;
class PropertyIntf;
} // namespace NSInterface

namespace internal {

struct PropertyDescriptor;

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
