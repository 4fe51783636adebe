#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/serializer/reader/Links.h>
#include <ZEL/serializer/reader/ReadFile.h>
#include <ZEL/serializer/reader/ReadReport.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace ZEL::Serializer {

ClassObject ReadFile::find(std::string_view id) const {
    ClassObject const * const found = fLinks.find(ObjectId(id));
    return found != nullptr ? *found : ClassObject();
}

void ReadFile::enter(ClassObject const & object, std::string_view id) {
    fLinks.enter(ObjectId(id), object);
    noteFileId(object, ObjectId(id));
}

void ReadFile::setType(TypedElement const & element, Type const & type) {
    element.setType(type);
    Remainder remainder = remainderOf(element);
    auto const first = std::stable_partition(remainder.links.begin(), remainder.links.end(),
                                             [](Remainder::Link const & link) { return link.property != "type"; });
    auto const count = static_cast<std::size_t>(remainder.links.end() - first);
    if (count == 0) {
        return;
    }
    for (auto link = first; link != remainder.links.end(); ++link) {
        if (!link->content.empty()) {
            remainder.elements.push_back({std::move(link->content)}); // said of the link, which is no element any more
        }
    }
    remainder.links.erase(first, remainder.links.end());
    setRemainder(element, std::move(remainder));
    auto & reported = fReport.fUnresolvedReferences;
    auto const entry = reported.find(element.getMetaClass().getName().str() + ".type");
    if (entry != reported.end() && (entry->second -= std::min(entry->second, count)) == 0) {
        reported.erase(entry);
    }
}

} // namespace ZEL::Serializer
