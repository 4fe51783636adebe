#include <ZEL/metamodel/ApplicationMetaModel.h>

namespace ZEL::internal {

ApplicationMetaModel::~ApplicationMetaModel() { leave(); }

void ApplicationMetaModel::enter() {
    if (fModel.isValid()) {
        return;
    }
    MetaModel const model = fBuilder.build();
    fBuilder.registerAll(model);
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
