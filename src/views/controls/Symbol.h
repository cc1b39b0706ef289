// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <QColor>
#include <QImage>

#include <string_view>

namespace stowpocket {

/// The colours of a symbol: that of the drawing and, if there is a disc behind it, that of the disc.
struct SymbolColors {
    QColor primary;
    QColor secondary = primary;
};

/// The program's own drawings by name, in any size, weight and colour. Main thread.
namespace Symbol {

/// The side, in points, of the square that a symbol occupies beside text of this size.
[[nodiscard]] int side(double pointSize);
/// Sharp on a screen of that density. Images are cached, so repeated calls are cheap. Null if there is no drawing.
[[nodiscard]] QImage image(std::string_view name, double pointSize, FontWeight weight, const SymbolColors& colors,
                           double devicePixelRatio);

}  // namespace Symbol
}  // namespace stowpocket
