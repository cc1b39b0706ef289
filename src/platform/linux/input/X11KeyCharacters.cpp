// SPDX-License-Identifier: MIT
#include "platform/linux/input/X11KeyCharacters.h"

#include "platform/linux/input/KeyCodes.h"
#include "platform/linux/input/KeyNames.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace stowpocket {
namespace {

using Keymap = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;

/// Where the state of the modifiers tells the layout in force (X Keyboard Extension, section 2.2.2).
constexpr std::uint32_t layoutShift = 13;
constexpr std::uint32_t layoutMask = 3;

/// What the key types in that layout; a key that lacks it is as in its first.
std::string characterIn(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t wanted) {
    const xkb_layout_index_t layout = wanted < xkb_keymap_num_layouts_for_key(keymap, key) ? wanted : 0;
    const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, key, layout);
    std::string character;
    for (xkb_level_index_t level = 0; character.empty() && level < levels; ++level) {
        const xkb_keysym_t* symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap, key, layout, level, &symbols) > 0)
            character = characterOf(*symbols);
    }
    return character;
}

}  // namespace

X11KeyCharacters::X11KeyCharacters(xcb_connection_t* connection)
    : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), xkb_context_unref) {}

std::string X11KeyCharacters::operator()(std::uint8_t key, std::uint32_t state) const {
    const std::int32_t device = context_ ? xkb_x11_get_core_keyboard_device_id(connection_) : -1;
    std::string character;
    if (device >= 0) {
        const Keymap keymap(
            xkb_x11_keymap_new_from_device(context_.get(), connection_, device, XKB_KEYMAP_COMPILE_NO_FLAGS),
            xkb_keymap_unref);
        if (keymap)
            character = characterIn(keymap.get(), key, state >> layoutShift & layoutMask);
    }
    return character.empty() ? nameOfKey(virtualKeyOf(key)) : character;
}

}  // namespace stowpocket
