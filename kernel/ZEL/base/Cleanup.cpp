#include <ZEL/base/Cleanup.h>
#include <ZEL/base/LiveObjectTable.h>
#include <ZEL/base/ReferenceCountingIntf.h>

#include <libvx/Printing.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <new>
#include <typeinfo>

namespace ZEL {

namespace {

// Objects that are destroyed after all statics of this library still use these, so nothing here has a destructor.
internal::LiveObjectTable * registry = nullptr;
Cleanup * pending = nullptr;
bool isPendingOfSection = false;
std::uint32_t counter = 0;
bool isTracking = true;
bool isInSection = false;
bool hasEnded = false;
std::type_info const * unlistedType = nullptr;

/// A pending object of one of these types is being constructed or destroyed, or is of the type that is left out.
bool isSkippedType(std::type_info const & type) noexcept {
    // Almost all calls are about a few dozen types, for which the answer is no.
    static std::array<std::type_info const *, 256> ordinary{};
    auto & known = ordinary[(reinterpret_cast<std::uintptr_t>(&type) >> 4) % ordinary.size()];
    if (known == &type) {
        return false;
    }
    if (type == typeid(Cleanup) || type == typeid(ReferenceCountingIntf) ||
        (unlistedType != nullptr && type == *unlistedType)) {
        return true;
    }
    known = &type;
    return false;
}

void write(Cleanup const & object, std::int32_t number) {
    std::cout << "== " << number << " == "
              << "leaked object: " << typeid(object).name() << '\n';
}

void reportAtEnd();

/// Enters the object constructed before, whose type is known by now, and remembers `current` for the next time. Throws
/// if there is no memory; the object then stays the one constructed last.
void track(Cleanup * current) {
    if (registry == nullptr) {
        if (hasEnded) {
            return;
        }
        registry = new internal::LiveObjectTable;
        std::atexit(reportAtEnd);
    }
    if (!isTracking) {
        return;
    }
    if (pending != nullptr && !isSkippedType(typeid(*pending))) {
        registry->insert(pending, counter++, isInSection || isPendingOfSection);
    }
    pending = current;
    isPendingOfSection = isInSection;
}

/// The same without a new object, where nothing may be thrown: without memory, the object waits for the next time.
void trackIfPossible() noexcept {
    try {
        track(nullptr);
    } catch (std::bad_alloc const &) {
    }
}

void reportAtEnd() {
    trackIfPossible();
    registry->forEach(
        [](Cleanup const & object, std::uint32_t number, bool) { write(object, static_cast<std::int32_t>(number)); });
    std::cout.flush();
    delete registry;
    registry = nullptr;
    pending = nullptr;
    hasEnded = true;
}

} // namespace

Cleanup const * internal::liveObjectBefore(void const * address) noexcept {
    Cleanup const * const entered = registry == nullptr ? nullptr : registry->findBefore(address);
    auto const distance = [address](Cleanup const * object) {
        return reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(object);
    };
    bool const isInPending = pending != nullptr && distance(pending) < LiveObjectTable::kReach &&
                             (entered == nullptr || distance(pending) < distance(entered));
    return isInPending ? pending : entered;
}

void internal::leaveOutOfLiveObjects(std::type_info const & type) noexcept { unlistedType = &type; }

Cleanup::Cleanup() { track(this); }

Cleanup::Cleanup(Cleanup const &) { track(this); }

Cleanup::~Cleanup() {
    if (pending == this) {
        // It has never been entered. Most iterators and temporary sequences end here, and so does an object that is
        // destroyed while tracking is off and must not be examined when tracking goes on.
        pending = nullptr;
    } else if (registry != nullptr) {
        trackIfPossible();
        registry->erase(this);
    }
}

int Cleanup::creationNumber() noexcept { return static_cast<std::int32_t>(counter); }

int Cleanup::numberOfActiveObjects() noexcept { return registry == nullptr ? 0 : static_cast<int>(registry->size()); }

int Cleanup::printLeakedObjects(int minimumCreationNumber) {
    track(nullptr);
    if (registry == nullptr) {
        return 0;
    }
    int count = 0;
    registry->forEach([&](Cleanup const & object, std::uint32_t number, bool inSection) {
        auto const creationNumber = static_cast<std::int32_t>(number);
        if (!inSection && creationNumber > minimumCreationNumber) {
            write(object, creationNumber);
            ++count;
        }
    });
    if (count != 0) {
        std::cout.flush();
        vxPrintf("%s\n", "");
    }
    return count;
}

void Cleanup::startTrackingObjects() noexcept { isTracking = true; }

void Cleanup::stopTrackingObjects() noexcept { isTracking = false; }

bool Cleanup::isTrackingObjects() noexcept { return isTracking; }

void Cleanup::beginMetaRegistrySection() noexcept { isInSection = true; }

void Cleanup::endMetaRegistrySection() noexcept { isInSection = false; }

} // namespace ZEL
