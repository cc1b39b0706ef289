// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace stowpocket {

/// A file's size as the platform writes it beside files: decimal units, bytes and KB as whole numbers, MB with at
/// most one decimal, larger units with at most two, no trailing zeros, and "Zero KB" for none.
[[nodiscard]] std::string byteCountText(std::int64_t bytes);

/// A shortcut as shown to the user: the glyphs of its modifiers in the platform's customary order, then the key's
/// character. Empty when there is no character. `modifiers` is never negative.
[[nodiscard]] std::string shortcutDisplayText(std::int64_t modifiers, std::string_view keyCharacter);

/// A file name, well-formed UTF-8, as one line of text: blanks stand for control characters and line ends, and the
/// invisible characters that would make "gpj.exe" read as "exe.jpg" are left out.
[[nodiscard]] std::string displayName(std::string_view filename);

}  // namespace stowpocket
