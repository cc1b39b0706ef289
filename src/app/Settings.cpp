// SPDX-License-Identifier: MIT
#include "app/Settings.h"

#include "services/Input.h"
#include "services/MainBundle.h"

namespace stowpocket {

void registerPreferenceDefaults(PreferenceStore& preferences) {
    constexpr std::int64_t optionShift = modifierFlag::option | modifierFlag::shift;
    constexpr std::int64_t keyCodeS = 1;
    constexpr std::int64_t keyCodeD = 2;
    PropertyValue::Dictionary defaults;
    defaults.emplace(preferenceKey::launchAtLogin, true);
    defaults.emplace(shelfCapacityKey, defaultShelfCapacity);
    defaults.emplace(preferenceKey::shelfHotkeyKeyCode, keyCodeS);
    defaults.emplace(preferenceKey::shelfHotkeyModifiers, optionShift);
    defaults.emplace(preferenceKey::shelfHotkeyKeyChar, "S");
    defaults.emplace(preferenceKey::quickDropKeyCode, keyCodeD);
    defaults.emplace(preferenceKey::quickDropModifiers, optionShift);
    defaults.emplace(preferenceKey::quickDropKeyChar, "D");
    defaults.emplace(preferenceKey::onboardingShown, false);
    preferences.registerDefaults(std::move(defaults));
}

void LaunchAtLogin::sync() {
    const bool wanted = preferences_.boolean(preferenceKey::launchAtLogin);
    const bool registered = isRegistered();
    if (wanted != registered && !apply(wanted))
        preferences_.setValue(preferenceKey::launchAtLogin, registered);
}

void LaunchAtLogin::settingChanged(bool wanted) {
    if (!apply(wanted))
        adoptActualState();
}

void LaunchAtLogin::adoptActualState() {
    preferences_.setValue(preferenceKey::launchAtLogin, isRegistered());
}

/// A login item that awaits the user's approval does not start anything yet.
bool LaunchAtLogin::isRegistered() const {
    return loginItem_.status() == LoginItem::Status::enabled;
}

bool LaunchAtLogin::apply(bool wanted) {
    return wanted ? loginItem_.registerItem() : loginItem_.unregisterItem();
}

}  // namespace stowpocket
