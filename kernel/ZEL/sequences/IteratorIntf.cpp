#include <ZEL/sequences/IteratorIntf.h>

namespace ZEL::Generic {

using namespace CooperativeVisitor::internal;

ClassInfo const & IteratorIntf::classInfo() {
    static ClassInfo const info = makeClassInfo<IteratorIntf, SequenceDomain>();
    return info;
}

MethodInfo IteratorIntf::getVisitMethod(VisitTable const & table) const {
    return castTable<IteratorIntf, IteratorIntf>().visitMethod(table, const_cast<IteratorIntf *>(this));
}

void * IteratorIntf::cast(ClassInfo const & info) const {
    return castTable<IteratorIntf, IteratorIntf>().cast(info, const_cast<IteratorIntf *>(this));
}

} // namespace ZEL::Generic
