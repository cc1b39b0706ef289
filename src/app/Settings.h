// SPDX-License-Identifier: MIT
#pragma once

#include "shelf/PersistedShelf.h"

#include <string_view>

namespace stowpocket {

class LoginItem;
class PreferenceStore;

/// The keys of the user's settings. `shelfCapacityKey` stands with the shelf, which is the one to obey it.
namespace preferenceKey {
/// Boolean: the application should start with the session.
inline constexpr std::string_view launchAtLogin = "launchAtLogin";
/// Integers: virtual key codes of the two shortcuts; negative for none.
inline constexpr std::string_view shelfHotkeyKeyCode = "shelfHotkeyKeyCode";
inline constexpr std::string_view quickDropKeyCode = "quickDropKeyCode";
/// Integers, never negative: their `ModifierFlags`.
inline constexpr std::string_view shelfHotkeyModifiers = "shelfHotkeyModifiers";
inline constexpr std::string_view quickDropModifiers = "quickDropModifiers";
/// Strings: their keys' characters as shown to the user.
inline constexpr std::string_view shelfHotkeyKeyChar = "shelfHotkeyKeyChar";
inline constexpr std::string_view quickDropKeyChar = "quickDropKeyChar";
/// Boolean: the first-run window has been completed.
inline constexpr std::string_view onboardingShown = "onboardingShown";
}  // namespace preferenceKey

/// Registers the answers for everything that the user has not set. The first thing done at launch.
void registerPreferenceDefaults(PreferenceStore& preferences);

/// Keeps the login item and the user's wish for it in line. The wish is changed only where it cannot be granted, so
/// that the setting never claims what is not so. Main thread; failures are silent.
class LaunchAtLogin {
public:
    LaunchAtLogin(LoginItem& loginItem, PreferenceStore& preferences)
        : loginItem_(loginItem), preferences_(preferences) {}

    /// Brings the login item in line with the stored wish; at launch.
    void sync();
    /// Follows the user's new wish, already stored; takes it back where it cannot be granted.
    void wishChanged(bool wanted);
    /// Overwrites the stored wish with what is so.
    void adoptActualState();

private:
    [[nodiscard]] bool isRegistered() const;
    [[nodiscard]] bool apply(bool wanted);

    LoginItem& loginItem_;
    PreferenceStore& preferences_;
};

}  // namespace stowpocket
