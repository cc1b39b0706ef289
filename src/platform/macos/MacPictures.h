// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "services/Pictures.h"
#include "services/StatusItem.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

// Pictures and colours of the system.
namespace stowpocket {

/// A picture as plain memory: rows from the top without gaps, four bytes a pixel in the order blue, green, red,
/// alpha, the colours multiplied by alpha, in sRGB.
struct Pixels {
    int width = 0;
    int height = 0;
    Bytes bytes;
};

/// Makes the toolkit's picture of pixels. Called on any thread.
using MakeImageContent = std::function<std::shared_ptr<const ImageContent>(const Pixels&)>;

/// Colours of the system's palette.
enum class MacColor { secondaryLabel, tertiaryLabel, controlBackground, orange, red, controlAccent };

/// Red, green, blue and alpha, each from 0 to 1, as the system and its user have them at this moment for light or
/// dark windows. None for a colour that has no such components. Main thread.
[[nodiscard]] std::optional<std::array<double, 4>> rgbaOf(MacColor color, bool isDark);

[[nodiscard]] std::unique_ptr<Thumbnails> makeQuickLookThumbnails(MakeImageContent makeContent);
[[nodiscard]] std::unique_ptr<WorkspaceIcons> makeMacWorkspaceIcons(MakeImageContent makeContent);

struct SymbolPicture {
    std::string_view name;
    /// In pixels.
    double fontSize = 0;
    FontWeight weight = FontWeight::regular;
    /// Red, green, blue and alpha, each from 0 to 1.
    std::array<double, 4> primary{};
    std::array<double, 4> secondary{};
};

/// The system's symbol, in the middle of a square of that many pixels; none where it has none of that name. Main
/// thread.
[[nodiscard]] std::optional<Pixels> systemSymbolPixels(const SymbolPicture& symbol, int side);

}  // namespace stowpocket
