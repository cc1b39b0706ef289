// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stowpocket {

/// `bytes` as well-formed UTF-8: every byte that is not part of a valid sequence becomes U+FFFD. File names are
/// bytes; whatever is shown or stored as text goes through here first.
[[nodiscard]] std::string validUtf8(std::string_view bytes);

/// `text` with the ASCII capitals made small; other characters stay as they are.
[[nodiscard]] std::string asciiLowercased(std::string_view text);

/// `text` in capitals, as far as its letters have one of a single character.
[[nodiscard]] std::string uppercased(std::string_view text);

}  // namespace stowpocket
