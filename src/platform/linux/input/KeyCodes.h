// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace stowpocket {

/// The virtual key code of the physical key that X11 and Wayland number `key` (the kernel's code plus 8), whatever
/// character the layout puts on it. A key that the reference keyboard lacks gets a code of its own, above all others.
[[nodiscard]] std::uint16_t virtualKeyOf(std::uint8_t key);

/// The way back; none for a code that no key of this keyboard has.
[[nodiscard]] std::optional<std::uint8_t> physicalKeyOf(std::uint32_t virtualKey);

/// The device-independent flag that the reference keyboard sets on every event of this key: function key or numeric
/// pad, both for arrows, or none.
[[nodiscard]] std::int64_t ownFlagsOf(std::uint16_t virtualKey);

}  // namespace stowpocket
