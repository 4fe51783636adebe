#pragma once

#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/metamodel/ClassObjectOperations.h>

namespace ZEL::tests {

using CooperativeVisitor::internal::CastTable;
using CooperativeVisitor::internal::ClassInfo;
using CooperativeVisitor::internal::MethodInfo;
using CooperativeVisitor::internal::VisitTable;

template <class T> ClassInfo const & classInfoOf() {
    static auto const info = CooperativeVisitor::internal::makeClassInfo<T, NSInterface::ObjectDomain>();
    return info;
}

/// `Base`, cast to the `Interfaces` and visited by them, the nearest first.
template <class Self, class Base, class... Interfaces> class Castable : public Base {
public:
    [[nodiscard]] void * cast(ClassInfo const & info) const override { return casts().cast(info, self()); }
    [[nodiscard]] MethodInfo getVisitMethod(VisitTable const & table) const override {
        return casts().visitMethod(table, self());
    }

private:
    [[nodiscard]] Self * self() const { return const_cast<Self *>(static_cast<Self const *>(this)); }
    static CastTable const & casts() {
        return CooperativeVisitor::internal::castTable<Self, Interfaces..., NSInterface::ClassObjectIntf,
                                                       NSInterface::ObjectIntf>();
    }
};

} // namespace ZEL::tests
