#include <ZEL/base/DeepCalls.h>

#include <pthread.h>
#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#include <cstdint>
#include <exception>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZEL_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ZEL_ADDRESS_SANITIZER
#endif
#ifdef ZEL_ADDRESS_SANITIZER
#include <sanitizer/common_interface_defs.h>
#endif

namespace ZEL::internal {
namespace {

/// Room left for what a call does before the next test. An operation of an application may need much of it.
constexpr std::size_t kReserve = std::size_t(512) << 10U;
/// Takes memory only as far as it is used.
constexpr std::size_t kStackSize = std::size_t(64) << 20U;

struct Bounds {
    std::uintptr_t low = 0;
    std::uintptr_t high = 0; ///< 0: not known yet
};

/// The stack on which this thread runs, as far as is known: one that an application has made itself goes unnoticed.
thread_local constinit Bounds presentBounds;

/// An empty stack if the system does not say.
Bounds boundsOfThread() noexcept {
    constexpr Bounds unknown{1, 1};
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) {
        return unknown;
    }
    void * low = nullptr;
    std::size_t size = 0;
    bool const isKnown = pthread_attr_getstack(&attributes, &low, &size) == 0;
    pthread_attr_destroy(&attributes);
    auto const begin = reinterpret_cast<std::uintptr_t>(low);
    return isKnown ? Bounds{begin, begin + size} : unknown;
}

/// What the address sanitizer must know about a change of stacks. `saved` receives its notes on the stack that is left;
/// null means that this stack ends.
void beginSwitch([[maybe_unused]] void ** saved, [[maybe_unused]] void const * bottom,
                 [[maybe_unused]] std::size_t size) {
#ifdef ZEL_ADDRESS_SANITIZER
    __sanitizer_start_switch_fiber(saved, bottom, size);
#endif
}
void endSwitch([[maybe_unused]] void * saved, [[maybe_unused]] void const ** oldBottom,
               [[maybe_unused]] std::size_t * oldSize) {
#ifdef ZEL_ADDRESS_SANITIZER
    __sanitizer_finish_switch_fiber(saved, oldBottom, oldSize);
#endif
}

/// A call that runs on another stack.
struct Transfer {
    std::function<void()> const & function;
    std::exception_ptr failure = nullptr;
    ucontext_t caller{};
    void const * callerBottom = nullptr;
    std::size_t callerSize = 0;
};

constexpr unsigned int kHalf = 32;

/// The first function on a stack. Its arguments are the halves of a pointer, since a context can only pass `int`.
void runTransfer(unsigned int upper, unsigned int lower) {
    auto & transfer =
        *reinterpret_cast<Transfer *>(static_cast<std::uintptr_t>((std::uint64_t(upper) << kHalf) | lower));
    endSwitch(nullptr, &transfer.callerBottom, &transfer.callerSize);
    try {
        transfer.function();
    } catch (...) {
        transfer.failure = std::current_exception(); // no exception can unwind from one stack to another
    }
    beginSwitch(nullptr, transfer.callerBottom, transfer.callerSize);
}

} // namespace

/// Memory for a stack, with a guard page below it.
class DeepCalls::Stack {
public:
    Stack()
        : fGuard(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
          fMemory(mmap(nullptr, fGuard + kStackSize, PROT_READ | PROT_WRITE,
                       MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_STACK, -1, 0)) {
        if (fMemory == MAP_FAILED) {
            throw std::bad_alloc();
        }
        mprotect(fMemory, fGuard, PROT_NONE);
    }
    ~Stack() { munmap(fMemory, fGuard + kStackSize); }
    Stack(Stack const &) = delete;
    Stack & operator=(Stack const &) = delete;

    [[nodiscard]] void * bottom() const noexcept { return static_cast<char *>(fMemory) + fGuard; }
    [[nodiscard]] Bounds bounds() const noexcept {
        auto const low = reinterpret_cast<std::uintptr_t>(bottom());
        return {low, low + kStackSize};
    }

private:
    std::size_t fGuard;
    void * fMemory;
};

DeepCalls::DeepCalls() = default;
DeepCalls::~DeepCalls() = default;

bool DeepCalls::hasRoom() noexcept {
    if (presentBounds.high == 0) {
        presentBounds = boundsOfThread();
    }
    auto const here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    return here >= presentBounds.low + kReserve && here < presentBounds.high;
}

void DeepCalls::callOnFurtherStack(std::function<void()> const & function) {
    if (fSpare.empty()) {
        fSpare.push_back(std::make_unique<Stack>());
    }
    std::unique_ptr<Stack> stack = std::move(fSpare.back());
    fSpare.pop_back();

    Transfer transfer{function};
    ucontext_t callee{};
    getcontext(&callee);
    callee.uc_stack.ss_sp = stack->bottom();
    callee.uc_stack.ss_size = kStackSize;
    callee.uc_link = &transfer.caller;
    auto const address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&transfer));
    makecontext(&callee, reinterpret_cast<void (*)()>(&runTransfer), 2, static_cast<unsigned int>(address >> kHalf),
                static_cast<unsigned int>(address));

    Bounds const old = std::exchange(presentBounds, stack->bounds());
    void * saved = nullptr;
    beginSwitch(&saved, stack->bottom(), kStackSize);
    swapcontext(&transfer.caller, &callee);
    endSwitch(saved, nullptr, nullptr);
    presentBounds = old;

    fSpare.push_back(std::move(stack));
    if (transfer.failure != nullptr) {
        std::rethrow_exception(std::move(transfer.failure));
    }
}

} // namespace ZEL::internal
