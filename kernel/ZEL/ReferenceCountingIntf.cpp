#include <ZEL/DeviantRegistry.h>
#include <ZEL/ReferenceCountingIntf.h>

#include <orca_factory/BindingRegistry.h>

namespace ZEL {

ReferenceCountingIntf::~ReferenceCountingIntf() {
    orca::factory::basic::BindingRegistry::retract(this);
    DeviantRegistry::retract(this);
}

void ReferenceCountingIntf::incRef() {}

void ReferenceCountingIntf::decRef() {}

int ReferenceCountingIntf::numRef() { return 0; }

CooperativeVisitor::internal::MethodInfo
ReferenceCountingIntf::getVisitMethod(CooperativeVisitor::internal::VisitTable const &) const {
    return {};
}

void * ReferenceCountingIntf::cast(CooperativeVisitor::internal::ClassInfo const &) const { return nullptr; }

} // namespace ZEL
