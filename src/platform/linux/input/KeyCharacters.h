// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <xcb/xcb.h>

struct xkb_context;

namespace stowpocket {

/// The visible character that a key symbol, as X11 numbers them, stands for; empty where it is none. A dead key
/// stands for its accent.
[[nodiscard]] std::string characterOf(std::uint32_t symbol);

/// What is written on a key that types nothing visible, by its virtual key code; empty where that is unknown.
[[nodiscard]] std::string nameOfKey(std::uint16_t virtualKey);

/// What the keys of the X11 keyboard type. Asks the server each time, which takes a quarter of a millisecond, so that
/// no change of the keyboard map is missed. The connection is one that uses the XKEYBOARD extension.
class X11KeyCharacters {
public:
    explicit X11KeyCharacters(xcb_connection_t* connection);

    /// Without modifiers, in capitals, in the layout that is in force in this state of the modifiers; else what is
    /// written on it.
    [[nodiscard]] std::string operator()(std::uint8_t key, std::uint32_t state) const;

private:
    xcb_connection_t* const connection_;
    const std::shared_ptr<xkb_context> context_;
};

}  // namespace stowpocket
