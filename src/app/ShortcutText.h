// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace stowpocket {

/// The device-independent modifier bits of key events, as shortcuts store them.
namespace modifierFlag {
inline constexpr std::int64_t shift = 0x20000;
inline constexpr std::int64_t control = 0x40000;
inline constexpr std::int64_t option = 0x80000;
inline constexpr std::int64_t command = 0x100000;
}  // namespace modifierFlag

/// A shortcut as shown to the user: the glyphs of its modifiers in the platform's customary order, then the key's
/// character. Empty when there is no character. `modifiers` is never negative.
[[nodiscard]] std::string shortcutDisplayText(std::int64_t modifiers, std::string_view keyCharacter);

}  // namespace stowpocket
