// Superclasses and other generals are the far ends of generalizations.

#include "OwnFactory.h"

#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/sequences/ForwardingSequence.h>
#include <ZEL/sequences/GenericFilteredSequence.h>
#include <ZEL/sequences/SequenceBuilder.h>

#include <uml/Class.h>
#include <uml/ClassIntf.h>
#include <uml/Classifier.h>
#include <uml/ClassifierIntf.h>
#include <uml/Generalization.h>

#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

namespace uml::NSInterface {

namespace {

using ZEL::Deviant;
using ZEL::CooperativeVisitor::internal::ClassInfo;
using ZEL::Generic::IteratorIntf;
using ZEL::Generic::IteratorPtr;
using ZEL::Generic::Ref;
using ZEL::Generic::SequenceHandle;
using ZEL::Generic::filtered_sequence_internal::GenericFilter;
using ZEL::Generic::filtered_sequence_internal::GenericFilteredSequence;

/// The far end of a generalization if it is of the class.
Ref generalOf(Generalization const & generalization, ClassInfo const & shown) {
    Classifier const general = generalization.getGeneral();
    bool const isShown = general.isValid() && general.getImplementation()->cast(shown) != nullptr;
    return isShown ? Ref::ofBody(general.getImplementation(), generalization.getDeviant()) : Ref();
}

Ref generalOf(Ref const & stored, ClassInfo const & shown) {
    return generalOf(Generalization(ZEL::Object(stored.body(), stored.getDeviant())), shown);
}

Generalization generalizationTo(Classifier const & owner, Ref const & general) {
    for (Generalization const & generalization : owner.getGeneralizations()) {
        if (generalization.getGeneral().getImplementationWithoutAssert() == general.body()) {
            return generalization;
        }
    }
    return Generalization();
}

/// Shows the generals of a classifier that are of a class. What is added gets a generalization, and the generalization
/// to what is taken away is destroyed. A general that is there already is not taken a second time.
class GeneralSequence final : public ZEL::Generic::ForwardingSequence {
public:
    GeneralSequence(Classifier const & owner, ClassInfo const & shown)
        : ForwardingSequence(viewOf(owner, shown)), fOwner(owner), fShown(shown) {}

    void generic_clear(Deviant deviant) override {
        for (int i = generic_size(deviant); i > 0; --i) {
            generic_erase(deviant, i - 1);
        }
    }
    IteratorPtr generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override {
        int const index = indexOf(deviant, where);
        generic_insert(deviant, index, std::move(element));
        return generic_iteratorAt(deviant, index);
    }
    void generic_insert(Deviant deviant, int index, Ref element) override {
        Classifier const general = accepted(element);
        auto const generalizations = ownerIn(deviant).getGeneralizations();
        int const place = index == generic_size(deviant) ? generalizations.size() : placeOf(deviant, index);
        if (!generic_contains(deviant, element)) {
            Generalization const made = internal::factoryBeside(ownerIn(deviant)).createGeneralization();
            made.setGeneral(general);
            generalizations.insert(place, made);
        }
    }
    void generic_erase(Deviant deviant, int index) override { at(deviant, index).destroy(); }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * first, IteratorIntf const * last) override {
        int const begin = indexOf(deviant, first);
        for (int i = indexOf(deviant, last); i > begin; --i) {
            generic_erase(deviant, i - 1);
        }
        return generic_iteratorAt(deviant, begin);
    }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * where) override {
        int const index = indexOf(deviant, where);
        generic_erase(deviant, index);
        return generic_iteratorAt(deviant, index);
    }
    void generic_pop_back(Deviant deviant) override { generic_erase(deviant, generic_size(deviant) - 1); }
    void generic_pop_front(Deviant deviant) override { generic_erase(deviant, 0); }
    void generic_push_back(Deviant deviant, Ref element) override {
        generic_insert(deviant, generic_size(deviant), std::move(element));
    }
    void generic_push_front(Deviant deviant, Ref element) override { generic_insert(deviant, 0, std::move(element)); }
    void generic_replace(Deviant deviant, int index, Ref element) override {
        Classifier const general = accepted(element);
        Generalization const generalization = at(deviant, index);
        if (!generic_contains(deviant, element)) {
            generalization.setGeneral(general);
        }
    }
    [[nodiscard]] char const * generic_getOrcaName(bool, bool, char const * fallback) const override {
        return fallback;
    }
    bool generic_eraseElement(Deviant deviant, Ref element) override {
        Generalization const generalization = generalizationTo(ownerIn(deviant), element);
        if (generalization.isValid()) {
            generalization.destroy();
        }
        return generalization.getImplementationWithoutAssert() != nullptr;
    }
    [[nodiscard]] bool generic_accepts(Deviant, Ref const & element) const override {
        return element.body() != nullptr && element.body()->cast(fShown) != nullptr;
    }

private:
    static SequenceHandle viewOf(Classifier const & owner, ClassInfo const & shown) {
        GenericFilter const filter = ZEL::Generic::filtered_sequence_internal::makeFilter(
            false, [&shown](Ref const & stored) { return generalOf(stored, shown); },
            [owner](Ref const & general) {
                return Ref::ofBody(generalizationTo(owner, general).getImplementationWithoutAssert(),
                                   owner.getDeviant());
            });
        return SequenceHandle(std::make_unique<GenericFilteredSequence>(owner.getGeneralizations(), filter),
                              owner.getDeviant());
    }

