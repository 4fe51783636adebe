#include <ZEL/serializer/RhpMovedDataTypes.h>
#include <ZEL/serializer/XmiConstants.h>

namespace ZEL::Serializer {
namespace {

/// Stereotype instances are met where they are applied, and are not written there; nor are blocks of extensions.
bool isLeftOut(Context const & element) {
    return element.getRoleName() == "appliedStereotypeInstance" ||
           (element.getUri() == XmiConstants::XMI_NS_URI && element.getRoleName() == "Extension");
}

} // namespace

void RhpMovedDataTypes::beginType(Context const & dataType) {
    fKey = Key(dataType, dataType.getFirstValue());
    fContexts = ContextSequence(dataType);
    fPath = {dataType};
    fLeftOut.reset();
}

void RhpMovedDataTypes::add(Context const & context) {
    bool const isTaken = context.isElement() ? enterElement(context) : !fLeftOut.has_value();
    if (isTaken) {
        fContexts.addContext(context);
    }
}

bool RhpMovedDataTypes::enterElement(Context const & element) {
    while (fPath.size() > 1 && !fPath.back().isParentOf(element)) {
        fPath.pop_back();
    }
    if (fLeftOut.has_value() && fPath.size() < *fLeftOut) {
        fLeftOut.reset();
    }
    fPath.push_back(element);
    if (!fLeftOut.has_value() && isLeftOut(element)) {
        fLeftOut = fPath.size();
    }
    return !fLeftOut.has_value();
}

void RhpMovedDataTypes::endType() {
    if (fKey.has_value()) {
        fTypes.insert_or_assign(*fKey, std::move(fContexts));
        fKey.reset();
    }
    fContexts = ContextSequence();
    fPath.clear();
}

void RhpMovedDataTypes::beginComponent(std::string const & id) {
    fComponents.push_back({id, fCurrent, false});
    fCurrent = fComponents.size() - 1;
}

bool RhpMovedDataTypes::havePlace(std::set<std::string> const & droppedIds) const {
    std::vector<bool> isLeftOut(fComponents.size());
    for (std::size_t i = 0; i < fComponents.size(); ++i) {
        Component const & component = fComponents[i];
        isLeftOut[i] = isLeftOut[component.around] || droppedIds.count(component.id) != 0;
        if (component.hasPort && !isLeftOut[i]) {
            return true;
        }
    }
    return false;
}

ContextSequence RhpMovedDataTypes::all() const {
    ContextSequence result;
    for (auto const & [key, contexts] : fTypes) {
        result.append(contexts);
    }
    return result;
}

} // namespace ZEL::Serializer
