// SPDX-License-Identifier: MIT
// The symbols that the system itself has.
#include "platform/macos/MacPictures.h"
#include "platform/macos/QtPixels.h"
#include "views/SymbolDrawing.h"

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
    return drawn ? qImageOf(*drawn) : QImage();
}

}  // namespace stowpocket
