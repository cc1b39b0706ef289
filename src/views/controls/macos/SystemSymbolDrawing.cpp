// SPDX-License-Identifier: MIT
// The symbols that the system itself has.
#include "platform/macos/MacPictures.h"
#include "platform/macos/QtBridge.h"
#include "views/controls/SymbolDrawing.h"

#include <QPainter>

namespace stowpocket {
namespace {

std::array<double, 4> componentsOf(const QColor& color) {
    return {static_cast<double>(color.redF()), static_cast<double>(color.greenF()),
            static_cast<double>(color.blueF()), static_cast<double>(color.alphaF())};
}

}  // namespace

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
