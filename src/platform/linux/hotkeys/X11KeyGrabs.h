// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/KeyTables.h"

#include <cstdint>
#include <optional>
#include <xcb/xcb.h>

namespace stowpocket {

/// A key with modifiers, whatever the lock keys say.
struct KeyCombination {
    std::uint8_t key = 0;
    std::uint32_t carbonModifiers = 0;
    friend bool operator==(const KeyCombination&, const KeyCombination&) = default;
};

/// Grabs of key combinations on the root window: their events come to this connection, whoever has the focus. A grab
/// is held for every state of the lock keys or not at all.
class X11KeyGrabs {
public:
    explicit X11KeyGrabs(xcb_connection_t* connection);

    [[nodiscard]] xcb_window_t root() const { return root_; }
    [[nodiscard]] const ModifierLayout& layout() const { return layout_; }
    /// Asks the server what the modifiers mean now; true when that has changed since.
    [[nodiscard]] bool readLayout();

    /// False when another program holds the combination.
    [[nodiscard]] bool grab(const KeyCombination& combination) const;
    /// Before a changed layout is read, for grabs made under the old one.
    void ungrab(const KeyCombination& combination) const;

private:
    xcb_connection_t* const connection_;
    const xcb_window_t root_;
    ModifierLayout layout_;
};

/// Tells a hotkey's press from the repeats of a key that stays down. A repeat comes either as a press alone, or as a
/// release and a press of the same moment.
class KeyRepeatFilter {
public:
    /// Whether the key went down just now, and did not merely stay there.
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
