// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/Keys.h"
#include "platform/linux/x11/X11Events.h"
#include "services/Input.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <list>
#include <optional>

namespace stowpocket {

/// A key with modifiers, in any state of the lock keys.
struct KeyCombination {
    std::uint8_t key = 0;
    std::uint32_t carbonModifiers = 0;
    friend bool operator==(const KeyCombination&, const KeyCombination&) = default;
};

/// Grabs key combinations on the root window, so that this connection gets their events whichever window has the
/// focus. A combination is grabbed for every state of the lock keys or not at all.
class X11KeyGrabs {
public:
    explicit X11KeyGrabs(xcb_connection_t* connection);

    [[nodiscard]] xcb_window_t root() const { return root_; }
    [[nodiscard]] const ModifierLayout& layout() const { return layout_; }
    /// Asks the server for the modifier layout. Returns whether it has changed.
    [[nodiscard]] bool readLayout();

    /// False when another program holds the combination.
    [[nodiscard]] bool grab(const KeyCombination& combination) const;
    /// Releases a grab that was made under this layout, so it comes before a changed layout is read.
    void ungrab(const KeyCombination& combination) const;

private:
    xcb_connection_t* const connection_;
    const xcb_window_t root_;
    ModifierLayout layout_;
};

/// Tells a hotkey's press from the repeats of a key that stays down. A repeat is either a press alone, or a release
/// and a press with the same time.
class KeyRepeatFilter {
public:
    /// Returns whether the key has just gone down, rather than stayed down.
    [[nodiscard]] bool isNewPress(std::uint8_t key, std::uint32_t time) {
        const bool repeats = key_ == key && (!releasedAt_ || *releasedAt_ == time);
        key_ = key;
        releasedAt_.reset();
        return !repeats;
    }
    void noteRelease(std::uint8_t key, std::uint32_t time) {
        if (key_ == key)
            releasedAt_ = time;
    }

private:
    std::uint8_t key_ = 0;
    std::optional<std::uint32_t> releasedAt_;
};

/// Hotkeys as key grabs on Qt's own connection, so that Qt knows the time of the press and window managers let the
/// handler take the focus. A key is identified by its place on the keyboard, so a change of the layout does not move
/// it. Outlives the registrations.
class X11HotkeyService : public HotkeyService, private X11EventFilter {
public:
    explicit X11HotkeyService(xcb_connection_t* connection);

    void installEventHandler(Handler handler) override { handler_ = std::move(handler); }
    /// Of two equal hotkeys the later one fires, as with monitors, until it is unregistered.
    [[nodiscard]] std::unique_ptr<HotkeyRegistration> registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                                     HotkeyIdentifier identifier) override;

    /// A grab keeps its key from this program's own windows too. `takes` gets each press before the hotkey fires,
    /// and returns whether a window took it.
    void setOwnWindows(std::function<bool(const KeyEvent&)> takes) { ownWindowsTake_ = std::move(takes); }

private:
    struct Hotkey {
        KeyCombination combination;
        HotkeyIdentifier identifier;
        bool grabbed = true;
    };
    class Registration;

    bool handleEvent(const xcb_generic_event_t& event) override;
    [[nodiscard]] bool isGrabbed(const KeyCombination& combination) const;
    void keyPressed(const xcb_key_press_event_t& event);
    void fire(const KeyEvent& event, HotkeyIdentifier identifier);
    void scheduleMappingCheck();
    void checkMapping();

    X11KeyGrabs grabs_;
    const X11KeyCharacters characters_;
    Handler handler_;
    std::function<bool(const KeyEvent&)> ownWindowsTake_;
    /// The most recently registered one comes first.
    std::list<Hotkey> hotkeys_;
    KeyRepeatFilter repeats_;
    std::uint8_t keyboardExtensionEvent_ = 0;
    bool mappingCheckScheduled_ = false;
};

}  // namespace stowpocket
