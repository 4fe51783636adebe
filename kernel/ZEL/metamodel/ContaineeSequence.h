#pragma once

#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/CompositeFields.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/sequences/ForwardingSequence.h>
#include <ZEL/sequences/GenericCombinedSequence.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/RefBase.h>

namespace ZEL::internal {

/// The objects in all composite properties of an object, with their container kept in step.
///
/// Loops read the fields of the state: a place is the number of a field and a position in it. Whatever else is asked
/// for, every write among it, is passed on to the combination of the properties' own sequences, which is made when it is
/// needed first.
class ContaineeSequence final : public Generic::ForwardingSequence {
public:
    class Iterator;

    /// The containees of the object, seen in the deviant. Throws what reading the object's state throws.
    [[nodiscard]] static Sequence<ClassObject> of(BodyCore const & object, Deviant deviant);

    [[nodiscard]] Generic::IteratorPtr generic_begin(Deviant deviant) const override;
    [[nodiscard]] Generic::IteratorPtr generic_end(Deviant deviant) const override;
    [[nodiscard]] int generic_size(Deviant deviant) const override;
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] bool generic_isRandomAccess() const override { return false; }
    using ForwardingSequence::generic_erase;
    Generic::IteratorPtr generic_erase(Deviant deviant, Generic::IteratorIntf const * where) override;
    [[nodiscard]] char const * generic_getOrcaName(bool, bool, char const * fallback) const override {
        return fallback;
    }

    [[nodiscard]] Generic::Place generic_beginPlace(Deviant deviant) const override;
    [[nodiscard]] Generic::Place generic_endPlace(Deviant deviant) const override;
    [[nodiscard]] Generic::Ref generic_atPlace(Deviant deviant, Generic::Place place) const override;
    [[nodiscard]] Generic::Place generic_placeAfter(Deviant deviant, Generic::Place place) const override;
    [[nodiscard]] Generic::Place generic_placeBefore(Deviant deviant, Generic::Place place) const override;
    [[nodiscard]] Generic::IteratorPtr generic_iteratorAtPlace(Deviant deviant, Generic::Place place) const override;

private:
    using Combined = Generic::combined_sequence_internal::GenericCombinedSequence;
    using Place = Generic::Place;

    class Spares;

    /// A spare one.
    ContaineeSequence() : fIsSpare(true) {}
    ContaineeSequence(BodyCore const & object, Deviant deviant, CompositeFields const & parts)
        : fObject(&object, deviant), fParts(&parts) {}

    void released() override;
    [[nodiscard]] Generic::SequencePtr makeWrapped() const override;
    /// Another deviant than the one that the sequence was made for is for the sequences of the properties.
    [[nodiscard]] bool isFor(Deviant deviant) const noexcept { return deviant == fObject.getDeviant(); }
    [[nodiscard]] StateCore const & state() const {
        return *fObject.getImplementation()->readState(fObject.getDeviant());
    }
    [[nodiscard]] int partCount() const noexcept { return static_cast<int>(fParts->size()); }
    [[nodiscard]] FieldDescriptor const & part(int number) const {
        return *(*fParts)[static_cast<std::size_t>(number)];
    }
    [[nodiscard]] NSInterface::ObjectIntf * elementAt(StateCore const & state, Place place) const;
    /// The first element of the part or, if it has none, of those after it.
    [[nodiscard]] Place firstFrom(StateCore const & state, int number) const;

    RefBase<BodyCore *> fObject; ///< null in one that is kept for later
    CompositeFields const * fParts = nullptr;
    mutable Combined const * fCombined = nullptr; ///< under the wrapped sequence
    bool fIsSpare = false;                        ///< kept for later when the last handle has gone
};

/// A place, for those who need an iterator.
class ContaineeSequence::Iterator final : public Generic::IteratorOf<ContaineeSequence::Iterator> {
public:
    Iterator(ContaineeSequence const * sequence, Generic::Place place) : fSequence(sequence), fPlace(place) {}

    [[nodiscard]] Generic::Ref current(Deviant deviant) const override {
        return fSequence->generic_atPlace(deviant, fPlace);
    }
    void next(Deviant deviant) override { fPlace = fSequence->generic_placeAfter(deviant, fPlace); }
    void previous(Deviant deviant) override { fPlace = fSequence->generic_placeBefore(deviant, fPlace); }
    [[nodiscard]] Generic::Place place() const override { return fPlace; }

private:
    friend class ContaineeSequence;
    friend IteratorOf;

    [[nodiscard]] bool isAt(Iterator const & other) const noexcept {
        return other.fSequence == fSequence && other.fPlace == fPlace;
    }

    ContaineeSequence const * fSequence;
    Generic::Place fPlace;
};

} // namespace ZEL::internal
