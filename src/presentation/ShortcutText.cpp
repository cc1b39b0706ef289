// SPDX-License-Identifier: MIT
#include "presentation/ShortcutText.h"

#include "foundation/Invariant.h"
#include "services/Input.h"

#include <array>
#include <utility>

namespace stowpocket {

std::string shortcutDisplayText(std::int64_t modifiers, std::string_view keyCharacter) {
    constexpr std::array<std::pair<std::int64_t, std::string_view>, 4> glyphs{{
        {modifierFlag::control, "\u2303"},
        {modifierFlag::option, "\u2325"},
        {modifierFlag::shift, "\u21E7"},
        {modifierFlag::command, "\u2318"},
    }};
    invariant(modifiers >= 0, "modifier flags of a shortcut are not negative");
    std::string text;
    if (keyCharacter.empty())
        return text;
    for (const auto& [flag, glyph] : glyphs) {
        if ((modifiers & flag) != 0)
            text += glyph;
    }
    return text.append(keyCharacter);
}

}  // namespace stowpocket
