// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

class LoginItem;
class PreferenceStore;

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
