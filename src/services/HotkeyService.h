// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace stowpocket {

/// Names one hotkey to the system: four characters of the application's own, and a number.
struct HotkeyIdentifier {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    friend bool operator==(const HotkeyIdentifier&, const HotkeyIdentifier&) = default;
};

/// Keeps a hotkey registered until destroyed.
class HotkeyRegistration {
public:
    virtual ~HotkeyRegistration() = default;
};

/// The modifier bits that registrations take, as the Carbon event manager numbers them.
namespace carbonModifier {
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;
}  // namespace carbonModifier

/// What makes hotkeys work on this desktop now.
enum class HotkeySource {
    windowSystem,  ///< keys are taken from the window system itself
    portal,        ///< the desktop gives them, and its settings say which keys they are
    none,  ///< nothing does; a command bound in the desktop's settings, `stowpocket toggle`, takes their place
};

/// System-wide hotkeys: they work whatever application is active. Main thread only.
class HotkeyService {
public:
    /// Gets the pressed hotkey, or null for an event that carries none; answers a status of the event manager.
    using Handler = std::function<std::int32_t(const HotkeyIdentifier*)>;

    virtual ~HotkeyService() = default;
    /// Called once; the handler stays until the process ends.
    virtual void installEventHandler(Handler handler) = 0;
    /// `keyCode` is a virtual key code, `modifiers` are `carbonModifier` bits. Null when the system refuses, for
    /// instance because another program holds the combination; an adapter says so in the log.
    [[nodiscard]] virtual std::unique_ptr<HotkeyRegistration>
    registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers, HotkeyIdentifier identifier) = 0;
    /// For the settings window, to tell the user. May change at any time: the user is asked, desktops restart.
    [[nodiscard]] virtual HotkeySource source() const { return HotkeySource::windowSystem; }
};

}  // namespace stowpocket
