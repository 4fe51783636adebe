// What is well-formed among classifiers, their features and relationships, and in packages.

#include "Constraints.h"

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/Association.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Constraint.h>
#include <ZEL/metamodel/Element.h>
#include <ZEL/metamodel/Feature.h>
#include <ZEL/metamodel/PackageableElement.h>
#include <ZEL/metamodel/Parameter.h>
#include <ZEL/metamodel/ParameterDirectionKind.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/StructuralFeature.h>
#include <ZEL/metamodel/VisibilityKind.h>
#include <ZEL/sequences/Sequence.h>

#include <uml/Actor.h>
#include <uml/AggregationKind.h>
#include <uml/Association.h>
#include <uml/AssociationIntf.h>
#include <uml/Class.h>
#include <uml/ClassifierIntf.h>
#include <uml/Component.h>
#include <uml/ConstraintIntf.h>
#include <uml/ElementImportIntf.h>
#include <uml/Generalization.h>
#include <uml/GeneralizationSet.h>
#include <uml/GeneralizationSetIntf.h>
#include <uml/InstanceSpecificationIntf.h>
#include <uml/InterfaceIntf.h>
#include <uml/OpaqueExpressionIntf.h>
#include <uml/OperationIntf.h>
#include <uml/PackageImportIntf.h>
#include <uml/PackageIntf.h>
#include <uml/ParameterIntf.h>
#include <uml/Property.h>
#include <uml/PropertyIntf.h>
#include <uml/Slot.h>
#include <uml/TemplateBindingIntf.h>
#include <uml/TemplateParameter.h>
#include <uml/TemplateParameterSubstitution.h>
#include <uml/TemplateSignature.h>
#include <uml/UseCase.h>

#include <algorithm>
#include <unordered_set>

