// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <QColor>
#include <QFont>
#include <QImage>

#include <string_view>

class QPalette;

namespace stowpocket {

/// What a colour is for. Views name the role; the palette in force decides the colour.
enum class ColorRole {
    primary,     ///< text that is read first
    secondary,   ///< text beside it
    tertiary,    ///< text that need not be noticed
    orange,      ///< the product's
    accent,      ///< the user's accent colour if the desktop has one, otherwise orange
    red,         ///< missing files and destructive actions
    banner,      ///< orange behind white text
    accentFill,  ///< the accent colour behind white text
    onBanner,    ///< text and symbols on a banner or an accent
    redDisc,     ///< red behind a white symbol
    onDisc,      ///< a symbol on a disc
    controlBackground,
    formBackground,  ///< behind the rows of a form
    separator,
    focus,  ///< the ring around the view with the keyboard focus
};

enum class Appearance { light, dark };

/// The text size of captions, in points.
inline constexpr int captionPointSize = 10;

/// Colours are derived from the widget's palette and the system's colours each time the widget paints, so a change of
/// the desktop's colours shows immediately. One point of the layout is one logical pixel, for text as for everything
/// else: the layout keeps its proportions, and the screen's scale factor enlarges all of it together.
namespace Theme {

[[nodiscard]] Appearance appearance(const QPalette& palette);
/// The colours for a dark desktop that does not define its own.
[[nodiscard]] QPalette darkPalette();
/// Gives the program this appearance. The desktop's own palette is kept if it already looks like that.
void setAppearance(Appearance wanted);
[[nodiscard]] QColor color(ColorRole role, const QPalette& palette);
[[nodiscard]] QColor color(ColorRole role, const QPalette& palette, double opacity);
/// The desktop's font in this size and weight.
[[nodiscard]] QFont font(int pointSize, FontWeight weight = FontWeight::regular);

}  // namespace Theme

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
