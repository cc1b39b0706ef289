// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <xcb/xcb.h>

struct xkb_context;
struct xkb_keymap;

namespace stowpocket {

/// The visible character of an X11 key symbol. Empty for a symbol without one; a dead key has its accent.
[[nodiscard]] std::string characterOf(std::uint32_t symbol);

/// The label of a key that types nothing visible, by its virtual key code. Empty for an unknown key.
[[nodiscard]] std::string nameOfKey(std::uint16_t virtualKey);

/// What the keys of the X11 keyboard type. Each call asks the server, which takes a quarter of a millisecond, so
/// that no change of the keyboard map is missed. The connection must have enabled the XKEYBOARD extension.
class X11KeyCharacters {
public:
    explicit X11KeyCharacters(xcb_connection_t* connection);

    /// The character without modifiers, in capitals, in the layout that this modifier state selects. A key without a
    /// character has its label.
    [[nodiscard]] std::string operator()(std::uint8_t key, std::uint32_t state) const;
    /// The name of the symbol in the first layout, by the key's virtual code. Empty for a key without one.
    [[nodiscard]] std::string symbolName(std::uint32_t virtualKey) const;

private:
    using Keymap = std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)>;
    /// Null when the server does not tell it.
    [[nodiscard]] Keymap presentKeymap() const;

    xcb_connection_t* const connection_;
    const std::shared_ptr<xkb_context> context_;
};

}  // namespace stowpocket