namespace uml {

namespace internal {

std::vector<Classifier> allGenerals(Classifier const & classifier) {
    std::vector<Classifier> found;
    std::unordered_set<void const *> seen;
    auto const enter = [&](Classifier const & specific) {
        for (Generalization const & generalization : specific.getGeneralizations()) {
            Classifier const general = generalization.getGeneral();
            if (general.isValid() && seen.insert(general.getImplementation()).second) {
                found.push_back(general);
            }
        }
    };
    enter(classifier);
    for (std::size_t next = 0; next < found.size(); ++next) { // it grows meanwhile
        Classifier const general = found[next];
        enter(general);
    }
    return found;
}

bool conforms(ZEL::Type const & type, ZEL::Type const & other) {
    if (type == other) {
        return true;
    }
    Classifier const classifier(type);
    std::vector<Classifier> const generals = classifier.isValid() ? allGenerals(classifier) : std::vector<Classifier>();
    return std::any_of(generals.begin(), generals.end(),
                       [&other](Classifier const & general) { return ZEL::Type(general) == other; });
}

} // namespace internal

namespace NSInterface {

namespace {

using internal::allGenerals;
using internal::allOf;
using internal::conforms;
using internal::countOf;
using ZEL::Deviant;
using ZEL::ParameterDirectionKind;
using ZEL::VisibilityKind;

template <class Handle, class Intf> Handle handleOf(Intf const & self, Deviant deviant) {
    return Handle(const_cast<Intf *>(&self), deviant);
}

bool contains(std::vector<Classifier> const & classifiers, ZEL::Type const & type) {
    return std::any_of(classifiers.begin(), classifiers.end(),
                       [&type](Classifier const & classifier) { return ZEL::Type(classifier) == type; });
}

AggregationKind aggregationOf(ZEL::Property const & property) {
    Property const end(property);
    return end.isValid() ? end.getAggregation() : AggregationKind(AggregationKind::None);
}

/// The one other end of an association of two; an invalid handle if there is none.
ZEL::Property otherEndOf(ZEL::Property const & end) {
    ZEL::Association const association = end.isValid() ? end.getAssociation() : ZEL::Association();
    if (association.isValid() && association.getMemberEnds().size() == 2) {
        for (ZEL::Property const & other : association.getMemberEnds()) {
            if (other != end) {
                return other;
            }
        }
    }
    return ZEL::Property();
}

bool isWithin(ZEL::UnlimitedNatural const & bound, ZEL::UnlimitedNatural const & limit) {
    return limit.isUnlimited() ||
           (!bound.isUnlimited() && static_cast<std::uint32_t>(bound) <= static_cast<std::uint32_t>(limit));
}

bool isPublicOrPrivate(VisibilityKind const & visibility) {
    return visibility == VisibilityKind::Public || visibility == VisibilityKind::Private;
}

} // namespace

// --- classifiers -----------------------------------------------------------------------------------------------------

bool ClassifierIntf::satisfiesSpecializeType(Deviant deviant) const {
    return allOf(getGeneralizations(deviant), [this](Generalization const & generalization) {
        Classifier const general = generalization.getGeneral();
        return !general.isValid() ||
               cast(general.getImplementation()->internal_body()->internal_descriptor().classInfo()) != nullptr;
    });
}

bool ClassifierIntf::satisfiesNonFinalParents(Deviant deviant) const {
    return allOf(getGeneralizations(deviant), [](Generalization const & generalization) {
        Classifier const general = generalization.getGeneral();
        return !general.isValid() || !general.isFinalSpecialization();
    });
}

bool ClassifierIntf::satisfiesMapsToGeneralizationSet(Deviant deviant) const {
    if (getPowertypeExtents(deviant).empty()) {
        return true;
    }
    Classifier const self = handleOf<Classifier>(*this, deviant);
    std::vector<Classifier> const generals = allGenerals(self);
    return allOf(getPowertypeExtents(deviant), [&](GeneralizationSet const & set) {
        return allOf(set.getGeneralizations(), [&](Generalization const & generalization) {
            Classifier const general = generalization.getGeneral();
            Classifier const specific = generalization.getSpecific();
            return !(general == self) && !(specific == self) && !contains(generals, specific) &&
                   !(general.isValid() && contains(allGenerals(general), self));
        });
    });
}

bool GeneralizationSetIntf::satisfiesGeneralizationSameClassifier(Deviant deviant) const {
    Classifier first;
    return allOf(getGeneralizations(deviant), [&first](Generalization const & generalization) {
        Classifier const general = generalization.getGeneral();
        if (!first.isValid() && general.isValid()) {
            first = general;
        }
        return !general.isValid() || general == first;
    });
}

bool InterfaceIntf::satisfiesVisibility(Deviant deviant) const {
    return allOf(getFeatures(deviant), [](ZEL::Feature const & feature) {
        return !feature.hasVisibility() || feature.getVisibility() == VisibilityKind::Public;
    });
}

bool InstanceSpecificationIntf::satisfiesDefiningFeature(Deviant deviant) const {
    std::vector<Classifier> owners;
    for (Classifier const & classifier : getClassifiers(deviant)) {
        owners.push_back(classifier);
        std::vector<Classifier> const generals = allGenerals(classifier);
        owners.insert(owners.end(), generals.begin(), generals.end());
    }
    return owners.empty() || allOf(getSlots(deviant), [&owners](Slot const & slot) {
               ZEL::StructuralFeature const feature = slot.getDefiningFeature();
               if (!feature.isValid()) {
                   return true;
               }
               // An end that an association owns is a feature of the classifier at the other end.
               ZEL::Property const otherEnd = otherEndOf(ZEL::Property(feature));
               return contains(owners, ZEL::Type(feature.getContainerZEL())) ||
                      (otherEnd.isValid() && contains(owners, otherEnd.getType()));
           });
}

bool InstanceSpecificationIntf::satisfiesStructuralFeature(Deviant deviant) const {
    std::unordered_set<void const *> features;
    return allOf(getSlots(deviant), [&features](Slot const & slot) {
        ZEL::StructuralFeature const feature = slot.getDefiningFeature();
        return !feature.isValid() || features.insert(feature.getImplementation()).second;
    });
}

// --- associations ----------------------------------------------------------------------------------------------------

bool AssociationIntf::satisfiesAssociationEnds(Deviant deviant) const {
    return getMemberEnds(deviant).size() <= 2 || getOwnedEnds(deviant).size() == getMemberEnds(deviant).size();
}

bool AssociationIntf::satisfiesBinaryAssociations(Deviant deviant) const {
    int const aggregating = countOf(
        getMemberEnds(deviant), [](ZEL::Property const & end) { return aggregationOf(end) != AggregationKind::None; });
    return aggregating == 0 || (aggregating == 1 && getMemberEnds(deviant).size() == 2);
}

bool AssociationIntf::satisfiesEndsMustBeTyped(Deviant deviant) const {
    return allOf(getMemberEnds(deviant), [](ZEL::Property const & end) {
        return end.getType().isValid() || internal::hasUnknownTarget(end, "type");
    });
}

bool AssociationIntf::satisfiesSpecializedEndNumber(Deviant deviant) const {
    int const ends = getMemberEnds(deviant).size();
    return allOf(getGeneralizations(deviant), [ends](Generalization const & generalization) {
        Association const general(generalization.getGeneral<Classifier>());
        return !general.isValid() || general.getMemberEnds().size() == ends;
    });
}

bool AssociationIntf::satisfiesSpecializedEndTypes(Deviant deviant) const {
    auto const ends = getMemberEnds(deviant);
    return allOf(getGeneralizations(deviant), [&ends](Generalization const & generalization) {
        Association const general(generalization.getGeneral<Classifier>());
        if (!general.isValid() || general.getMemberEnds().size() != ends.size()) {
            return true;
        }
        for (int i = 0; i < ends.size(); ++i) {
            ZEL::Type const type = ends.at(i).getType();
            ZEL::Type const expected = general.getMemberEnds().at(i).getType();
            if (type.isValid() && expected.isValid() && !conforms(type, expected)) {
                return false;
            }
        }
        return true;
    });
}

bool AssociationIntf::satisfiesAssociations(Deviant deviant) const {
    int const actors =
        countOf(getMemberEnds(deviant), [](ZEL::Property const & end) { return Actor(end.getType()).isValid(); });
    if (actors == 0) {
        return true;
    }
    return getMemberEnds(deviant).size() == 2 && allOf(getMemberEnds(deviant), [](ZEL::Property const & end) {
               ZEL::Type const type = end.getType();
               return !type.isValid() || Actor(type).isValid() || UseCase(type).isValid() || Class(type).isValid();
           });
}

bool AssociationIntf::satisfiesNoAssociationToUseCase(Deviant deviant) const {
    std::unordered_set<void const *> subjects;
    return allOf(getMemberEnds(deviant), [&subjects](ZEL::Property const & end) {
        UseCase const useCase(end.getType());
        return !useCase.isValid() || allOf(useCase.getSubjects(), [&subjects](Classifier const & subject) {
            return subjects.insert(subject.getImplementation()).second;
        });
    });
}

// --- properties, operations and parameters ---------------------------------------------------------------------------

bool PropertyIntf::satisfiesMultiplicityOfComposite(Deviant deviant) const {
    if (getAggregation(deviant) != AggregationKind::Composite) {
        return true;
    }
    ZEL::Property const other = otherEndOf(handleOf<Property>(*this, deviant));
    return !other.isValid() || isWithin(other.getUpper(), ZEL::UnlimitedNatural(1U));
}

bool PropertyIntf::satisfiesSubsettedPropertyNames(Deviant deviant) const {
    return allOf(getSubsettedProperties(deviant), [&](ZEL::Property const & subsetted) {
        return getName(deviant).empty() || subsetted.getName() != getName(deviant);
    });
}

bool PropertyIntf::satisfiesSubsettingRules(Deviant deviant) const {
    return allOf(getSubsettedProperties(deviant), [&](ZEL::Property const & subsetted) {
        ZEL::Type const type = getType(deviant);
        ZEL::Type const expected = subsetted.getType();
        return (!type.isValid() || !expected.isValid() || conforms(type, expected)) &&
               isWithin(getUpper(deviant), subsetted.getUpper());
    });
}

bool PropertyIntf::satisfiesDerivedUnionIsDerived(Deviant deviant) const {
    return !isDerivedUnion(deviant) || isDerived(deviant);
}

bool PropertyIntf::satisfiesDerivedUnionIsReadOnly(Deviant deviant) const {
    return !isDerivedUnion(deviant) || isReadOnly(deviant);
}

bool PropertyIntf::satisfiesQualifiedIsAssociationEnd(Deviant deviant) const {
    return getQualifiers(deviant).empty() || hasAssociation(deviant) ||
           internal::hasUnknownTarget(handleOf<Property>(*this, deviant), "association");
}

bool OperationIntf::satisfiesAtMostOneReturn(Deviant deviant) const {
    return countOf(getOwnedParameters(deviant), [](ZEL::Parameter const & parameter) {
               return parameter.getDirection() == ParameterDirectionKind::Return;
           }) <= 1;
}

bool OperationIntf::satisfiesOnlyBodyForQuery(Deviant deviant) const {
    return isQuery(deviant) || !getBodyCondition(deviant).isValid();
}

bool ParameterIntf::satisfiesNotException(Deviant deviant) const {
    ParameterDirectionKind const direction = getDirection(deviant);
    return !isException(deviant) ||
           (direction != ParameterDirectionKind::In && direction != ParameterDirectionKind::Inout);
}

bool ParameterIntf::satisfiesStreamAndException(Deviant deviant) const {
    return !isException(deviant) || !isStream(deviant);
}

// --- packages, constraints, values, templates ------------------------------------------------------------------------

bool PackageIntf::satisfiesElementsPublicOrPrivate(Deviant deviant) const {
    return allOf(getPackagedElements(deviant), [](ZEL::PackageableElement const & element) {
        return !element.hasVisibility() || isPublicOrPrivate(element.getVisibility());
    });
}

bool PackageImportIntf::satisfiesPublicOrPrivate(Deviant deviant) const {
    return isPublicOrPrivate(getVisibility(deviant));
}

bool ElementImportIntf::satisfiesVisibilityPublicOrPrivate(Deviant deviant) const {
    return isPublicOrPrivate(getVisibility(deviant));
}

bool ConstraintIntf::satisfiesNotApplyToSelf(Deviant deviant) const {
    return allOf(getConstrainedElements(deviant), [this](ZEL::Element const & element) {
        return element.getImplementation()->internal_body() != internal_body();
    });
}

bool OpaqueExpressionIntf::satisfiesLanguageBodySize(Deviant deviant) const {
    int const languages = getLanguages(deviant).size();
    return languages == 0 || languages == getBodies(deviant).size();
}

bool TemplateBindingIntf::satisfiesParameterSubstitutionFormal(Deviant deviant) const {
    TemplateSignature const signature = getSignature(deviant);
    return !signature.isValid() ||
           allOf(getParameterSubstitutions(deviant), [&signature](TemplateParameterSubstitution const & substitution) {
               TemplateParameter const formal = substitution.getFormal();
               return !formal.isValid() || signature.getParameters<ZEL::Sequence<TemplateParameter>>().contains(formal);
           });
}

} // namespace NSInterface

} // namespace uml
