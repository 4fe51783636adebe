#include <ZEL/metamodel/ApplicationMetaModel.h>

namespace ZEL::internal {

ApplicationMetaModel::~ApplicationMetaModel() { leave(); }

void ApplicationMetaModel::enter() {
    if (fModel.isValid()) {
        return;
    }
    MetaModel const model = fBuilder.build();
    try {
        fBuilder.registerAll(model);
    } catch (...) {
        fBuilder.unregisterAll();
        fBuilder.tearDown(model);
        throw;
    }
    fModel = model;
}

void ApplicationMetaModel::leave() {
    if (!fModel.isValid()) {
        return;
    }
    fBuilder.unregisterAll();
    fBuilder.tearDown(fModel);
    fModel = MetaModel();
}

} // namespace ZEL::internal
