// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace stowpocket {

/// The visible character that a key symbol, as X11 numbers them, stands for; empty where it is none. A dead key
/// stands for its accent.
[[nodiscard]] std::string characterOf(std::uint32_t symbol);

/// What is written on a key that types nothing visible, by its virtual key code; empty where that is unknown.
[[nodiscard]] std::string nameOfKey(std::uint16_t virtualKey);

}  // namespace stowpocket
