// SPDX-License-Identifier: MIT
#pragma once

#include "shelf/PersistedShelf.h"

#include <string_view>

namespace stowpocket {

class LoginItem;
class PreferenceStore;

/// The keys of the user's settings. `shelfCapacityKey` is in the shelf's headers.
namespace preferenceKey {
/// Boolean: the application should start with the session.
inline constexpr std::string_view launchAtLogin = "launchAtLogin";
/// Integers: virtual key codes of the two shortcuts; negative for none.
inline constexpr std::string_view shelfHotkeyKeyCode = "shelfHotkeyKeyCode";
inline constexpr std::string_view quickDropKeyCode = "quickDropKeyCode";
/// Integers, never negative: their `ModifierFlags`.
inline constexpr std::string_view shelfHotkeyModifiers = "shelfHotkeyModifiers";
inline constexpr std::string_view quickDropModifiers = "quickDropModifiers";
/// Strings: the characters of their keys, as shown to the user.
inline constexpr std::string_view shelfHotkeyKeyChar = "shelfHotkeyKeyChar";
inline constexpr std::string_view quickDropKeyChar = "quickDropKeyChar";
/// Boolean: the first-run window has been completed.
inline constexpr std::string_view onboardingShown = "onboardingShown";
}  // namespace preferenceKey

/// Registers the default values of all settings. The first step of the launch.
void registerPreferenceDefaults(PreferenceStore& preferences);

/// Keeps the login item in line with the user's setting. If the login item cannot be changed, the setting is
/// reverted, so that it never shows a wrong state. Failures are silent. Main thread.
class LaunchAtLogin {
public:
    LaunchAtLogin(LoginItem& loginItem, PreferenceStore& preferences)
        : loginItem_(loginItem), preferences_(preferences) {}

    /// Applies the stored setting; called at launch.
    void sync();
    /// Applies the setting after the user has changed it, and reverts it if that fails.
    void settingChanged(bool wanted);
    /// Sets the setting to the actual state.
    void adoptActualState();

private:
    [[nodiscard]] bool isRegistered() const;
    [[nodiscard]] bool apply(bool wanted);

    LoginItem& loginItem_;
    PreferenceStore& preferences_;
};

}  // namespace stowpocket
