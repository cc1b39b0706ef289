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

/// A picture in plain memory, in sRGB. Rows run from the top without gaps. A pixel has four bytes: blue, green, red
/// and alpha. The colours are multiplied by alpha.
struct Pixels {
    int width = 0;
    int height = 0;
    Bytes bytes;
};

/// Turns pixels into a picture of the toolkit. Called on any thread.
using MakeImageContent = std::function<std::shared_ptr<const ImageContent>(const Pixels&)>;

/// Colours of the system's palette.
enum class MacColor { secondaryLabel, tertiaryLabel, controlBackground, orange, red, controlAccent };

/// Returns red, green, blue and alpha, each from 0 to 1, as they are now in light or dark windows. Returns nothing
/// for a colour that has no such components. Main thread.
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

/// Returns the system's symbol in the middle of a square whose side is `side` pixels, or nothing when the system has
/// no symbol of that name. Main thread.
[[nodiscard]] std::optional<Pixels> systemSymbolPixels(const SymbolPicture& symbol, int side);

}  // namespace stowpocket
