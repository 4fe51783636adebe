#pragma once

#include <hasp_util/Export.h>

namespace Quillon::System {

/// A log level of the host. Higher is more severe; values between the named ones are allowed.
class HOST_API Level {
public:
    enum Enum : int { All = 0, Info = 64, Warning = 127, Error = 192, Off = 255 };

    constexpr Level(Enum value = Off) noexcept : fValue(value) {}
    [[nodiscard]] constexpr Enum value() const noexcept { return fValue; }

    friend constexpr bool operator==(Level left, Level right) noexcept { return left.fValue == right.fValue; }

private:
    Enum fValue;
};

} // namespace Quillon::System
