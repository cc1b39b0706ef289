// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace stowpocket {

/// A shortcut as shown to the user: the glyphs of its modifiers in the platform's customary order, then the key's
/// character. Empty when there is no character. `modifiers` is never negative.
[[nodiscard]] std::string shortcutDisplayText(std::int64_t modifiers, std::string_view keyCharacter);

}  // namespace stowpocket
