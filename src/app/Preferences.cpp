// SPDX-License-Identifier: MIT
#include "app/Preferences.h"

#include "services/Input.h"

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

}  // namespace stowpocket
