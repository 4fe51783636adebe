#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// Lets calls nest as deep as memory allows: a call for which the current stack has too little room runs on another
/// one.
///
/// For recursive walks over models that call overridable operations. The call runs in the same thread, so locks and
/// thread-local values are those of a plain call; its result or exception is passed on. Stacks are kept for further
/// calls and freed with this object. Not thread-safe.
class DeepCalls {
public:
    DeepCalls();
    ~DeepCalls();
    DeepCalls(DeepCalls const &) = delete;
    DeepCalls & operator=(DeepCalls const &) = delete;

    /// Returns the result of `function()`. Throws what it throws, and `std::bad_alloc` if there is no memory for a
    /// stack. Costs two comparisons of addresses as long as there is room.
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
