// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/Keys.h"

#include <cstdint>
#include <optional>
#include <xcb/xcb.h>

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

}  // namespace stowpocket
