// SPDX-License-Identifier: MIT
#include "views/controls/Theme.h"

#include "views/controls/DesktopLook.h"

#include <QApplication>
#include <QCache>
#include <QPalette>

#include <cmath>
#include <cstdlib>

namespace stowpocket::Theme {
namespace {

/// The opacity of less important text. Even the lowest is legible in windows of either appearance.
constexpr double secondaryOpacity = 0.62;
constexpr double tertiaryOpacity = 0.5;
constexpr double separatorOpacity = 0.12;
/// A form is slightly lighter than a dark window; in a light window it has the colour of editable fields.
constexpr double darkFormOpacity = 0.07;

/// Each colour has a contrast of at least 3:1 to the window behind it, as has the banner to its white text.
const QColor lightOrange(0xd9, 0x66, 0x00);
const QColor darkOrange(0xff, 0x9f, 0x0a);
const QColor lightRed(0xd7, 0x00, 0x15);
const QColor darkRed(0xff, 0x69, 0x61);

QColor faded(QColor color, double opacity) {
    color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return color;
}

/// The desktop's selection colour, if it stands out from the window.
QColor focusColor(const QPalette& palette) {
    constexpr int leastDifference = 60;
    const QColor highlight = palette.color(QPalette::Highlight);
    const int difference = qGray(highlight.rgb()) - qGray(palette.color(QPalette::Window).rgb());
    return std::abs(difference) < leastDifference ? palette.color(QPalette::WindowText) : highlight;
}

/// The program's own colours, based on the desktop's palette.
QColor ownColor(ColorRole role, const QPalette& palette) {
    const bool isDark = Theme::appearance(palette) == Appearance::dark;
    const QColor text = palette.color(QPalette::WindowText);
    switch (role) {
    case ColorRole::primary:
        return text;
    case ColorRole::secondary:
        return faded(text, secondaryOpacity);
    case ColorRole::tertiary:
        return faded(text, tertiaryOpacity);
    case ColorRole::orange:
    case ColorRole::accent:
        return isDark ? darkOrange : lightOrange;
    case ColorRole::red:
        return isDark ? darkRed : lightRed;
    case ColorRole::banner:
    case ColorRole::accentFill:
        return lightOrange;
    case ColorRole::redDisc:
        return lightRed;
    case ColorRole::onBanner:
    case ColorRole::onDisc:
        return Qt::white;
    case ColorRole::controlBackground:
        return palette.color(QPalette::Base);
    case ColorRole::formBackground:
        return isDark ? faded(text, darkFormOpacity) : palette.color(QPalette::Base);
    case ColorRole::separator:
        return faded(text, separatorOpacity);
    case ColorRole::focus:
        return focusColor(palette);
    }
    return text;
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

QPalette darkPalette() {
    const QColor window(0x2d, 0x2d, 0x2f);
    const QColor base(0x1f, 0x1f, 0x21);
    const QColor text(0xf2, 0xf2, 0xf2);
    const QColor highlight(0x3d, 0x8f, 0xe0);
    const QColor faint(0x8c, 0x8c, 0x90);
    QPalette palette(text, window, /*light*/ QColor(0x4a, 0x4a, 0x4d), /*dark*/ QColor(0x14, 0x14, 0x15),
                     /*mid*/ QColor(0x23, 0x23, 0x25), text, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x27, 0x27, 0x29));
    palette.setColor(QPalette::Button, QColor(0x3a, 0x3a, 0x3d));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, highlight);
    palette.setColor(QPalette::LinkVisited, QColor(0xb0, 0x8d, 0xe0));
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

void setAppearance(Appearance wanted) {
    QApplication::setPalette(QPalette());  // the desktop's own again
    if (wanted == Appearance::dark && appearance(QApplication::palette()) == Appearance::light)
        QApplication::setPalette(darkPalette());
}

QColor color(ColorRole role, const QPalette& palette) {
    const std::optional<QColor> system = systemColor(role, appearance(palette));
    return system ? *system : ownColor(role, palette);
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

namespace stowpocket::Symbol {
namespace {

/// A symbol is slightly larger than the text beside it, so that both look equally large.
constexpr double sidePerPoint = 1.25;
constexpr int keptImages = 64;

QString cacheKey(std::string_view name, int pixels, FontWeight weight, const SymbolColors& colors, double ratio) {
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(QLatin1String(name.data(), qsizetype(name.size())))
        .arg(pixels)
        .arg(int(weight))
        .arg(colors.primary.rgba())
        .arg(colors.secondary.rgba())
        .arg(ratio);
}

}  // namespace

int side(double pointSize) {
    return static_cast<int>(std::lround(pointSize * sidePerPoint));
}

QImage image(std::string_view name, double pointSize, FontWeight weight, const SymbolColors& colors,
             double devicePixelRatio) {
    static QCache<QString, QImage> cache(keptImages);
    const int pixels = static_cast<int>(std::lround(side(pointSize) * devicePixelRatio));
    const QString key = cacheKey(name, pixels, weight, colors, devicePixelRatio);
    if (const QImage* const kept = cache.object(key))
        return *kept;

    QImage image = pixels < 1 ? QImage() : drawnSymbol(name, pixels, pointSize * devicePixelRatio, weight, colors);
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(devicePixelRatio);
    cache.insert(key, new QImage(image));
    return image;
}

}  // namespace stowpocket::Symbol
