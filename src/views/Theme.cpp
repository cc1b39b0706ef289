// SPDX-License-Identifier: MIT
#include "views/Theme.h"

#include <QGuiApplication>
#include <QPalette>

namespace stowpocket::Theme {
namespace {

/// How strongly text of lesser rank stands out; the least of them is still legible on a window of either appearance.
constexpr double secondaryOpacity = 0.62;
constexpr double tertiaryOpacity = 0.5;
constexpr double separatorOpacity = 0.12;

/// Each pair is told from the window behind it, and the banner from the white text on it, by at least 3 to 1.
const QColor lightOrange(0xd9, 0x66, 0x00);
const QColor darkOrange(0xff, 0x9f, 0x0a);
const QColor lightRed(0xd7, 0x00, 0x15);
const QColor darkRed(0xff, 0x69, 0x61);

QColor faded(QColor color, double opacity) {
    color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return color;
}

QFont::Weight fontWeight(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return QFont::Normal;
    case FontWeight::medium:
        return QFont::Medium;
    case FontWeight::semibold:
        return QFont::DemiBold;
    case FontWeight::bold:
        return QFont::Bold;
    }
    return QFont::Normal;
}

}  // namespace

Appearance appearance(const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    return isDark ? Appearance::dark : Appearance::light;
}

QColor color(ColorRole role, const QPalette& palette) {
    const bool isDark = appearance(palette) == Appearance::dark;
    const QColor text = palette.color(QPalette::WindowText);
    switch (role) {
    case ColorRole::primary:
        return text;
    case ColorRole::secondary:
        return faded(text, secondaryOpacity);
    case ColorRole::tertiary:
        return faded(text, tertiaryOpacity);
    case ColorRole::accent:
        return isDark ? darkOrange : lightOrange;
    case ColorRole::red:
        return isDark ? darkRed : lightRed;
    case ColorRole::banner:
        return lightOrange;
    case ColorRole::redDisc:
        return lightRed;
    case ColorRole::onBanner:
    case ColorRole::onDisc:
        return Qt::white;
    case ColorRole::controlBackground:
        return palette.color(QPalette::Base);
    case ColorRole::separator:
        return faded(text, separatorOpacity);
    case ColorRole::focus:
        return palette.color(QPalette::Highlight);
    }
    return text;
}

QColor color(ColorRole role, const QPalette& palette, double opacity) {
    return faded(color(role, palette), opacity);
}

QFont font(int pointSize, FontWeight weight) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(pointSize);
    font.setWeight(fontWeight(weight));
    return font;
}

}  // namespace stowpocket::Theme
