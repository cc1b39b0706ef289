// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/CoreServices.h"
#include "services/Input.h"

#include <string_view>

namespace stowpocket {

/// The preference keys under which one shortcut is stored.
struct ShortcutKeys {
    std::string_view keyCode;    ///< integer; negative for no shortcut
    std::string_view modifiers;  ///< integer
    std::string_view keyChar;    ///< string
};

/// What the control for one shortcut shows at one moment.
struct HotkeyRecorderPresentation {
    enum class State { recording, set, none };

    State state = State::none;
    std::string text;
    bool showsClearButton = false;
    bool conflicts = false;

    friend bool operator==(const HotkeyRecorderPresentation&, const HotkeyRecorderPresentation&) = default;
};

/// Records and clears one of the shortcuts. While it records, it takes every key press of this program, and it stays
/// alive until a shortcut or Escape ends the recording, even if its control is destroyed. Changes are stored and
/// announced at once. Main thread only.
class HotkeyRecorder : public std::enable_shared_from_this<HotkeyRecorder> {
public:
    /// All of it outlives the event monitors.
    struct Services {
        CoreServices core;
        EventMonitors& eventMonitors;
    };

    /// `notification` is posted after every change of `shortcut`; `other` is the shortcut that it may conflict with.
    [[nodiscard]] static std::shared_ptr<HotkeyRecorder> make(const Services& services, const ShortcutKeys& shortcut,
                                                              const ShortcutKeys& other,
                                                              std::string_view notification);

    void toggleRecording();
    void clear();

    [[nodiscard]] HotkeyRecorderPresentation shown() const;
    /// Emitted when `shown()` may have changed.
    Signal<> changed;

private:
    HotkeyRecorder(const Services& services, const ShortcutKeys& shortcut, const ShortcutKeys& other,
                   std::string_view notification);

    [[nodiscard]] bool isRecording() const { return monitor_ != nullptr; }
    void startRecording();
    void stopRecording();
    void keyDown(const KeyEvent& event);
    void observe();
    /// Emits one change for all values: after some of them the shortcut would be one that the user never chose.
    void store(std::int64_t keyCode, std::int64_t modifiers, std::string keyChar);
    void preferenceChanged(std::string_view key);
    [[nodiscard]] bool conflicts() const;

    const Services services_;
    const ShortcutKeys shortcut_;
    const ShortcutKeys other_;
    const std::string notification_;
    std::unique_ptr<EventMonitorToken> monitor_;
    Subscription observation_;
};

}  // namespace stowpocket
