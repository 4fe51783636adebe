#pragma once

#include "Script.h"

#include <ZEL/Exception.h>

#include <exception>
#include <optional>
#include <set>
#include <string>

// What goes into the messages of a script.

namespace ZEL::oracle {

[[nodiscard]] std::string told(std::optional<State> const & state);
[[nodiscard]] std::string told(std::set<int> const & numbers);
[[nodiscard]] std::string told(Changes const & changes);

/// The text that the action raises; empty if it returns.
template <class Action> std::string outcomeOf(Action action) {
    try {
        action();
    } catch (Exception const & exception) {
        return exception.GetMessageTxt();
    } catch (std::exception const & exception) {
        return exception.what();
    }
    return std::string();
}

} // namespace ZEL::oracle
