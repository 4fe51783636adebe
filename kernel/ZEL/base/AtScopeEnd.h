#pragma once

#include <utility>

namespace ZEL::internal {

/// Calls a function at the end of its scope, however the scope is left. The function must not throw.
template <class Function> class [[nodiscard]] AtScopeEnd {
public:
    explicit AtScopeEnd(Function function) : fFunction(std::move(function)) {}
    ~AtScopeEnd() { fFunction(); }
    AtScopeEnd(AtScopeEnd const &) = delete;
    AtScopeEnd & operator=(AtScopeEnd const &) = delete;

private:
    Function fFunction;
};

} // namespace ZEL::internal
