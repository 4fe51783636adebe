#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// Lets calls nest as deep as memory goes: a call for which the present stack has too little room runs on a further one.
///
/// For walks over models that are made of calls of overridable operations. The caller waits in the same thread, so locks
/// and thread-local values are those of a plain call; results and exceptions come back. Stacks are kept for the next such
/// call and go with this object. Not for two threads at once.
class DeepCalls {
public:
    DeepCalls();
    ~DeepCalls();
    DeepCalls(DeepCalls const &) = delete;
    DeepCalls & operator=(DeepCalls const &) = delete;

    /// What `function()` returns. Throws what it throws, and `std::bad_alloc` if there is no memory for a stack. A test
    /// of two addresses as long as there is room.
    template <class F> std::invoke_result_t<F &> call(F function) {
        if (hasRoom()) [[likely]] {
            return function();
        }
        if constexpr (std::is_void_v<std::invoke_result_t<F &>>) {
            callOnFurtherStack(std::ref(function));
        } else {
            std::optional<std::invoke_result_t<F &>> result;
            callOnFurtherStack([&] { result.emplace(function()); });
            return *std::move(result);
        }
    }

private:
    class Stack;

    [[nodiscard]] static bool hasRoom() noexcept;
    void callOnFurtherStack(std::function<void()> const & function);

    std::vector<std::unique_ptr<Stack>> fSpare;
};

} // namespace ZEL::internal
