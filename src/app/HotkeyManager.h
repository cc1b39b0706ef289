// SPDX-License-Identifier: MIT
#pragma once

#include "services/Input.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace stowpocket {

class NotificationCenter;
class PreferenceStore;

/// Posted when the hotkey that opens and closes the shelf is pressed.
inline constexpr std::string_view togglePopoverNotification = "StowpocketTogglePopover";
/// Posted when the hotkey that adds the file manager's selection is pressed.
inline constexpr std::string_view quickDropNotification = "StowpocketQuickDrop";

inline constexpr HotkeyIdentifier shelfHotkey{0x53504B31, 1};      // "SPK1"
inline constexpr HotkeyIdentifier quickDropHotkey{0x53504B32, 2};  // "SPK2"

/// The two system-wide hotkeys, each of which posts a notification. A hotkey has at most one registration, for the
/// shortcut that was stored when it was registered. Lives until the process ends. Main thread only.
class HotkeyManager {
public:
    HotkeyManager(HotkeyService& service, PreferenceStore& preferences, NotificationCenter& notificationCenter);

    /// Each replaces the registration with one for the stored shortcut. A cleared shortcut is not registered.
    void registerShelfHotkey();
    void registerQuickDropHotkey();
    /// Whether a shortcut is stored that the system refused, because another program has it.
    [[nodiscard]] bool isTaken(const HotkeyIdentifier& hotkey) const;

private:
    [[nodiscard]] std::unique_ptr<HotkeyRegistration>
    registration(std::string_view keyCodeKey, std::string_view modifiersKey, HotkeyIdentifier identifier) const;
    [[nodiscard]] std::int32_t handleHotkey(const HotkeyIdentifier* pressed) const;

    HotkeyService& service_;
    PreferenceStore& preferences_;
    NotificationCenter& notificationCenter_;
    std::unique_ptr<HotkeyRegistration> shelfHotKeyRef_;
    std::unique_ptr<HotkeyRegistration> quickDropHotKeyRef_;
};

/// Converts stored modifier flags for the hotkey service; flags that it does not know are dropped.
[[nodiscard]] std::uint32_t carbonModifiers(std::int64_t modifierFlags);

}  // namespace stowpocket
