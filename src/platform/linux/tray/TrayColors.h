// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace stowpocket {

struct RgbColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const RgbColor&, const RgbColor&) = default;
};

/// What the bar says symbols should be drawn in: the first colour of _NET_SYSTEM_TRAY_COLORS, whose components have
/// 16 bits. None when the property is absent or cut short.
[[nodiscard]] std::optional<RgbColor> announcedForeground(std::span<const std::uint32_t> property);

/// White or nearly black, whichever stands out from the bar.
[[nodiscard]] RgbColor readableOn(RgbColor background);

}  // namespace stowpocket
