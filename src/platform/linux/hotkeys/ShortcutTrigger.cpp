// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/ShortcutTrigger.h"

#include "services/Input.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace stowpocket {
namespace {

/// Key symbols by virtual key code, named as in xkbcommon-keysyms.h; empty where the keyboard has none.
constexpr std::array<std::string_view, 128> keyNames = [] {
    std::array<std::string_view, 128> names{};
    const auto row = [&names](std::size_t at, std::initializer_list<std::string_view> keys) {
        std::copy(keys.begin(), keys.end(), names.begin() + at);
    };
    row(0, {"a", "s", "d", "f", "h", "g", "z", "x", "c", "v", "less", "b", "q", "w", "e", "r", "y", "t"});
    row(18, {"1", "2", "3", "4", "6", "5", "equal", "9", "7", "minus", "8", "0"});
    row(30, {"bracketright", "o", "u", "bracketleft", "i", "p", "Return", "l", "j", "apostrophe", "k"});
    row(41, {"semicolon", "backslash", "comma", "slash", "n", "m", "period", "Tab", "space", "grave", "BackSpace"});
    row(53, {"Escape"});
    row(64, {"F17", "KP_Decimal", "", "KP_Multiply", "", "KP_Add"});
    row(75, {"KP_Divide", "KP_Enter", "", "KP_Subtract", "F18", "F19", "KP_Equal"});
    row(82, {"KP_0", "KP_1", "KP_2", "KP_3", "KP_4", "KP_5", "KP_6", "KP_7", "F20", "KP_8", "KP_9"});
    row(96,
        {"F5", "F6", "F7", "F3", "F8", "F9", "", "F11", "", "F13", "F16", "F14", "", "F10", "", "F12", "", "F15"});
    row(114, {"Insert", "Home", "Prior", "Delete", "F4", "End", "F2", "Next", "F1", "Left", "Right", "Down", "Up"});
    return names;
}();

}  // namespace

std::string shortcutTrigger(std::uint32_t keyCode, std::uint32_t carbonModifiers) {
    if (keyCode >= keyNames.size() || keyNames.at(keyCode).empty())
        return {};
    constexpr std::array<std::pair<std::uint32_t, std::string_view>, 4> modifiers{{
        {carbonModifier::controlKey, "CTRL+"},
        {carbonModifier::optionKey, "ALT+"},
        {carbonModifier::shiftKey, "SHIFT+"},
        {carbonModifier::cmdKey, "LOGO+"},
    }};
    std::string trigger;
    for (const auto& [bit, name] : modifiers) {
        if ((carbonModifiers & bit) != 0)
            trigger += name;
    }
    return trigger.append(keyNames.at(keyCode));
}

}  // namespace stowpocket
