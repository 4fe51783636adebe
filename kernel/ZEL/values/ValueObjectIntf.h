#pragma once

#include <ZEL/deviants/ObjectIntf.h>

#include <hasp_util/TypeInfo.h>
#include <hasp_util/any.h>

namespace ZEL {

class ImmutableDataType;

namespace NSInterface {

/// Interface of boxed values. Beside the reading of the value it takes no deviant: a value is the same in all of them.
class ZEL_API ValueObjectIntf : public virtual ObjectIntf {
public:
    static CooperativeVisitor::internal::ClassInfo const & classInfo();

    /// Valid as long as the object.
    [[nodiscard]] virtual HASP::any const & getAny() const = 0;
    [[nodiscard]] virtual HASP::TypeInfo getTypeInfo() const = 0;
    /// The metamodel's object for the value's type, null if none was registered when the value was boxed.
    template <class DataType = ImmutableDataType> [[nodiscard]] DataType getMetaDataType() const {
        return getMetaType<DataType>(Deviant());
    }
};

} // namespace NSInterface
} // namespace ZEL
