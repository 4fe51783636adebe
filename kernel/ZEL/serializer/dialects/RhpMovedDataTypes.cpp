#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/RhpMovedDataTypes.h>

#include <algorithm>
#include <iterator>

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
    add(dataType);
}

void RhpMovedDataTypes::add(Context context) {
    if (context.isElement()) {
        fPath.push_back(context.getFirstValue());
        context.setDepth(fPath.size());
        if (!fLeftOut.has_value() && isLeftOut(context)) {
            fLeftOut = fPath.size();
        }
    }
    if (!fLeftOut.has_value()) {
        fContexts.addContext(std::move(context));
    }
}

void RhpMovedDataTypes::endElement(std::string const & id) {
    auto const found = std::find(fPath.rbegin(), fPath.rend(), id);
    if (found == fPath.rend()) {
        return;
    }
    fPath.erase(std::prev(found.base()), fPath.end());
    if (fLeftOut.has_value() && fPath.size() < *fLeftOut) {
        fLeftOut.reset();
    }
    if (fPath.empty()) {
        fTypes.insert_or_assign(*fKey, std::exchange(fContexts, {}));
        fKey.reset();
    }
}

void RhpMovedDataTypes::beginPart(std::optional<std::string> id) {
    fParts.push_back({std::move(id), fCurrent, false});
    fCurrent = fParts.size() - 1;
}

bool RhpMovedDataTypes::havePlace(std::set<std::string> const & droppedIds) const {
    std::vector<bool> isLeftOut(fParts.size());
    for (std::size_t i = 0; i < fParts.size(); ++i) {
        Part const & part = fParts[i];
        isLeftOut[i] = isLeftOut[part.around] || !part.id.has_value() || droppedIds.count(*part.id) != 0;
        if (part.hasPort && !isLeftOut[i]) {
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
