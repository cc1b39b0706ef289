// SPDX-License-Identifier: MIT
#include "platform/linux/input/KeyDownMonitors.h"

#include "platform/linux/input/KeyCodes.h"
#include "platform/linux/input/KeyModifiers.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

/// Where the keyboard map makes a combination like Alt+Shift change the layout, its last key has a symbol of its own
/// (keysymdef.h: ISO_Lock to ISO_Level5_Lock).
bool isLayoutSymbol(std::uint32_t symbol) {
    return symbol >= 0xFE01 && symbol <= 0xFE13;
}

bool isModifierKey(const QKeyEvent& event) {
    constexpr std::array keys{Qt::Key_Shift,    Qt::Key_Control, Qt::Key_Meta,    Qt::Key_Alt,     Qt::Key_AltGr,
                              Qt::Key_CapsLock, Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_Hyper_L, Qt::Key_Hyper_R};
    return isLayoutSymbol(event.nativeVirtualKey()) || std::ranges::find(keys, event.key()) != keys.end();
}

/// The event as the reference platform would describe it, but for its characters.
KeyEvent keyEventOf(const QKeyEvent& event, std::uint8_t physicalKey) {
    constexpr std::array<std::pair<Qt::KeyboardModifier, std::int64_t>, 4> table{{
        {Qt::ShiftModifier, modifierFlag::shift},
        {Qt::ControlModifier, modifierFlag::control},
        {Qt::AltModifier, modifierFlag::option},
        {Qt::MetaModifier, modifierFlag::command},
    }};
    const std::uint16_t key = virtualKeyOf(physicalKey);
    std::int64_t flags = ownFlagsOf(key);
    for (const auto& [modifier, flag] : table) {
        if (event.modifiers().testFlag(modifier))
            flags |= flag;
    }
    if ((event.nativeModifiers() & x11Modifier::lock) != 0)
        flags |= keyFlag::capsLock;
    return {.keyCode = key, .modifierFlags = flags};
}

}  // namespace

KeyDownMonitors::KeyDownMonitors(Character character) : character_(std::move(character)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool KeyDownMonitors::swallows(const KeyEvent& event) const {
    return monitors_.anyOf([&event](const Handler& handler) { return handler(event); });
}

bool KeyDownMonitors::swallows(const QKeyEvent& event) {
    const std::pair<std::uint64_t, std::uint32_t> identity{event.timestamp(), event.nativeScanCode()};
    if (event.type() == QEvent::KeyPress && decided_ == identity) {
        decided_.reset();
        return swallowed_;
    }
    decided_ = identity;
    const auto key = static_cast<std::uint8_t>(event.nativeScanCode() & 0xFF);
    KeyEvent keyEvent = keyEventOf(event, key);
    keyEvent.charactersIgnoringModifiers = character_(key, event.nativeModifiers());
    swallowed_ = swallows(keyEvent);
    return swallowed_;
}

/// Qt first asks the window whether a shortcut is overridden, then runs shortcuts, then sends the press to the
/// window, which passes it on to its widgets. A monitor decides at the first of these, and the shortcuts of a press
/// that it swallows are overridden.
bool KeyDownMonitors::eventFilter(QObject* receiver, QEvent* event) {
    const bool isKeyDown = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKeyDown || !receiver->isWindowType())
        return false;
    auto* const keyEvent = static_cast<QKeyEvent*>(event);
    if (isModifierKey(*keyEvent) || !swallows(*keyEvent))
        return false;
    keyEvent->accept();
    return true;
}

}  // namespace stowpocket
