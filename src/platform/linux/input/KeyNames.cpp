// SPDX-License-Identifier: MIT
#include "platform/linux/input/KeyNames.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace stowpocket {
namespace {

/// From dead_grave on, as keysymdef.h numbers them.
constexpr std::uint32_t firstDeadSymbol = 0xFE50;
constexpr std::array<std::string_view, 13> accents{"`", "´", "^", "~", "¯", "˘", "˙", "¨", "˚", "˝", "ˇ", "¸", "˛"};

constexpr std::array<std::pair<std::uint16_t, std::string_view>, 37> names{{
    {122, "F1"}, {120, "F2"},  {99, "F3"},   {118, "F4"},  {96, "F5"},   {97, "F6"},   {98, "F7"},   {100, "F8"},
    {101, "F9"}, {109, "F10"}, {103, "F11"}, {111, "F12"}, {105, "F13"}, {107, "F14"}, {113, "F15"}, {106, "F16"},
    {64, "F17"}, {79, "F18"},  {80, "F19"},  {90, "F20"},  {36, "↩"},    {76, "⌤"},    {48, "⇥"},    {49, "␣"},
    {51, "⌫"},   {117, "⌦"},   {53, "⎋"},    {71, "⌧"},    {123, "←"},   {124, "→"},   {125, "↓"},   {126, "↑"},
    {115, "↖"},  {119, "↘"},   {116, "⇞"},   {121, "⇟"},   {114, "⎀"},
}};

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

}  // namespace stowpocket
