#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/serializer/reader/LinkedFiles.h>
#include <ZEL/serializer/reader/Links.h>
#include <ZEL/serializer/reader/ReadFile.h>
#include <ZEL/serializer/reader/ReadReport.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace ZEL::Serializer {
namespace {

ClassObject objectIn(FileLinks const & links, std::string_view id) {
    ClassObject const * const found = links.find(ObjectId(id));
    return found != nullptr && found->isValid() ? *found : ClassObject();
}

} // namespace

ReadFile::ReadFile(Model const & model, std::vector<Model> const & models, Links & links, LinkedFiles & files,
                   ReadReport & report)
    : fModel(model),
      fModels(models),
      fAllLinks(links),
      fLinks(links.of(model.getUri())),
      fFiles(files),
      fReport(report) {}

ClassObject ReadFile::find(std::string_view id) const { return objectIn(fLinks, id); }

ClassObject ReadFile::follow(std::string const & link) const {
    std::size_t const sign = link.find('#');
    if (sign == std::string::npos || sign == 0) {
        return find(std::string_view(link).substr(sign == 0 ? 1 : 0));
    }
    HASP::Uri const reference(link);
    std::optional<LinkedFiles::File> const file =
        reference.isValid() ? fFiles.find(reference, fLinks.uri()) : std::nullopt;
    FileLinks const * const links = file ? fAllLinks.find(file->uri) : nullptr;
    return links != nullptr ? objectIn(*links, std::string_view(link).substr(sign + 1)) : ClassObject();
}

void ReadFile::reportRejected(std::string const & label) { ++fReport.fRejectedValues[label]; }

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
