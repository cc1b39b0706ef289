// SPDX-License-Identifier: MIT
#include "app/HotkeyManager.h"

#include "app/Settings.h"
#include "foundation/Invariant.h"
#include "foundation/Signal.h"
#include "services/Input.h"

#include <array>
#include <limits>
#include <utility>

namespace stowpocket {
namespace {

/// Statuses of the Carbon event manager.
constexpr std::int32_t noErr = 0;
constexpr std::int32_t eventNotHandledErr = -9874;

}  // namespace

std::uint32_t carbonModifiers(std::int64_t modifierFlags) {
    constexpr std::array<std::pair<std::int64_t, std::uint32_t>, 4> table{{
        {modifierFlag::command, carbonModifier::cmdKey},
        {modifierFlag::option, carbonModifier::optionKey},
        {modifierFlag::control, carbonModifier::controlKey},
        {modifierFlag::shift, carbonModifier::shiftKey},
    }};
    std::uint32_t modifiers = 0;
    for (const auto& [flag, modifier] : table) {
        if ((modifierFlags & flag) != 0)
            modifiers |= modifier;
    }
    return modifiers;
}

HotkeyManager::HotkeyManager(HotkeyService& service, PreferenceStore& preferences,
                             NotificationCenter& notificationCenter)
    : service_(service), preferences_(preferences), notificationCenter_(notificationCenter) {
    service_.installEventHandler([this](const HotkeyIdentifier* pressed) { return handleHotkey(pressed); });
}

void HotkeyManager::registerShelfHotkey() {
    shelfHotKeyRef_.reset();
    shelfHotKeyRef_ =
        registration(preferenceKey::shelfHotkeyKeyCode, preferenceKey::shelfHotkeyModifiers, shelfHotkey);
}

void HotkeyManager::registerQuickDropHotkey() {
    quickDropHotKeyRef_.reset();
    quickDropHotKeyRef_ =
        registration(preferenceKey::quickDropKeyCode, preferenceKey::quickDropModifiers, quickDropHotkey);
}

bool HotkeyManager::isTaken(const HotkeyIdentifier& hotkey) const {
    const bool isShelf = hotkey == shelfHotkey;
    const auto& registered = isShelf ? shelfHotKeyRef_ : quickDropHotKeyRef_;
    const std::string_view key = isShelf ? preferenceKey::shelfHotkeyKeyCode : preferenceKey::quickDropKeyCode;
    return registered == nullptr && preferences_.integer(key) >= 0 && service_.source() == HotkeySource::windowSystem;
}

std::unique_ptr<HotkeyRegistration> HotkeyManager::registration(std::string_view keyCodeKey,
                                                                std::string_view modifiersKey,
                                                                HotkeyIdentifier identifier) const {
    const std::int64_t keyCode = preferences_.integer(keyCodeKey);
    if (keyCode < 0)
        return nullptr;
    const std::int64_t modifiers = preferences_.integer(modifiersKey);
    invariant(modifiers >= 0, "modifier flags of a shortcut are not negative");
    invariant(keyCode <= std::numeric_limits<std::uint32_t>::max(), "the key code of a shortcut fits in 32 bits");
    return service_.registerHotkey(static_cast<std::uint32_t>(keyCode), carbonModifiers(modifiers), identifier);
}

std::int32_t HotkeyManager::handleHotkey(const HotkeyIdentifier* pressed) const {
    if (pressed == nullptr)
        return eventNotHandledErr;
    if (pressed->id == shelfHotkey.id)
        notificationCenter_.post(togglePopoverNotification);
    else if (pressed->id == quickDropHotkey.id)
        notificationCenter_.post(quickDropNotification);
    return noErr;
}

}  // namespace stowpocket
