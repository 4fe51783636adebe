#include <ZEL/metamodel/VisitorSupport.h>

namespace ZEL::internal {

CooperativeVisitor::DispatchTable visitTable(std::initializer_list<VisitEntry> entries) {
    CooperativeVisitor::DispatchTable table;
    for (VisitEntry const & entry : entries) {
        table.add(entry.classInfo(), entry.thunk);
    }
    return table;
}

bool visit(CooperativeVisitor::DispatchTable const & table, void * visitor, ObjectIntf const & object,
           Deviant deviant) {
    auto const found = object.getVisitMethod(table.table());
    return found.method == nullptr || found.method(visitor, found.object, deviant);
}

} // namespace ZEL::internal
