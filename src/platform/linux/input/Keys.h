// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct xkb_context;
struct xkb_keymap;

namespace stowpocket {

/// The virtual key code of the physical key that X11 and Wayland number `key` (the kernel's code plus 8), whatever
/// character the layout puts on it. A key that the reference keyboard lacks gets a code of its own, above all others.
[[nodiscard]] std::uint16_t virtualKeyOf(std::uint8_t key);

/// The reverse: the physical key with this virtual key code. Empty for a code that no key of this keyboard has.
[[nodiscard]] std::optional<std::uint8_t> physicalKeyOf(std::uint32_t virtualKey);

/// The device-independent flag that the reference keyboard sets on every event of this key: function key or numeric
/// pad, both for arrows, or none.
[[nodiscard]] std::int64_t ownFlagsOf(std::uint16_t virtualKey);

/// Device-independent flags of key events, beside the four of `modifierFlag`.
namespace keyFlag {
inline constexpr std::int64_t capsLock = 0x10000;
inline constexpr std::int64_t numericPad = 0x200000;
inline constexpr std::int64_t function = 0x800000;
}  // namespace keyFlag

/// The modifier bits that the X protocol names itself; what Mod1 to Mod5 mean is up to the keyboard map.
namespace x11Modifier {
inline constexpr std::uint16_t shift = 0x1;
inline constexpr std::uint16_t lock = 0x2;
inline constexpr std::uint16_t control = 0x4;
inline constexpr std::uint16_t mod1 = 0x8;
inline constexpr std::uint16_t mod4 = 0x40;
inline constexpr std::uint16_t all = 0xFF;
}  // namespace x11Modifier

/// The modifier bits of these keys under the present keyboard map. A key that is no modifier has 0.
struct ModifierLayout {
    std::uint16_t alt = x11Modifier::mod1;
    std::uint16_t super = x11Modifier::mod4;
    std::uint16_t numLock = 0;
    std::uint16_t scrollLock = 0;
    friend bool operator==(const ModifierLayout&, const ModifierLayout&) = default;
};

/// Derives the layout from the keys of each of the eight modifiers. `keySymbols` returns the symbols on a key.
[[nodiscard]] ModifierLayout
modifierLayoutOf(const std::array<std::vector<std::uint8_t>, 8>& keysOfModifier,
                 const std::function<std::vector<std::uint32_t>(std::uint8_t)>& keySymbols);

/// `carbonModifier` bits as the X protocol's.
[[nodiscard]] std::uint16_t x11ModifiersOf(std::uint32_t carbonModifiers, const ModifierLayout& layout);

/// Every combination of states that the lock keys can be in.
[[nodiscard]] std::vector<std::uint16_t> lockStates(const ModifierLayout& layout);

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
