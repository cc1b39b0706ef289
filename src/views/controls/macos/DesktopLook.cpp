// SPDX-License-Identifier: MIT
#include "views/controls/DesktopLook.h"

#include "platform/macos/MacPictures.h"
#include "platform/macos/QtBridge.h"

#include <QPainter>

// The symbols and the colours of the system.
namespace stowpocket {
namespace {

std::optional<MacColor> macColorFor(ColorRole role) {
    switch (role) {
    case ColorRole::secondary:
        return MacColor::secondaryLabel;
    case ColorRole::tertiary:
        return MacColor::tertiaryLabel;
    case ColorRole::orange:
    case ColorRole::banner:
        return MacColor::orange;
    case ColorRole::accent:
    case ColorRole::accentFill:
        return MacColor::controlAccent;
    case ColorRole::red:
    case ColorRole::redDisc:
        return MacColor::red;
    case ColorRole::controlBackground:
        return MacColor::controlBackground;
    case ColorRole::primary:
    case ColorRole::onBanner:
    case ColorRole::onDisc:
    case ColorRole::formBackground:
    case ColorRole::separator:
    case ColorRole::focus:
        return std::nullopt;
    }
    return std::nullopt;
}

std::array<double, 4> componentsOf(const QColor& color) {
    return {static_cast<double>(color.redF()), static_cast<double>(color.greenF()),
            static_cast<double>(color.blueF()), static_cast<double>(color.alphaF())};
}

}  // namespace

std::optional<QColor> systemColor(ColorRole role, Appearance appearance) {
    const std::optional<MacColor> color = macColorFor(role);
    if (!color)
        return std::nullopt;
    const auto rgba = rgbaOf(*color, appearance == Appearance::dark);
    if (!rgba)
        return std::nullopt;
    const auto [red, green, blue, alpha] = *rgba;
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue),
                            static_cast<float>(alpha));
}

QImage drawnSymbol(std::string_view name, int pixels, double fontSize, FontWeight weight,
                   const SymbolColors& colors) {
    const std::optional<Pixels> drawn = systemSymbolPixels({.name = name,
                                                            .fontSize = fontSize,
                                                            .weight = weight,
                                                            .primary = componentsOf(colors.primary),
                                                            .secondary = componentsOf(colors.secondary)},
                                                           pixels);
    if (!drawn)
        return {};
    QImage image = qImageOf(*drawn);
    if (colors.primary == colors.secondary) {
        // In one colour the system draws the shape alone, with what lies on a disc cut out of it.
        image.convertTo(QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), colors.primary);
    }
    return image;
}

}  // namespace stowpocket
