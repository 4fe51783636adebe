#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ObjectIntf.h>

namespace ZEL::NSInterface {

CooperativeVisitor::internal::ClassInfo const & ObjectIntf::classInfo() {
    static auto const info = CooperativeVisitor::internal::makeClassInfo<ObjectIntf, ObjectDomain>();
    return info;
}

void ObjectIntf::internal_cloneReferences(Deviant, internal::CloneMap &) {}
void ObjectIntf::internal_cloneContents(Deviant, internal::CloneMap &) {}
void ObjectIntf::internal_unlinkForDestroy(Deviant) {}
void ObjectIntf::internal_destroyContents(Deviant) {}
void ObjectIntf::destroy(Deviant) {}
std::size_t ObjectIntf::getByteSize() const { return 0; }

bool ObjectIntf::deviant_isValid(Deviant) const { return false; }
void ObjectIntf::deviant_destroyState(ObjectIntf *) {}
void ObjectIntf::deviant_markModelDestroyed() {}
void ObjectIntf::deviant_commitTransientState(Deviant) {}
ObjectIntf * ObjectIntf::deviant_getCopyOfDeviation(Deviant) const { return nullptr; }
ObjectIntf * ObjectIntf::internal_getDeviation(Deviant) const { return nullptr; }
void ObjectIntf::internal_setDeviation(Deviant, ObjectIntf *) {}
ObjectIntf * ObjectIntf::internal_createDeviation(Deviant) { return nullptr; }
void ObjectIntf::internal_destroyDeviation(Deviant) {}
void ObjectIntf::internal_deviationAssign(Deviant, ObjectIntf *, Deviant) {}

char const * ObjectIntf::getOrcaName(bool) const { raiseInternalError("Internal Error"); }
SeenObject ObjectIntf::internal_metaType(Deviant) const {
    raiseUnimplemented("The Object.getMetaType operation is not yet implemented!");
}

ObjectIntf * ObjectIntf::getReadDeviant(Deviant) const { return nullptr; }
ObjectIntf * ObjectIntf::getWriteDeviant(Deviant) const { return nullptr; }

internal::BodyCore * ObjectIntf::internal_body() const noexcept { return nullptr; }
internal::StateCore * ObjectIntf::internal_state() const noexcept { return nullptr; }

} // namespace ZEL::NSInterface
