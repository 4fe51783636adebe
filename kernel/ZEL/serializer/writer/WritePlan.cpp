#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/serializer/writer/WritePlan.h>

#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>

namespace ZEL::Serializer {

WritePlan::WritePlan(PropertyPartition const & thePartition, WrittenProperty const * stereotypeProperty,
                     HASP::XmlWriter & xml)
    : partition(thePartition) {
    auto const nameOf = [&xml](WrittenProperty const & property) {
        return xml.makeName(property.name, HASP::XmlConstants::NULL_NS_URI);
    };
    auto const fieldOf = [this](WrittenProperty const & property) {
        return property.owner == partition.view->descriptor() ? property.links : nullptr;
    };
    for (WrittenProperty const * const property : partition.singleValues) {
        if (property->role != internal::PropertyView::Role::Id) {
            bool const isOfState = property->owner == partition.view->descriptor();
            values.push_back({property, isOfState ? property->value : nullptr, nameOf(*property), {}});
        }
    }
    for (WrittenProperty const * const property : partition.references) {
        links.push_back({property, fieldOf(*property), nameOf(*property)});
    }
    otherContainments = partition.containments;
    for (WrittenProperty const * const property : partition.visitable) {
        if (!property->isPart()) {
            continue;
        }
        internal::FieldDescriptor const * const field = fieldOf(*property);
        bool const isContainment = std::erase(otherContainments, field) != 0;
        parts.push_back({property, field, nameOf(*property), isContainment});
    }
    if (stereotypeProperty != nullptr) {
        stereotypes = {stereotypeProperty, fieldOf(*stereotypeProperty), {}, true};
    }
}

} // namespace ZEL::Serializer
