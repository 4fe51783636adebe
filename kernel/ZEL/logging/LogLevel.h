#pragma once

#include <ZEL/Export.h>

#include <libvx/Level.h>

#include <concepts>

namespace ZEL {

/// How grave a log record is, or from where on a logger or handler lets records through.
///
/// Finer than the host's level, of which it is one: trace and debug count as the host's info, fatal as its error.
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
    /// "Unknown FLevel" for a number that is no setting.
    [[nodiscard]] char const * getName() const noexcept { return fName; }
    [[nodiscard]] char const * toString() const noexcept { return fName; }

    /// The host level that a setting counts as.
    [[nodiscard]] static Quillon::System::Level::Enum tolevel(Setting setting) noexcept;
    /// A host level with the setting's own number. To be called by name: where a host level is expected, the language
    /// takes the base class, whose number is that of `tolevel`.
    template <std::same_as<Quillon::System::Level> L> [[nodiscard]] operator L() const noexcept {
        return L(static_cast<Quillon::System::Level::Enum>(fSetting));
    }

private:
    [[nodiscard]] static char const * nameOf(Setting setting) noexcept;

    char const * fName;
    Setting fSetting;
};

} // namespace ZEL
