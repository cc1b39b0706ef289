// SPDX-License-Identifier: MIT
#include "platform/linux/input/Keys.h"

#include "services/Input.h"

#include <QString>

#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace stowpocket {
namespace {

/// Kernel key codes (linux/input-event-codes.h) count from here in X11.
constexpr std::uint8_t firstKey = 8;
/// Keys of this keyboard alone follow the 128 virtual key codes.
constexpr std::uint16_t firstOwnCode = 0x100;
constexpr std::uint8_t none = 0xFF;

/// By kernel key code, in the rows of the keyboard.
constexpr std::array<std::uint8_t, 128> virtualKeys = [] {
    std::array<std::uint8_t, 128> table{};
    table.fill(none);
    const auto row = [&table](std::size_t at, std::initializer_list<std::uint8_t> codes) {
        std::copy(codes.begin(), codes.end(), table.begin() + at);
    };
    row(1, {53, 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24, 51});   // Escape, 1 to 0, - = Delete
    row(15, {48, 12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30, 36});  // Tab, Q to ], Return
    row(29, {59, 0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39, 50});            // Control, A to ', grave
    row(42, {56, 42, 6, 7, 8, 9, 11, 45, 46, 43, 47, 44, 60});          // Shift, backslash, Z to /, right Shift
    row(55, {67, 58, 49, 57});                                          // pad *, Option, Space, Caps Lock
    row(59, {122, 120, 99, 118, 96, 97, 98, 100, 101, 109});            // F1 to F10
    row(69, {71});                                                      // Clear, where Num Lock lies
    row(71, {89, 91, 92, 78, 86, 87, 88, 69, 83, 84, 85, 82, 65});      // pad 7 8 9 - 4 5 6 + 1 2 3 0 .
    row(86, {10, 103, 111, 94});                                        // the key beside Z, F11, F12, underscore
    row(92, {104, 0xFF, 102, 95, 76, 62, 75});                          // Kana, Eisu, pad comma Enter, Control, pad /
    row(100, {61});                                                     // right Option
    row(102, {115, 126, 116, 123, 124, 119, 125, 121, 114, 117});       // Home Up PageUp Left Right End Down PageDown
                                                                        // Help, forward Delete
    row(113, {74, 73, 72});                                             // Mute, volume
    row(117, {81});                                                     // pad =
    row(124, {93, 55, 54, 110});                                        // yen, Command, menu
    return table;
}();
constexpr std::uint8_t f13 = 183;
constexpr std::array<std::uint8_t, 8> fromF13{105, 107, 113, 106, 64, 79, 80, 90};

std::uint8_t tabled(std::uint8_t kernelCode) {
    if (kernelCode < virtualKeys.size())
        return virtualKeys.at(kernelCode);
    if (kernelCode >= f13 && kernelCode < f13 + fromF13.size())
        return fromF13.at(static_cast<std::size_t>(kernelCode - f13));
    return none;
}

bool among(std::uint16_t code, const auto& codes) {
    return std::ranges::find(codes, code) != codes.end();
}

/// Key symbols by their numbers in the X protocol (keysymdef.h).
constexpr std::uint32_t scrollLockSymbol = 0xFF14;
constexpr std::uint32_t numLockSymbol = 0xFF7F;
constexpr std::uint32_t leftAltSymbol = 0xFFE9;
constexpr std::uint32_t rightAltSymbol = 0xFFEA;
constexpr std::uint32_t leftSuperSymbol = 0xFFEB;
constexpr std::uint32_t rightSuperSymbol = 0xFFEC;

/// The first three are always Shift, Lock and Control, whatever their keys.
constexpr std::size_t firstFreeModifier = 3;

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

std::uint16_t virtualKeyOf(std::uint8_t key) {
    const std::uint8_t known = key < firstKey ? none : tabled(static_cast<std::uint8_t>(key - firstKey));
    return known == none ? static_cast<std::uint16_t>(firstOwnCode + key) : known;
}

std::optional<std::uint8_t> physicalKeyOf(std::uint32_t virtualKey) {
    for (std::uint32_t key = firstKey; key <= 0xFF; ++key) {
        if (virtualKeyOf(static_cast<std::uint8_t>(key)) == virtualKey)
            return static_cast<std::uint8_t>(key);
    }
    return std::nullopt;
}

std::int64_t ownFlagsOf(std::uint16_t virtualKey) {
    constexpr std::array arrows{123, 124, 125, 126};
    constexpr std::array functionKeys{122, 120, 99,  118, 96, 97, 98, 100, 101, 109, 103, 111, 105,
                                      107, 113, 106, 64,  79, 80, 90, 114, 115, 116, 117, 119, 121};
    constexpr std::array pad{65, 67, 69, 71, 75, 76, 78, 81, 82, 83, 84, 85, 86, 87, 88, 89, 91, 92, 95};
    if (among(virtualKey, arrows))
        return keyFlag::function | keyFlag::numericPad;
    if (among(virtualKey, functionKeys))
        return keyFlag::function;
    return among(virtualKey, pad) ? keyFlag::numericPad : 0;
}

ModifierLayout modifierLayoutOf(const std::array<std::vector<std::uint8_t>, 8>& keysOfModifier,
                                const std::function<std::vector<std::uint32_t>(std::uint8_t)>& keySymbols) {
    ModifierLayout found{0, 0, 0, 0};
    const auto note = [](std::uint16_t& field, std::uint16_t bit) { field = field == 0 ? bit : field; };
    for (std::size_t modifier = firstFreeModifier; modifier < keysOfModifier.size(); ++modifier) {
        const auto bit = static_cast<std::uint16_t>(1u << modifier);
        for (const std::uint8_t key : keysOfModifier.at(modifier)) {
            for (const std::uint32_t symbol : keySymbols(key)) {
                if (symbol == leftAltSymbol || symbol == rightAltSymbol)
                    note(found.alt, bit);
                else if (symbol == leftSuperSymbol || symbol == rightSuperSymbol)
                    note(found.super, bit);
                else if (symbol == numLockSymbol)
                    note(found.numLock, bit);
                else if (symbol == scrollLockSymbol)
                    note(found.scrollLock, bit);
            }
        }
    }
    note(found.alt, x11Modifier::mod1);
    note(found.super, x11Modifier::mod4);
    return found;
}

std::uint16_t x11ModifiersOf(std::uint32_t carbonModifiers, const ModifierLayout& layout) {
    const auto when = [carbonModifiers](std::uint32_t bit, std::uint16_t mask) {
        return (carbonModifiers & bit) != 0 ? mask : std::uint16_t{0};
    };
    return static_cast<std::uint16_t>(
        when(carbonModifier::shiftKey, x11Modifier::shift) | when(carbonModifier::controlKey, x11Modifier::control) |
        when(carbonModifier::optionKey, layout.alt) | when(carbonModifier::cmdKey, layout.super));
}

std::vector<std::uint16_t> lockStates(const ModifierLayout& layout) {
    std::vector<std::uint16_t> states{0};
    for (const std::uint16_t lock : {x11Modifier::lock, layout.numLock, layout.scrollLock}) {
        if (lock == 0)
            continue;
        for (std::size_t at = states.size(); at-- > 0;)
            states.push_back(static_cast<std::uint16_t>(states.at(at) | lock));
    }
    return states;
}

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
