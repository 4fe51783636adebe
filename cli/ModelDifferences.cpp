#include "ModelDifferences.h"

#include "Progress.h"

#include <ZEL/String.h>
#include <ZEL/compare/Sentence.h>
#include <ZEL/values/ValueObject.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace cli {
namespace {

using ZEL::Compare::Difference;

std::string kindOf(Difference::Kind kind) {
    using Kind = Difference::Kind;
    switch (kind) {
    case Kind::Added:
        return "added";
    case Kind::Removed:
        return "removed";
    case Kind::Moved:
        return "moved";
    case Kind::ValueChanged:
        return "valueChanged";
    case Kind::LinkChanged:
        return "linkChanged";
    case Kind::LinkAdded:
        return "linkAdded";
    case Kind::LinkRemoved:
        return "linkRemoved";
    case Kind::OrderChanged:
        return "orderChanged";
    case Kind::RemainderChanged:
        return "remainderChanged";
    }
    return {};
}

Json listOf(std::vector<ZEL::ImmutableObject> const & values) {
    Json list = Json::array();
    for (ZEL::ImmutableObject const & value : values) {
        ZEL::ImmutableValueObject const data(value);
        list.push_back(data.isValid() ? Json(data.toString().str()) : jsonOf(ZEL::ImmutableClassObject(value)));
    }
    return list;
}

} // namespace

ZEL::Compare::MatchSettings matchSettingsOf(OpenModel const & first, OpenModel const & second) {
    ZEL::Compare::MatchSettings settings;
    for (auto const & [ofFirst, ofSecond] : companionsOfBoth(first, second)) {
        settings.companions.emplace_back(ofFirst, ofSecond);
    }
    return settings;
}

ZEL::Compare::Differences differencesOf(OpenModel const & first, OpenModel const & second) {
    Progress const progress("comparing");
    return ZEL::Compare::diff(first.model, second.model, matchSettingsOf(first, second));
}

Json jsonOf(Difference const & difference) {
    bool const isNew = !difference.left.isValid();
    Json json{{"kind", kindOf(difference.kind)}, {"object", jsonOf(isNew ? difference.right : difference.left)}};
    if (!isNew && difference.right.isValid()) {
        if (Json after = jsonOf(difference.right); after != json["object"]) {
            json["objectAfter"] = std::move(after);
        }
    }
    if (difference.property.isValid()) {
        json["property"] = difference.property.getName().str();
    }
    if (!difference.before.empty() || !difference.after.empty()) {
        json["before"] = listOf(difference.before);
        json["after"] = listOf(difference.after);
    }
    json["text"] = sentenceOf(difference);
    return json;
}

} // namespace cli
