// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace stowpocket {

/// The device-independent modifier bits of key events, as shortcuts store them.
namespace modifierFlag {
inline constexpr std::int64_t shift = 0x20000;
inline constexpr std::int64_t control = 0x40000;
inline constexpr std::int64_t option = 0x80000;
inline constexpr std::int64_t command = 0x100000;
}  // namespace modifierFlag

/// A key going down. Key codes are the virtual key codes of the reference keyboard on every platform.
struct KeyEvent {
    std::uint16_t keyCode = 0;
    /// Device-independent flags in the high bits, device-dependent ones in the low 16.
    std::int64_t modifierFlags = 0;
    /// What the key types without modifiers in the keyboard layout in force, in UTF-8. A key that types nothing that
    /// can be seen has what is written on it; empty where that is nothing either.
    std::string charactersIgnoringModifiers = {};
};

/// Keeps a monitor installed until destroyed, which its own handler may do.
class EventMonitorToken {
public:
    virtual ~EventMonitorToken() = default;
};

/// Sees input events before, or beside, those who get them. Main thread only, handlers included.
class EventMonitors {
public:
    virtual ~EventMonitors() = default;

    /// `handler` sees the key-downs that this application gets, while it is active; true swallows the event. The
    /// monitor added last sees them first.
    [[nodiscard]] virtual std::unique_ptr<EventMonitorToken>
    addLocalKeyDownMonitor(std::function<bool(const KeyEvent&)> handler) = 0;
    /// `handler` runs when the left or right mouse button goes down in another application.
    [[nodiscard]] virtual std::unique_ptr<EventMonitorToken>
    addGlobalMouseDownMonitor(std::function<void()> handler) = 0;
    /// The buttons held right now, anywhere: bit 0 left, bit 1 right, bit 2 middle.
    [[nodiscard]] virtual std::uint32_t pressedMouseButtons() const = 0;
};

}  // namespace stowpocket
