// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace stowpocket {

/// A key combination as the freedesktop shortcuts specification writes it, such as "ALT+SHIFT+s". Keys are named by
/// what the reference keyboard has on them. Empty for a key that has no name there.
[[nodiscard]] std::string shortcutTrigger(std::uint32_t keyCode, std::uint32_t carbonModifiers);

}  // namespace stowpocket
