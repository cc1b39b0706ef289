// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Theme.h"

#include <optional>

namespace stowpocket {

/// Returns the system's current colour for the role in windows of that appearance; none if the system leaves the
/// choice to the program.
[[nodiscard]] std::optional<QColor> systemColor(ColorRole role, Appearance appearance);

/// Returns a symbol in the middle of a square of `pixels`, for text of `fontSize` in pixels; null if there is none of
/// that name. Each desktop has its own drawings.
[[nodiscard]] QImage drawnSymbol(std::string_view name, int pixels, double fontSize, FontWeight weight,
                                 const SymbolColors& colors);

}  // namespace stowpocket
