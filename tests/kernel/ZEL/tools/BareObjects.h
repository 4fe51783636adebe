#pragma once

#include <ZEL/String.h>
#include <ZEL/base/ReferenceCountingImpl.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/metamodel/TypeIntf.h>

#include <memory>

namespace ZEL::tests {

/// An object of which nothing is known but what a test says: its type, and no class. It goes with its handles.
class BareObject final : public virtual NSInterface::ClassObjectOperations, public ReferenceCountingImpl {
public:
    explicit BareObject(ImmutableType const & type) : fType(type) {}
    [[nodiscard]] static ClassObject make(ImmutableType const & type = ImmutableType()) {
        return ClassObject(std::make_unique<BareObject>(type).release(), Deviant());
    }

    [[nodiscard]] bool deviant_isValid(Deviant) const override { return true; }
    [[nodiscard]] NSInterface::SeenObject internal_metaType(Deviant) const override {
        return {fType.getImplementationWithoutAssert(), fType.getDeviant()};
    }
    [[nodiscard]] void * cast(CooperativeVisitor::internal::ClassInfo const & info) const override {
        return CooperativeVisitor::internal::castTable<BareObject, NSInterface::ClassObjectIntf,
                                                       NSInterface::ObjectIntf>()
            .cast(info, const_cast<BareObject *>(this));
    }

private:
    ImmutableType fType;
};

/// A type with a name and without a class. It goes with its handles.
struct BareType final : virtual NSInterface::TypeIntf, ReferenceCountingImpl {
    [[nodiscard]] static Type make() { return Type(std::make_unique<BareType>().release(), Deviant()); }

    [[nodiscard]] bool deviant_isValid(Deviant) const override { return true; }
    [[nodiscard]] Boolean hasName(Deviant) const override { return Boolean(true); }
    void removeName(Deviant) override {}
    void setName(Deviant, String const &) override {}
    [[nodiscard]] String getName(Deviant) const override { return String("Bare"); }
    [[nodiscard]] Boolean hasVisibility(Deviant) const override { return Boolean(false); }
    void removeVisibility(Deviant) override {}
    void setVisibility(Deviant, VisibilityKind const &) override {}
    [[nodiscard]] VisibilityKind getVisibility(Deviant) const override { return VisibilityKind(); }
    [[nodiscard]] void * cast(CooperativeVisitor::internal::ClassInfo const & info) const override {
        return CooperativeVisitor::internal::castTable<BareType, NSInterface::TypeIntf, NSInterface::ClassObjectIntf,
                                                       NSInterface::ObjectIntf>()
            .cast(info, const_cast<BareType *>(this));
    }
};

} // namespace ZEL::tests
