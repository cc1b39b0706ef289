// SPDX-License-Identifier: MIT
#include "app/LaunchAtLogin.h"

#include "app/Preferences.h"
#include "services/LoginItem.h"

namespace stowpocket {

void LaunchAtLogin::sync() {
    const bool wanted = preferences_.boolean(preferenceKey::launchAtLogin);
    const bool registered = isRegistered();
    if (wanted != registered && !apply(wanted))
        preferences_.setValue(preferenceKey::launchAtLogin, registered);
}

void LaunchAtLogin::wishChanged(bool wanted) {
    if (!apply(wanted))
        adoptActualState();
}

void LaunchAtLogin::adoptActualState() {
    preferences_.setValue(preferenceKey::launchAtLogin, isRegistered());
}

/// A login item that waits for the user's approval does not start anything yet.
bool LaunchAtLogin::isRegistered() const {
    return loginItem_.status() == LoginItem::Status::enabled;
}

bool LaunchAtLogin::apply(bool wanted) {
    return wanted ? loginItem_.registerItem() : loginItem_.unregisterItem();
}

}  // namespace stowpocket
