#pragma once

#include <ZEL/base/Exception.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace ZEL::tests {

inline constexpr char const * kNullRef = "Cannot access NULL ref. Use isValid() before calling methods";
inline constexpr char const * kInternalError = "An Internal Error has occurred";

/// The text of the exception of class `Caught` that `operation` throws; "(nothing)" if it returns.
template <class Caught = std::exception, class Operation> std::string raisedText(Operation operation) {
    try {
        operation();
    } catch (Caught const & exception) {
        return exception.what();
    }
    return "(nothing)";
}

} // namespace ZEL::tests

/// Holds if the expression throws an error of the library with just this text.
#define EXPECT_RAISES(text, expression)                                                                                \
    EXPECT_EQ(text, ::ZEL::tests::raisedText<::ZEL::Exception>([&] { static_cast<void>(expression); }))
