#pragma once

#include <ZEL/Export.h>

#include <cstdint>
#include <typeinfo>

namespace ZEL {

/// Root of every counted body, and the accounting of those that are alive.
///
/// A constructed object is entered in the table of live objects one step later, at the next construction, destruction
/// or listing, because only then can its dynamic type be read. Objects made or entered during a meta-registry section
/// belong to the process-wide metamodel and do not count as leaked. Copying makes a new object with an entry of its own.
/// At process end whatever is still in the table is listed on `std::cout`.
class ZEL_API Cleanup {
public:
    virtual ~Cleanup();

    /// Objects entered so far; wraps through unsigned. The object constructed last is not yet among them.
    static int creationNumber() noexcept;
    /// Objects in the table; the one constructed last is not yet among them.
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

/// Objects of exactly this type are not entered. There is one such type, that of the shared empty sequence; its constructor
/// says so.
void leaveOutOfLiveObjects(std::type_info const & type) noexcept;

} // namespace internal
} // namespace ZEL
