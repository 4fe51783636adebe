#pragma once

#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/ObjectIntf.h>

#include <initializer_list>

/// What generated visitors are made of.
namespace ZEL::internal {

/// An operation of a visitor, and the class of the objects for which it is.
struct VisitEntry {
    CooperativeVisitor::internal::ClassInfo const & (*classInfo)();
    CooperativeVisitor::internal::VisitThunk thunk;
};

/// Calls `Operation` of a visitor with a handle on the object, which is the body of one.
template <class Visitor, class Handle, bool (Visitor::*Operation)(Handle)>
bool visitAs(void * visitor, void * object, Deviant deviant) {
    auto * const body = static_cast<typename Handle::BodyInterface *>(object);
    return (static_cast<Visitor *>(visitor)->*Operation)(Handle(body, deviant));
}

[[nodiscard]] ZEL_API CooperativeVisitor::DispatchTable visitTable(std::initializer_list<VisitEntry> entries);

/// Calls the operation for the object's class, or else for the first of its bases that has one; true if there is none.
ZEL_API bool visit(CooperativeVisitor::DispatchTable const & table, void * visitor, ObjectIntf const & object,
                   Deviant deviant);

} // namespace ZEL::internal
