#pragma once

#include <ZEL/base/Exception.h>

#include <gtest/gtest.h>

#include <string>

namespace ZEL::tests {

inline constexpr char const * kNullRef = "Cannot access NULL ref. Use isValid() before calling methods";
inline constexpr char const * kInternalError = "An Internal Error has occurred";

/// The text that `operation` raises; "(nothing)" if it returns.
template <class Operation> std::string raisedText(Operation operation) {
    try {
        operation();
    } catch (Exception const & exception) {
        return exception.GetMessageTxt();
    }
    return "(nothing)";
}

} // namespace ZEL::tests

/// Holds if the expression raises an error of the kernel with just this text.
#define EXPECT_RAISES(text, expression)                                                                                \
    EXPECT_EQ(text, ::ZEL::tests::raisedText([&] { static_cast<void>(expression); }))
