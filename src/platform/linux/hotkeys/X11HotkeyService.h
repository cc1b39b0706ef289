// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/hotkeys/X11KeyGrabs.h"
#include "platform/linux/input/Keys.h"
#include "platform/linux/x11/X11Events.h"
#include "services/Input.h"

#include <list>

namespace stowpocket {

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
