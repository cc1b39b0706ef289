// SPDX-License-Identifier: MIT
#include "platform/linux/tray/TrayColors.h"

namespace stowpocket {

std::optional<RgbColor> announcedForeground(std::span<const std::uint32_t> property) {
    if (property.size() < 3)
        return std::nullopt;
    const auto highByte = [](std::uint32_t component) { return static_cast<std::uint8_t>(component >> 8u); };
    return RgbColor{highByte(property[0]), highByte(property[1]), highByte(property[2])};
}

RgbColor readableOn(RgbColor background) {
    constexpr RgbColor light{255, 255, 255};
    constexpr RgbColor dark{38, 38, 38};
    // Perceived brightness by the weights of ITU-R BT.601, in thousandths.
    const int brightness = 299 * background.red + 587 * background.green + 114 * background.blue;
    return brightness < 128 * 1000 ? light : dark;
}

}  // namespace stowpocket
