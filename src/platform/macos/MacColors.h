// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

namespace stowpocket {

/// Colours of the system's palette.
enum class MacColor { secondaryLabel, tertiaryLabel, controlBackground, orange, red, controlAccent };

/// Red, green, blue and alpha, each from 0 to 1, as the system and its user have them at this moment for light or
/// dark windows. None for a colour that has no such components. Main thread.
[[nodiscard]] std::optional<std::array<double, 4>> rgbaOf(MacColor color, bool isDark);

}  // namespace stowpocket
