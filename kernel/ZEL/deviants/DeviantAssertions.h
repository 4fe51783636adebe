#pragma once

#include <ZEL/Export.h>

namespace ZEL {

class Deviant;

namespace NSInterface {
class ClassObjectIntf;
} // namespace NSInterface

namespace internal {
class BodyCore;
class DeviantImpl;
} // namespace internal

/// Tells a caller that an object was touched in a way that its deviant forbids.
///
/// The switch only turns off the check that a write stands in a transaction. Turn it off around work that builds a
/// model outside of transactions, and put back what `enableAssertions` returned.
class ZEL_API DeviantAssertions {
public:
    /// `deviant` may be null, for the null deviant.
    explicit DeviantAssertions(internal::DeviantImpl * deviant) noexcept : fDeviant(deviant) {}

    /// Returns the former setting.
    static bool enableAssertions(bool enable) noexcept;
    /// Returns true, or throws that the deviant has no open transaction. Always true while assertions are off.
    bool assertWritable(NSInterface::ClassObjectIntf const * object) const {
        return !sAssertionsEnabled || internal_assertWritable(object);
    }
    [[noreturn]] void assertObjectNotPresentInDeviant(NSInterface::ClassObjectIntf const * object) const;
    [[noreturn]] void assertObjectAlreadyCreated(NSInterface::ClassObjectIntf const * object) const;
    [[noreturn]] static void assertThatModelHasBeenDestroyed(NSInterface::ClassObjectIntf const * object);

private:
    friend class Deviant;
    friend class internal::BodyCore;

    bool internal_assertWritable(NSInterface::ClassObjectIntf const * object) const;
    [[nodiscard]] Deviant deviant() const noexcept;
    [[noreturn]] void raiseAboutObject(NSInterface::ClassObjectIntf const * object, char const * complaint) const;

    static bool sAssertionsEnabled;

    internal::DeviantImpl * fDeviant;
};

} // namespace ZEL
