#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/deviants/Deviant.h>

namespace ZEL {

namespace NSInterface {
class ClassObjectIntf;
} // namespace NSInterface

namespace internal {
class PersistentSequence;
class PersistentTextSequence;
} // namespace internal

namespace Generic {

/// Where the values of one stored multi-valued property are: what the generator fills, as a constant, for each
/// property.
///
/// The accessors find the state of an object to read or to write in a deviant, by `getReadDeviant` and
/// `getWriteDeviant` with all that these throw, and return the property's field in it. Of the two pairs of accessors
/// one is null.
struct SequenceField {
    template <class Storage>
    using Read = Storage const & (*)(NSInterface::ClassObjectIntf const * object, Deviant deviant);
    template <class Storage> using Write = Storage & (*)(NSInterface::ClassObjectIntf const * object, Deviant deviant);

    char const * elementTypeName; ///< registered name of the type of the elements, "ZEL.Comment" or "ZEL.String"
    /// The class that all elements are of; null for texts.
    CooperativeVisitor::internal::ClassInfo const & (*elementInfo)();

    /// Bodies, at the address of their `ObjectIntf` part, each at most once.
    Read<internal::PersistentSequence> readBodies;
    Write<internal::PersistentSequence> writeBodies;

    Read<internal::PersistentTextSequence> readTexts;
    Write<internal::PersistentTextSequence> writeTexts;
    bool isUnique; ///< of texts only: whether a text that is there already is ignored

    [[nodiscard]] constexpr bool hasTexts() const noexcept { return readTexts != nullptr; }

    [[nodiscard]] static constexpr SequenceField
    ofBodies(char const * elementTypeName, CooperativeVisitor::internal::ClassInfo const & (*elementInfo)(),
             Read<internal::PersistentSequence> read, Write<internal::PersistentSequence> write) noexcept {
        return {elementTypeName, elementInfo, read, write, nullptr, nullptr, true};
    }
    [[nodiscard]] static constexpr SequenceField ofTexts(Read<internal::PersistentTextSequence> read,
                                                         Write<internal::PersistentTextSequence> write,
                                                         bool isUnique) noexcept {
        return {"ZEL.String", nullptr, nullptr, nullptr, read, write, isUnique};
    }
};

} // namespace Generic
} // namespace ZEL
