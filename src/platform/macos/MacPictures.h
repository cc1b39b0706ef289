// SPDX-License-Identifier: MIT
#pragma once

#include "platform/macos/Pixels.h"
#include "services/Pictures.h"
#include "services/StatusItem.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>

// Pictures that the system makes.
namespace stowpocket {

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
