// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Symbol.h"
#include "views/controls/Theme.h"

#include <optional>

namespace stowpocket {

/// The system's own colour for the role on windows of that appearance, as it is now; none where the system leaves it
/// to the program.
[[nodiscard]] std::optional<QColor> systemColor(ColorRole role, Appearance appearance);

/// A symbol in the middle of a square of that many pixels, for text of that size in pixels. Null where there is none
/// of that name. Each desktop brings its own drawings.
[[nodiscard]] QImage drawnSymbol(std::string_view name, int pixels, double fontSize, FontWeight weight,
                                 const SymbolColors& colors);

}  // namespace stowpocket
