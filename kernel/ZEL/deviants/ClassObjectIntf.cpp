#include <ZEL/deviants/ClassObjectIntf.h>

namespace ZEL::NSInterface {

CooperativeVisitor::internal::ClassInfo const & ClassObjectIntf::classInfo() {
    static auto const info = CooperativeVisitor::internal::makeClassInfo<ClassObjectIntf, ObjectDomain>();
    return info;
}

} // namespace ZEL::NSInterface
