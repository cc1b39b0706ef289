// SPDX-License-Identifier: MIT
#include "presentation/HotkeyRecorder.h"

#include "foundation/Signal.h"
#include "foundation/Text.h"
#include "presentation/Texts.h"
#include "services/Preferences.h"

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

constexpr std::uint16_t escapeKey = 53;
/// Shift alone is not enough: the shortcut would take a capital letter away from every program.
constexpr std::int64_t qualifyingModifiers = modifierFlag::control | modifierFlag::option | modifierFlag::command;
constexpr std::int64_t noKeyCode = -1;

}  // namespace

std::shared_ptr<HotkeyRecorder> HotkeyRecorder::make(const Services& services, const ShortcutKeys& shortcut,
                                                     const ShortcutKeys& other, std::string_view notification) {
    return std::shared_ptr<HotkeyRecorder>(new HotkeyRecorder(services, shortcut, other, notification));
}

HotkeyRecorder::HotkeyRecorder(const Services& services, const ShortcutKeys& shortcut, const ShortcutKeys& other,
                               std::string_view notification)
    : services_(services), shortcut_(shortcut), other_(other), notification_(notification) {
    observe();
}

void HotkeyRecorder::observe() {
    observation_ =
        services_.core.preferences.changed().connect([this](const std::string& key) { preferenceChanged(key); });
}

void HotkeyRecorder::toggleRecording() {
    if (isRecording())
        stopRecording();
    else
        startRecording();
}

void HotkeyRecorder::startRecording() {
    monitor_ = services_.eventMonitors.addLocalKeyDownMonitor([self = shared_from_this()](const KeyEvent& event) {
        self->keyDown(event);
        return true;
    });
    changed.emit();
}

void HotkeyRecorder::stopRecording() {
    monitor_.reset();
    changed.emit();
}

void HotkeyRecorder::keyDown(const KeyEvent& event) {
    if (event.keyCode == escapeKey) {
        stopRecording();
        return;
    }
    if ((event.modifierFlags & qualifyingModifiers) == 0)
        return;
    store(event.keyCode, event.modifierFlags & modifierFlag::deviceIndependent, event.capitals);
    stopRecording();
    services_.core.notifications.post(notification_);
}

void HotkeyRecorder::clear() {
    store(noKeyCode, 0, {});
    services_.core.notifications.post(notification_);
}

void HotkeyRecorder::store(std::int64_t keyCode, std::int64_t modifiers, std::string keyChar) {
    observation_.reset();
    services_.core.preferences.setValue(shortcut_.keyCode, keyCode);
    services_.core.preferences.setValue(shortcut_.modifiers, modifiers);
    services_.core.preferences.setValue(shortcut_.keyChar, std::move(keyChar));
    observe();
    changed.emit();
}

void HotkeyRecorder::preferenceChanged(std::string_view key) {
    const std::array keys{shortcut_.keyCode, shortcut_.modifiers, shortcut_.keyChar, other_.keyCode,
                          other_.modifiers};
    if (std::ranges::find(keys, key) != keys.end())
        changed.emit();
}

bool HotkeyRecorder::conflicts() const {
    const PreferenceStore& preferences = services_.core.preferences;
    const std::int64_t keyCode = preferences.integer(shortcut_.keyCode);
    return keyCode >= 0 && keyCode == preferences.integer(other_.keyCode) &&
           preferences.integer(shortcut_.modifiers) == preferences.integer(other_.modifiers);
}

HotkeyRecorderPresentation HotkeyRecorder::shown() const {
    const PreferenceStore& preferences = services_.core.preferences;
    const bool isSet = preferences.integer(shortcut_.keyCode) >= 0;
    const std::string keyChar = preferences.string(shortcut_.keyChar);

    HotkeyRecorderPresentation shown;
    shown.state = isSet ? HotkeyRecorderPresentation::State::set : HotkeyRecorderPresentation::State::none;
    shown.showsClearButton = isSet;
    shown.conflicts = conflicts();
    if (isRecording()) {
        shown.state = HotkeyRecorderPresentation::State::recording;
        shown.text = "Press shortcut\u2026";
    } else if (isSet && !keyChar.empty()) {
        const std::int64_t modifiers = preferences.integer(shortcut_.modifiers);
        shown.text = displayName(validUtf8(shortcutDisplayText(modifiers, keyChar)));
    } else {
        shown.text = "None - click to set";
    }
    return shown;
}

}  // namespace stowpocket
