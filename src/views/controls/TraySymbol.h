// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include <string_view>

class QPainter;

namespace stowpocket {

/// Draws the tray with an arrow into it, or the same tray filled, into the painter's rectangle of 24 by 24 units.
/// False where `name` is neither. Every start paints the icon of the program: as a drawing in a file it would need
/// the library of SVG, which nothing else in a program at rest does.
[[nodiscard]] bool paintTraySymbol(QPainter& painter, std::string_view name, double strokeWidth, const QColor& color);

}  // namespace stowpocket
