#include "Look.h"

#include <ZEL/metamodel/Property.h>
#include <ZEL/tools/ObjectsIn.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <map>

namespace tour {
namespace {

std::string textOf(ZEL::ImmutableObject const & value) {
    ZEL::ImmutableValueObject const data(value);
    return data.isValid() ? data.toString().str() : ZEL::ImmutableClassObject(value).getSiid().str();
}

std::string lineOf(ZEL::ImmutableClassObject const & object) {
    ZEL::ImmutableClassObject const container = object.getContainerZEL();
    std::string line = object.getSiid().str() + ' ' + object.getMetaClass().getName().str() + " in " +
                       (container.isValid() ? container.getSiid().str() : "nothing");
    for (ZEL::ImmutableProperty const & property : object.getMetaClass().getOwnedAttributes()) {
        if (property.isDerived()) {
            continue;
        }
        line += ", " + property.getName().str() + " =";
        for (ZEL::ImmutableObject const & value : object.get(property)) {
            line += ' ' + textOf(value);
        }
    }
    return line;
}

} // namespace

std::vector<ZEL::Class> classesOf(ZEL::MetaModel const & model) {
    std::vector<ZEL::Class> found;
    for (ZEL::ImmutableClassObject const & object : ZEL::objectsIn(model)) {
        // The way from a handle for reading to one for writing is the number of the object.
        ZEL::Class const candidate(model.getObjectById(object.getId()));
        if (object != model && candidate.isValid() && !candidate.getOwnedAttributes().empty()) {
            found.push_back(candidate);
        }
    }
    return found;
}

std::vector<std::string> snapshotOf(ZEL::ImmutableModel const & model) {
    std::vector<std::string> lines;
    for (ZEL::ImmutableClassObject const & object : ZEL::objectsIn(model)) {
        lines.push_back(lineOf(object));
    }
    return lines;
}

std::string censusOf(ZEL::ImmutableModel const & model) {
    std::map<std::string, int> counts;
    for (ZEL::ImmutableClassObject const & object : ZEL::objectsIn(model)) {
        ++counts[object.getMetaClass().getName().str()];
    }
    std::vector<std::pair<std::string, int>> sorted(counts.begin(), counts.end());
    std::stable_sort(sorted.begin(), sorted.end(), [](auto const & a, auto const & b) { return a.second > b.second; });
    std::string text;
    for (std::size_t i = 0; i < sorted.size() && i < 6; ++i) {
        text += (i == 0 ? "" : ", ") + std::to_string(sorted[i].second) + ' ' + sorted[i].first;
    }
    return text + (sorted.size() > 6 ? ", ..." : "");
}

} // namespace tour
