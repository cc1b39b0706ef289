// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <QColor>
#include <QFont>

class QPalette;

namespace stowpocket {

/// What a colour is for. Views name the role; the palette in force decides the colour.
enum class ColorRole {
    primary,     ///< text that is read first
    secondary,   ///< text beside it
    tertiary,    ///< text that may be overlooked
    orange,      ///< the product's
    accent,      ///< what the user's own accent colour is for, where the desktop has one; else orange
    red,         ///< missing files and what destroys
    banner,      ///< orange below white text
    accentFill,  ///< the accent below white text
    onBanner,    ///< text and symbols on a banner or an accent
    redDisc,     ///< red below a white symbol
    onDisc,      ///< a symbol on a disc
    controlBackground,
    formBackground,  ///< what the rows of a form lie on
    separator,
    focus,  ///< the ring around what has the keyboard
};

enum class Appearance { light, dark };

/// The size at which captions are set, in points.
inline constexpr int captionPointSize = 10;

/// Colours follow the palette of the widget that asks and the system's own colours, whenever it paints, so a change
/// of the desktop's colours shows at once. One point of the layout is one logical pixel, for text as for everything
/// else: a layout drawn for points keeps its proportions, and the screen's scale factor enlarges all of it together.
namespace Theme {

[[nodiscard]] Appearance appearance(const QPalette& palette);
/// The colours of a dark desktop that does not say which ones it has.
[[nodiscard]] QPalette darkPalette();
/// Makes the program look so. Colours that the desktop has given to Qt already stay where they look so themselves.
void setAppearance(Appearance wanted);
[[nodiscard]] QColor color(ColorRole role, const QPalette& palette);
[[nodiscard]] QColor color(ColorRole role, const QPalette& palette, double opacity);
/// The desktop's font in this size and weight.
[[nodiscard]] QFont font(int pointSize, FontWeight weight = FontWeight::regular);

}  // namespace Theme
}  // namespace stowpocket
