#pragma once

namespace ZEL::tests::memory {

/// The heap of a program without memory: which of the allocations of this process fail, in each library that it uses.
///
/// In force from the constructor to the destructor; there is one at a time.
class FailingHeap {
public:
    enum class How {
        Once,    ///< the given allocation alone
        FromThen ///< that and all that come later
    };

    /// The first allocation has the number 1.
    FailingHeap(long number, How how) noexcept;
    ~FailingHeap();
    FailingHeap(FailingHeap const &) = delete;
    FailingHeap & operator=(FailingHeap const &) = delete;

    [[nodiscard]] static bool hasFailed() noexcept;
};

} // namespace ZEL::tests::memory
