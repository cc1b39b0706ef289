// SPDX-License-Identifier: MIT
#include "platform/linux/input/KeyCharacters.h"

#include "platform/linux/input/KeyTables.h"

#include <QString>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace stowpocket {
namespace {

/// In the order of keysymdef.h, from dead_grave on.
constexpr std::uint32_t firstDeadSymbol = 0xFE50;
constexpr std::array<std::string_view, 13> accents{"`", "´", "^", "~", "¯", "˘", "˙", "¨", "˚", "˝", "ˇ", "¸", "˛"};

constexpr std::array<std::pair<std::uint16_t, std::string_view>, 37> names{{
    {122, "F1"}, {120, "F2"},  {99, "F3"},   {118, "F4"},  {96, "F5"},   {97, "F6"},   {98, "F7"},   {100, "F8"},
    {101, "F9"}, {109, "F10"}, {103, "F11"}, {111, "F12"}, {105, "F13"}, {107, "F14"}, {113, "F15"}, {106, "F16"},
    {64, "F17"}, {79, "F18"},  {80, "F19"},  {90, "F20"},  {36, "↩"},    {76, "⌤"},    {48, "⇥"},    {49, "␣"},
    {51, "⌫"},   {117, "⌦"},   {53, "⎋"},    {71, "⌧"},    {123, "←"},   {124, "→"},   {125, "↓"},   {126, "↑"},
    {115, "↖"},  {119, "↘"},   {116, "⇞"},   {121, "⇟"},   {114, "⎀"},
}};

/// The bits of the modifier state that hold the current layout (X Keyboard Extension, section 2.2.2).
constexpr std::uint32_t layoutShift = 13;
constexpr std::uint32_t layoutMask = 3;

/// What the key types in that layout. A key without that layout uses its first one.
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

std::string characterOf(std::uint32_t symbol) {
    const std::size_t accent = symbol - firstDeadSymbol;
    if (symbol >= firstDeadSymbol && accent < accents.size())
        return std::string(accents.at(accent));
    std::array<char, 8> text{};
    xkb_keysym_to_utf8(symbol, text.data(), text.size());
    const auto first = static_cast<unsigned char>(text.front());
    const bool isVisible = first > ' ' && first != 0x7F;
    return isVisible ? std::string(text.data()) : std::string();
}

std::string nameOfKey(std::uint16_t virtualKey) {
    const auto* const name = std::ranges::find(names, virtualKey, &std::pair<std::uint16_t, std::string_view>::first);
    return name == names.end() ? std::string() : std::string(name->second);
}

X11KeyCharacters::X11KeyCharacters(xcb_connection_t* connection)
    : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), xkb_context_unref) {}

X11KeyCharacters::Keymap X11KeyCharacters::presentKeymap() const {
    const std::int32_t device = context_ ? xkb_x11_get_core_keyboard_device_id(connection_) : -1;
    return {device < 0
                ? nullptr
                : xkb_x11_keymap_new_from_device(context_.get(), connection_, device, XKB_KEYMAP_COMPILE_NO_FLAGS),
            xkb_keymap_unref};
}

std::string X11KeyCharacters::operator()(std::uint8_t key, std::uint32_t state) const {
    const Keymap keymap = presentKeymap();
    const std::string character =
        keymap ? characterIn(keymap.get(), key, state >> layoutShift & layoutMask) : std::string();
    return character.empty() ? nameOfKey(virtualKeyOf(key))
                             : QString::fromStdString(character).toUpper().toStdString();
}

std::string X11KeyCharacters::symbolName(std::uint32_t virtualKey) const {
    const std::optional<std::uint8_t> key = physicalKeyOf(virtualKey);
    const Keymap keymap = presentKeymap();
    const xkb_keysym_t* symbols = nullptr;
    std::array<char, 64> name{};
    if (key && keymap && xkb_keymap_key_get_syms_by_level(keymap.get(), *key, 0, 0, &symbols) == 1 &&
        xkb_keysym_get_name(*symbols, name.data(), name.size()) > 0)
        return name.data();
    return {};
}

}  // namespace stowpocket
