// SPDX-License-Identifier: MIT
#include "platform/qt/QtImages.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// As irregular as a photograph: compressed without loss it stays about as large as it is.
QImage irregular(QImage::Format format) {
    QImage image(96, 72, format);
    std::uint32_t state = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            state = state * 1664525u + 1013904223u;
            const int noise = static_cast<int>(state >> 28u);
            image.setPixelColor(x, y, QColor(x * 2 + noise, y * 3 + noise, 100 + noise, x < 48 ? 255 : 0));
        }
    }
    return image;
}

TEST(QtImageContent, isNearlyTheSameWhenPackedAndMuchSmaller) {
    const QImage original = irregular(QImage::Format_RGB32);
    const Image packed{QtImageContent(original).packed(), Size{48, 36}};
    ASSERT_TRUE(packed.content);
    EXPECT_LT(dynamic_cast<const PackedImageContent&>(*packed.content).file().capacity(),
              original.sizeInBytes() / 10);
    const QImage unpacked = qtImage(packed);
    ASSERT_EQ(unpacked.size(), original.size());
    for (const QPoint at : {QPoint(5, 5), QPoint(90, 8), QPoint(40, 60)}) {
        EXPECT_NEAR(unpacked.pixelColor(at).red(), original.pixelColor(at).red(), 40);
        EXPECT_NEAR(unpacked.pixelColor(at).green(), original.pixelColor(at).green(), 40);
    }
}

TEST(QtImageContent, keepsTransparencyAndLeavesOutTexts) {
    QImage original = irregular(QImage::Format_ARGB32_Premultiplied);
    original.setText(QStringLiteral("Thumb::URI"), QString(2000, QLatin1Char('x')));
    const Image packed{QtImageContent(original).packed(), Size{48, 36}};
    const QImage unpacked = qtImage(packed);
    EXPECT_EQ(unpacked.convertToFormat(original.format()), original);
    EXPECT_EQ(unpacked.textKeys(), QStringList());
    EXPECT_EQ(QtImageContent(QImage()).packed(), nullptr);
}

}  // namespace
}  // namespace stowpocket
