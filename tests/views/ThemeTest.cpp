// SPDX-License-Identifier: MIT
#include "views/controls/Theme.h"
#include "ShelfViewFixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace stowpocket {
namespace {

double luminance(const QColor& color) {
    const auto linear = [](float value) {
        const double part = static_cast<double>(value);
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast of `above`, which may be translucent, on `below`.
double contrast(const QColor& above, const QColor& below) {
    QImage pixel(1, 1, QImage::Format_RGB32);
    pixel.fill(below);
    QPainter(&pixel).fillRect(0, 0, 1, 1, above);
    const double one = luminance(pixel.pixelColor(0, 0));
    const double other = luminance(below);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

TEST(ThemeTest, everyTextCanBeReadOnLightAndDarkWindows) {
    QPalette highContrast(Qt::yellow, Qt::black, Qt::white, Qt::black, Qt::gray, Qt::yellow, Qt::black);
    highContrast.setColor(QPalette::Highlight, Qt::cyan);
    for (const QPalette& palette : {QPalette(QColor(0xef, 0xef, 0xef)), QPalette(Qt::white), highContrast,
                                    QPalette(QColor(0x2a, 0x2a, 0x2c)), Theme::darkPalette()}) {
        const QColor window = palette.color(QPalette::Window);
        for (const ColorRole role : {ColorRole::primary, ColorRole::secondary, ColorRole::tertiary, ColorRole::orange,
                                     ColorRole::accent, ColorRole::red, ColorRole::focus})
            EXPECT_GE(contrast(Theme::color(role, palette), window), 3)
                << int(role) << " on " << window.name().toStdString();
        EXPECT_GE(contrast(Theme::color(ColorRole::onBanner, palette), Theme::color(ColorRole::banner, palette)), 3);
        EXPECT_GE(contrast(Theme::color(ColorRole::onDisc, palette), Theme::color(ColorRole::redDisc, palette)), 3);
    }
}

TEST(SymbolTest, isSharpOnDenseScreensAndShowsCrossingLinesOnce) {
    const QImage power = Symbol::image("power", 16, FontWeight::regular, {Qt::black}, 2);
    EXPECT_EQ(power.size(), QSize(40, 40));
    EXPECT_EQ(power.devicePixelRatio(), 2);
    const QImage glass = Symbol::image("tray.and.arrow.down", 32, FontWeight::regular, {QColor(0, 0, 0, 150)}, 1);
    for (int y = 0; y < glass.height(); ++y) {
        for (int x = 0; x < glass.width(); ++x)
            ASSERT_LE(qAlpha(glass.pixel(x, y)), 150);
    }
}

}  // namespace
}  // namespace stowpocket
