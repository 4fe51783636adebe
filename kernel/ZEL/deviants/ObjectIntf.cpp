#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ObjectIntf.h>

namespace ZEL::NSInterface {

CooperativeVisitor::internal::ClassInfo const & ObjectIntf::classInfo() {
    static auto const info = CooperativeVisitor::internal::makeClassInfo<ObjectIntf, ObjectDomain>();
    return info;
}

char const * ObjectIntf::getOrcaName(bool) const { raiseInternalError("Internal Error"); }

SeenObject ObjectIntf::internal_metaType(Deviant) const {
    raiseUnimplemented("The Object.getMetaType operation is not yet implemented!");
}

} // namespace ZEL::NSInterface
