#include <ZEL/Deviant.h>
#include <ZEL/DeviantChecks.h>
#include <ZEL/DeviantManager.h>
#include <ZEL/metamodel/Model.h>

namespace ZEL {

Model Deviant::getModel() const {
    return Model(internal::requireDeviant(*this, "getModel on null deviant").manager->getModelIntf(), *this);
}

} // namespace ZEL
