#include <ZEL/compare/ClassPlan.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceIntf.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <utility>

namespace ZEL::Compare {
namespace {

using ZEL::internal::ClassDescriptor;
using ZEL::internal::ConstraintDescriptor;
using ZEL::internal::FieldDescriptor;
using ZEL::internal::PropertyDescriptor;
using ZEL::internal::Storage;

/// The class, then its superclasses, each once and at its first place from left to right.
void addLine(ClassDescriptor const & descriptor, std::vector<ClassDescriptor const *> & line) {
    if (std::find(line.begin(), line.end(), &descriptor) == line.end()) {
        line.push_back(&descriptor);
        for (ClassDescriptor const * const super : descriptor.superClasses) {
            addLine(*super, line);
        }
    }
}

bool inherits(ClassDescriptor const & descriptor, ClassDescriptor const & from) {
    std::vector<ClassDescriptor const *> line;
    addLine(descriptor, line);
    return std::find(line.begin(), line.end(), &from) != line.end();
}

/// Whether the values are the object's own to state: all that follows from elsewhere is left out.
bool isStated(PropertyView const & property) {
    return !property.isDerived && !property.isIdentity() && !property.isOfContainer && !property.isOfModel &&
           property.role != PropertyView::Role::Unparented;
}

/// The end that must lead back: one that is stored and is not the container of what it is on.
PropertyDescriptor const * oppositeOf(PropertyView const & property) {
    PropertyDescriptor const * const opposite =
        property.descriptor == nullptr ? nullptr : property.descriptor->opposite;
    return opposite != nullptr && !property.isComposite && !opposite->isComposite && opposite->storage == Storage::Field
               ? opposite
               : nullptr;
}

GeneralPlan generalsOf(MetaClassView const & view) {
    auto const stored = [&view](char const * name) {
        PropertyView const * const property = view.find(name);
        return property != nullptr && !property->isDerived && property->isMany && property->links != nullptr ? property
                                                                                                             : nullptr;
    };
    if (PropertyView const * const direct = stored("superClass")) {
        return {direct->links, nullptr, direct};
    }
    PropertyView const * const parts = stored("generalization");
    return parts != nullptr && parts->isComposite ? GeneralPlan{nullptr, parts->links, parts} : GeneralPlan();
}

} // namespace

ClassPlans::ClassPlans(Rules rules) : fRules(std::move(rules)) {
    for (std::size_t i = 0; i < fAsks.size(); ++i) {
        fAsks[i] = fRules.hasThoseOfMetamodels() && fRules.includes(standardRuleNames[i]);
    }
}

void ClassPlans::forgetOutdated() {
    std::size_t const forgotten = std::erase_if(
        fPlans, [](auto const & entry) { return entry.first->runtime->view() != entry.second->view.get(); });
    if (forgotten > 0) {
        fHasNamespaces.clear();
    }
    fLastClass = nullptr;
    fLast = nullptr;
}

ClassPlan & ClassPlans::find(ClassDescriptor const & descriptor) {
    std::unique_ptr<ClassPlan> & plan = fPlans[&descriptor];
    if (plan == nullptr) {
        plan = make(descriptor);
    }
    fLastClass = &descriptor;
    fLast = plan.get();
    return *plan;
}

std::unique_ptr<ClassPlan> ClassPlans::make(ClassDescriptor const & descriptor) {
    auto plan = std::make_unique<ClassPlan>();
    plan->view = MetaClassView::of(descriptor);
    plan->descriptor = &descriptor;
    addProperties(*plan);
    if (asks(StandardRule::GeneralizationCycle)) {
        plan->generals = generalsOf(*plan->view);
    }
    PropertyView const * const name = plan->view->find(PropertyView::Role::Name);
    plan->name = name != nullptr && name->value != nullptr ? name : nullptr;
    plan->names = namesOf(*plan);
    addRules(*plan);
    return plan;
}

void ClassPlans::addProperties(ClassPlan & plan) const {
    for (PropertyView const & view : plan.view->properties()) {
        if (!isStated(view) || view.descriptor == nullptr) {
            continue;
        }
        PropertyPlan property;
        property.view = &view;
        if (asks(StandardRule::Multiplicity)) {
            // What has a default has a value. A URI comes when something is published, so many do without for long.
            bool const mayLack = (view.hasDefault && !view.defaultText.empty()) || view.role == PropertyView::Role::Uri;
            property.lower = mayLack ? 0 : static_cast<std::uint32_t>(std::max(view.descriptor->lower, 0));
            property.upper = view.isMany ? view.descriptor->upper : PropertyPlan::kUnlimited;
        }
        property.areTargetsChecked = view.links != nullptr && !view.isComposite && asks(StandardRule::UnresolvedLink);
        property.opposite = asks(StandardRule::OppositeEnds) && view.links != nullptr ? oppositeOf(view) : nullptr;
        if (property.lower > 0 || property.upper != PropertyPlan::kUnlimited || property.areTargetsChecked ||
            property.opposite != nullptr) {
            plan.properties.push_back(property);
        }
    }
    for (FieldDescriptor const & field : plan.descriptor->fields) { // in the order in which objects list their parts
        std::vector<PropertyView> const & views = plan.view->properties();
        auto const part = std::find_if(views.begin(), views.end(),
                                       [&field](PropertyView const & view) { return view.links == &field; });
        if (part != views.end() && part->isComposite && isStated(*part)) {
            plan.parts.push_back(&*part);
        }
    }
}

void ClassPlans::addRules(ClassPlan & plan) const {
    std::vector<ClassDescriptor const *> line;
    addLine(*plan.descriptor, line);
    if (fRules.hasThoseOfMetamodels()) {
        for (ClassDescriptor const * const owner : line) {
            for (ConstraintDescriptor const & constraint : owner->constraints) {
                bool const isReplaced = std::any_of(line.begin(), line.end(), [&](ClassDescriptor const * other) {
                    return other != owner && inherits(*other, *owner) &&
                           std::any_of(other->constraints.begin(), other->constraints.end(),
                                       [&](ConstraintDescriptor const & same) {
                                           return std::string_view(same.name) == constraint.name;
                                       });
                });
                if (!isReplaced && fRules.includes(constraint.name)) {
                    plan.constraints.push_back(&constraint);
                }
            }
        }
    }
    for (auto const & rule : fRules.added()) {
        bool const isAsked = std::any_of(line.begin(), line.end(), [&rule](ClassDescriptor const * descriptor) {
            return rule->className == descriptor->orcaName;
        });
        if (isAsked && fRules.includes(rule->name)) {
            plan.added.push_back(rule.get());
        }
    }
}

ClassPlan::Names ClassPlans::namesOf(ClassPlan const & plan) {
    if (!asks(StandardRule::UniqueNames) || plan.parts.empty()) {
        return ClassPlan::Names::Ignored;
    }
    if (inherits(*plan.descriptor, NSInterface::NamespaceIntf::descriptor())) {
        return ClassPlan::Names::Together;
    }
    // A metamodel that has namespaces says with them where names count.
    bool const isElsewhere = hasNamespaces(plan.view->metaClass().getRootModel());
    return isElsewhere ? ClassPlan::Names::Ignored : ClassPlan::Names::ByProperty;
}

bool ClassPlans::hasNamespaces(ImmutableModel const & metamodel) {
    auto const [known, isNew] = fHasNamespaces.emplace(metamodel.getUri().str(), false);
    if (isNew) {
        std::vector<ImmutableClassObject> const objects = objectsIn(metamodel);
        known->second = std::any_of(objects.begin(), objects.end(), [](ImmutableClassObject const & object) {
            ClassDescriptor const * const described =
                ZEL::internal::ClassRuntime::described(object.getImplementation());
            return described != nullptr && inherits(*described, NSInterface::NamespaceIntf::descriptor());
        });
    }
    return known->second;
}

} // namespace ZEL::Compare