    [[nodiscard]] Classifier ownerIn(Deviant deviant) const { return Classifier(fOwner.getImplementation(), deviant); }

    [[nodiscard]] Classifier accepted(Ref const & element) const {
        if (!generic_accepts(element.getDeviant(), element)) {
            ZEL::raiseAnInternalError();
        }
        return Classifier(ZEL::Object(element.body(), element.getDeviant()));
    }

    /// The place of the generalization to the general at `index`.
    [[nodiscard]] int placeOf(Deviant deviant, int index) const {
        int place = 0;
        for (Generalization const & generalization : ownerIn(deviant).getGeneralizations()) {
            if (!generalOf(generalization, fShown).isNull() && index-- == 0) {
                return place;
            }
            ++place;
        }
        ZEL::raiseAnInternalError();
    }
    [[nodiscard]] Generalization at(Deviant deviant, int index) const {
        return ownerIn(deviant).getGeneralizations().at(placeOf(deviant, index));
    }
    [[nodiscard]] int indexOf(Deviant deviant, IteratorIntf const * where) const {
        int index = 0;
        for (IteratorPtr i = generic_begin(deviant); !i->equal(where); i->next(deviant)) {
            if (++index > generic_size(deviant)) {
                ZEL::raiseAnInternalError();
            }
        }
        return index;
    }

    Classifier fOwner;
    ClassInfo const & fShown;
};

template <class T> ZEL::Sequence<T> generalsOf(ClassifierIntf const & owner, Deviant deviant) {
    Classifier const handle(const_cast<ClassifierIntf *>(&owner), deviant);
    auto view = std::make_unique<GeneralSequence>(handle, T::BodyInterface::classInfo());
    return ZEL::Sequence<T>(std::move(view), deviant);
}

} // namespace

// --- generals --------------------------------------------------------------------------------------------------------

ZEL::Sequence<Classifier> ClassifierIntf::getClassifierGenerals(Deviant deviant) const {
    return generalsOf<Classifier>(*this, deviant);
}

ZEL::Sequence<Classifier> ClassifierIntf::getClassifierGeneralsWithoutAssociation(Deviant deviant) const {
    return generalsOf<Classifier>(*this, deviant);
}

Classifier ClassifierIntf::getClassifierGeneralByName(Deviant deviant, ZEL::String const & name) {
    return ZEL::internal::firstNamed<Classifier>(getClassifierGenerals(deviant), name);
}

ImmutableClassifier ClassifierIntf::getClassifierGeneralByName(Deviant deviant, ZEL::String const & name) const {
    return ZEL::internal::firstNamed<ImmutableClassifier>(getClassifierGenerals(deviant), name);
}

// --- superclasses ----------------------------------------------------------------------------------------------------

ZEL::Sequence<Class> ClassIntf::getClassSuperClasses(Deviant deviant) const {
    return generalsOf<Class>(*this, deviant);
}

ZEL::Sequence<Class> ClassIntf::getClassSuperClassesWithoutAssociation(Deviant deviant) const {
    return generalsOf<Class>(*this, deviant);
}

Class ClassIntf::getClassSuperClassByName(Deviant deviant, ZEL::String const & name) {
    return ZEL::internal::firstNamed<Class>(getClassSuperClasses(deviant), name);
}

ImmutableClass ClassIntf::getClassSuperClassByName(Deviant deviant, ZEL::String const & name) const {
    return ZEL::internal::firstNamed<ImmutableClass>(getClassSuperClasses(deviant), name);
}

// --- subclasses: of them, a class knows nothing ----------------------------------------------------------------------

ZEL::Sequence<Class> ClassIntf::getClassSubClasses(Deviant deviant) const {
    ZEL::Sequence<Class> const found = ZEL::Generic::SequenceBuilder{deviant}.create<Class>();
    ZEL::Model const model = getModelZEL(deviant);
    std::vector<ZEL::ClassObject> open = model.getUnparented().toVector();
    open.emplace_back(model);
    std::unordered_set<void const *> seen;
    while (!open.empty()) {
        ZEL::ClassObject const object = std::move(open.back());
        open.pop_back();
        // Containments of a deviant and of the root can have combined to a ring.
        if (!seen.insert(object.getImplementation()).second) {
            continue;
        }
        if (Class const candidate(object); candidate.isValid()) {
            if (generalizationTo(candidate, Ref::ofBody(const_cast<ClassIntf *>(this), deviant)).isValid()) {
                found.push_back(candidate);
            }
        }
        std::vector<ZEL::ClassObject> const contents = object.getContaineeZELs().toVector();
        open.insert(open.end(), contents.rbegin(), contents.rend());
    }
    return found;
}

ZEL::Sequence<Class> ClassIntf::getClassSubClassesWithoutAssociation(Deviant deviant) const {
    return getClassSubClasses(deviant);
}

Class ClassIntf::getClassSubClassByName(Deviant deviant, ZEL::String const & name) {
    return ZEL::internal::firstNamed<Class>(getClassSubClasses(deviant), name);
}

ImmutableClass ClassIntf::getClassSubClassByName(Deviant deviant, ZEL::String const & name) const {
    return ZEL::internal::firstNamed<ImmutableClass>(getClassSubClasses(deviant), name);
}

} // namespace uml::NSInterface
