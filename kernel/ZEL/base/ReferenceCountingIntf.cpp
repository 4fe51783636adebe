#include <ZEL/base/ReferenceCountingIntf.h>

#include <orca_factory/BindingRegistry.h>

namespace ZEL {

namespace {

void (*listenerOfEnds)(ReferenceCountingIntf *) noexcept = nullptr;

} // namespace

ReferenceCountingIntf::~ReferenceCountingIntf() {
    orca::factory::basic::BindingRegistry::retract(this);
    if (listenerOfEnds != nullptr) {
        listenerOfEnds(this);
    }
}

void ReferenceCountingIntf::internal_tellOfEnds(void (*listener)(ReferenceCountingIntf *) noexcept) noexcept {
    listenerOfEnds = listener;
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
