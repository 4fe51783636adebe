#pragma once

#include <ZEL/Export.h>

#include <cstdint>
#include <typeinfo>

namespace ZEL {

/// Root of every counted body, and the account of those that are alive.
///
/// A constructed object is entered in the table of live objects one step later, at the next construction, destruction
/// or listing, because only then is its dynamic type known. Objects made or entered during a meta-registry section
/// belong to the process-wide metamodel and do not count as leaked. A copy is a new object with an entry of its own.
/// Whatever is still in the table at the end of the process is listed on `std::cout`.
class ZEL_API Cleanup {
public:
    virtual ~Cleanup();

    /// The number of objects entered so far, which wraps around. The object constructed last is not yet included.
    static int creationNumber() noexcept;
    /// The number of objects in the table. The object constructed last is not yet included.
    static int numberOfActiveObjects() noexcept;
    /// Writes a line to `std::cout` for each live object outside meta-registry sections whose number is above
    /// `minimumCreationNumber`, and returns their count. Linear in the number of live objects.
    static int printLeakedObjects(int minimumCreationNumber);
    static void startTrackingObjects() noexcept;
    static void stopTrackingObjects() noexcept;
    [[nodiscard]] static bool isTrackingObjects() noexcept;
    static void beginMetaRegistrySection() noexcept;
    static void endMetaRegistrySection() noexcept;

protected:
    Cleanup();
    Cleanup(Cleanup const &);
    Cleanup & operator=(Cleanup const &) noexcept = default;
};

namespace internal {

/// Objects of exactly this type are not entered. There is one such type, that of the shared empty sequence, whose
/// constructor calls this.
void leaveOutOfLiveObjects(std::type_info const & type) noexcept;

} // namespace internal
} // namespace ZEL
