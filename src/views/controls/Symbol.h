// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <QColor>
#include <QImage>

#include <string_view>

namespace stowpocket {

/// The colours of a symbol: the drawing's own and, where it has a disc behind it, the disc's.
struct SymbolColors {
    QColor primary;
    QColor secondary = primary;
};

/// The program's own drawings by name, in any size, weight and colour. Main thread.
namespace Symbol {

/// The side of the square, in points, that a symbol takes beside text of this size.
[[nodiscard]] int side(double pointSize);
/// Sharp on a screen of that density; kept, so asking again is cheap. Null when there is no such drawing.
[[nodiscard]] QImage image(std::string_view name, double pointSize, FontWeight weight, const SymbolColors& colors,
                           double devicePixelRatio);

}  // namespace Symbol
}  // namespace stowpocket
