#pragma once

#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/sequences/ForwardingSequence.h>
#include <ZEL/sequences/GenericCombinedSequence.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/values/RefBase.h>

#include <vector>

namespace ZEL::internal {

/// The objects in all composite properties of an object, with their container kept in step.
///
/// Loops read the fields of the state. Whatever else is asked for, every write among it, is passed on to the combination
/// of the properties' own sequences, which is made when it is needed first.
class ContaineeSequence final : public Generic::ForwardingSequence {
public:
    class Iterator;

    /// Throws what reading the object's state throws. `object` is a body.
    ContaineeSequence(NSInterface::ClassObjectIntf const & object, Deviant deviant);

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

private:
    using Combined = Generic::combined_sequence_internal::GenericCombinedSequence;

    [[nodiscard]] Generic::SequencePtr makeWrapped() const override;
    /// Another deviant than the one that the sequence was made for is for the sequences of the properties.
    [[nodiscard]] bool isFor(Deviant deviant) const noexcept { return deviant == fObject.getDeviant(); }
    [[nodiscard]] StateCore const & state() const;
    [[nodiscard]] int fieldCount() const noexcept { return static_cast<int>(fFields.size()); }
    [[nodiscard]] int sizeOf(StateCore const & state, int field) const;
    [[nodiscard]] NSInterface::ObjectIntf * elementAt(StateCore const & state, int field, int position) const;

    RefBase<NSInterface::ClassObjectIntf *> fObject;
    std::vector<FieldDescriptor const *> const & fFields;
    mutable Combined const * fCombined = nullptr; ///< under the wrapped sequence
};

/// The number of a field, and a position in it.
class ContaineeSequence::Iterator final : public Generic::IteratorOf<ContaineeSequence::Iterator> {
public:
    Iterator(ContaineeSequence const * sequence, int field) : fSequence(sequence), fField(field) {}

    [[nodiscard]] Generic::Ref current(Deviant deviant) const override;
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;

private:
    friend class ContaineeSequence;
    friend IteratorOf;

    [[nodiscard]] bool isAt(Iterator const & other) const noexcept {
        return other.fSequence == fSequence && other.fField == fField && other.fPosition == fPosition;
    }
    /// To the first element of the field or, if it has none, of those after it.
    void enter(StateCore const & state, int field);

    ContaineeSequence const * fSequence;
    int fField;
    int fPosition = 0;
};

} // namespace ZEL::internal
