#pragma once

#include <ZEL/Export.h>

#include <libvx/Level.h>

#include <concepts>

namespace ZEL {

/// The severity of a log record, or the least severity that a logger or handler lets through.
///
/// Finer than the host's level, from which it is derived: trace and debug count as the host's info, fatal as its error.
class ZEL_API LogLevel : public Quillon::System::Level {
public:
    enum Setting : int {
        all = 0,
        trace = 62,
        debug = 63,
        info = 64,
        warning = 127,
        error = 192,
        fatal = 193,
        off = 255,
    };

    LogLevel(Setting setting = off) noexcept : Level(tolevel(setting)), fName(nameOf(setting)), fSetting(setting) {}
    LogLevel(LogLevel const &) noexcept = default;
    LogLevel & operator=(LogLevel const &) noexcept = default;
    LogLevel & operator=(Quillon::System::Level const & level) noexcept {
        return *this = LogLevel(static_cast<Setting>(level.value()));
    }

    [[nodiscard]] Setting getLevel() const noexcept { return fSetting; }
    /// "Unknown FLevel" for a number that is not a setting.
    [[nodiscard]] char const * getName() const noexcept { return fName; }
    [[nodiscard]] char const * toString() const noexcept { return fName; }

    /// The host level that a setting counts as.
    [[nodiscard]] static Quillon::System::Level::Enum tolevel(Setting setting) noexcept;
    /// A host level with the setting's own number. Must be called by name: where a host level is expected, the language
    /// converts to the base class, whose number is that of `tolevel`.
    template <std::same_as<Quillon::System::Level> L> [[nodiscard]] operator L() const noexcept {
        return L(static_cast<Quillon::System::Level::Enum>(fSetting));
    }

private:
    [[nodiscard]] static char const * nameOf(Setting setting) noexcept;

    char const * fName;
    Setting fSetting;
};

} // namespace ZEL
