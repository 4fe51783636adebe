#include <ZEL/compare/ComparedClass.h>
#include <ZEL/metamodel/Descriptors.h>

#include <string_view>

namespace ZEL::Compare {

ComparedClass::ComparedClass(internal::ClassDescriptor const & descriptor)
    : view(MetaClassView::of(descriptor)), name(view->find(PropertyView::Role::Name)) {
    using Role = PropertyView::Role;
    for (PropertyView const & property : view->properties()) {
        bool const isOfFile = view->isModel() && (property.role == Role::Uri || property.role == Role::Unparented);
        bool const isOfContainer =
            property.isContainer ||
            (property.descriptor != nullptr && property.descriptor->storage == internal::Storage::Container);
        if (property.isDerived || property.isIdentity() || isOfContainer || property.isOfModel || isOfFile) {
            continue;
        }
        (property.isDataType ? values : property.isComposite ? parts : links).push_back(&property);
    }
    if (name != nullptr && (name->value == nullptr || name->isDerived)) {
        name = nullptr;
    }
}

ComparedClass const & ComparedClasses::of(internal::ClassDescriptor const & descriptor) {
    if (fLastDescriptor != &descriptor) {
        std::unique_ptr<ComparedClass> & known = fClasses[&descriptor];
        if (known == nullptr) {
            known = std::make_unique<ComparedClass>(descriptor);
        }
        fLast = known.get();
        fLastDescriptor = &descriptor;
    }
    return *fLast;
}

std::vector<ObjectIntf *> targetsOf(PropertyView const & property, internal::BodyCore const & body, Deviant deviant) {
    std::vector<ObjectIntf *> targets;
    forEachTarget(property, body, deviant, [&targets](ObjectIntf * target) { targets.push_back(target); });
    return targets;
}

bool isTellingEnd(PropertyView const & property) {
    internal::PropertyDescriptor const * const own = property.descriptor;
    if (own == nullptr || own->otherEnd != internal::OtherEnd::Property ||
        own->opposite->storage != internal::Storage::Field) {
        return true;
    }
    internal::PropertyDescriptor const & other = *own->opposite;
    if (own->isMany() != other.isMany()) {
        return other.isMany();
    }
    if (own->owner == other.owner) {
        return own <= &other; // both stand in the list of the class
    }
    return std::string_view(own->owner->orcaName) < other.owner->orcaName;
}

} // namespace ZEL::Compare
