#pragma once

#include <ZEL/deviants/ChangeSet.h>
#include <ZEL/deviants/ListenerHolderBase.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace ZEL {

class DeviantManager;

namespace internal {

/// The phases of one deviant in which client code runs: commits with listeners, undos, redos. They nest, and may point
/// at holders that have been dismissed and at change sets that have left the history meanwhile: both are kept here
/// until the outermost phase has ended.
class Phases {
public:
    explicit Phases(DeviantManager const & manager) noexcept : fManager(manager) {}
    ~Phases() { dropKept(); }
    Phases(Phases const &) = delete;
    Phases & operator=(Phases const &) = delete;

    [[nodiscard]] bool areRunning() const noexcept { return fRunning > 0; }
    /// Makes room, so that `keep` needs no memory for `holders` more.
    void makeRoom(std::size_t holders);
    /// Ends the holder at once if no phase is running.
    void keep(std::unique_ptr<ListenerHolderBase> holder) noexcept;
    /// Only while a phase is running. Needs no memory.
    void keep(std::unique_ptr<ChangeSet> record) noexcept {
        record->next = std::exchange(fRecords, nullptr);
        fRecords = std::move(record);
    }

private:
    friend class PhaseScope;

    void dropKept() noexcept;

    DeviantManager const & fManager;
    std::int32_t fRunning = 0;
    std::vector<std::unique_ptr<ListenerHolderBase>> fHolders;
    std::unique_ptr<ChangeSet> fRecords; ///< the last, and from it on the others
};

/// One phase. It holds a count on the model, so that no listener ends it. Giving that back may destroy the deviant, so
/// it must be the first local of its function.
class PhaseScope {
public:
    explicit PhaseScope(Phases & phases);
    ~PhaseScope();
    PhaseScope(PhaseScope const &) = delete;
    PhaseScope & operator=(PhaseScope const &) = delete;

private:
    Phases & fPhases;
    ClassObjectIntf * fModel;
};

} // namespace internal
} // namespace ZEL
