// SPDX-License-Identifier: MIT
#include "ReferencePicture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace stowpocket {
namespace {

/// Of 255: how far a colour may be from the nearest in the other picture, a pixel away at most.
constexpr int colorTolerance = 60;
/// Pixels that have no like in the other picture, in a square of that side: smoothing strews a few of them over all
/// edges, whatever is missing leaves a heap.
constexpr int strayPixels = 8;
constexpr int squareSide = 16;
/// Levels of each colour in a stored picture: as many of these as leave few enough colours for a palette.
constexpr std::array levelChoices{51, 34, 25, 17};
constexpr qsizetype paletteSize = 256;

bool isLike(QRgb one, QRgb other) {
    return std::abs(qRed(one) - qRed(other)) <= colorTolerance &&
           std::abs(qGreen(one) - qGreen(other)) <= colorTolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= colorTolerance;
}

bool hasLikeNearby(QRgb color, const QImage& image, int x, int y) {
    for (int row = std::max(0, y - 1); row <= std::min(image.height() - 1, y + 1); ++row) {
        for (int column = std::max(0, x - 1); column <= std::min(image.width() - 1, x + 1); ++column) {
            if (isLike(color, image.pixel(column, row)))
                return true;
        }
    }
    return false;
}

int countStrays(const QRect& square, const QImage& image, const QImage& reference) {
    int count = 0;
    for (int y = square.top(); y <= square.bottom(); ++y) {
        for (int x = square.left(); x <= square.right(); ++x)
            count += hasLikeNearby(image.pixel(x, y), reference, x, y) ? 0 : 1;
    }
    return count;
}

/// Whether all of the image has its like in the reference.
bool isContained(const QImage& image, const QImage& reference) {
    for (int y = 0; y < image.height(); y += squareSide) {
        for (int x = 0; x < image.width(); x += squareSide) {
            const QRect square = QRect(x, y, squareSide, squareSide).intersected(image.rect());
            if (countStrays(square, image, reference) > strayPixels)
                return false;
        }
    }
    return true;
}

/// Null when so many levels leave too many colours.
QImage reduced(const QImage& image, int levels) {
    const auto nearest = [levels](int value) { return (value * levels + 127) / 255 * 255 / levels; };
    QImage coarse = image;
    QList<QRgb> colors;
    for (int y = 0; y < coarse.height(); ++y) {
        for (int x = 0; x < coarse.width(); ++x) {
            const QRgb color = coarse.pixel(x, y);
            const QRgb kept = qRgb(nearest(qRed(color)), nearest(qGreen(color)), nearest(qBlue(color)));
            coarse.setPixel(x, y, kept);
            if (!colors.contains(kept))
                colors.append(kept);
        }
        if (colors.size() > paletteSize)
            return {};
    }
    return coarse.convertToFormat(QImage::Format_Indexed8, colors, Qt::ThresholdDither);
}

/// With a palette, which makes the file small.
QImage reduced(const QImage& image) {
    for (const int levels : levelChoices) {
        if (const QImage coarse = reduced(image, levels); !coarse.isNull())
            return coarse;
    }
    return image;
}

}  // namespace

FixedLook::FixedLook(Appearance appearance) : font_(QApplication::font()) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setHintingPreference(QFont::PreferNoHinting);
    EXPECT_EQ(QFontInfo(font).family(), font.family()) << "the font of the pictures is not installed";
    QApplication::setFont(font);
    QApplication::setPalette(appearance == Appearance::dark ? Theme::darkPalette()
                                                            : QPalette(QColor(0xef, 0xef, 0xef)));
}

FixedLook::~FixedLook() {
    QApplication::setFont(font_);
    QApplication::setPalette(QPalette());
}

bool looksAlike(const QImage& one, const QImage& other) {
    return one.size() == other.size() && isContained(one, other) && isContained(other, one);
}

void expectLooksLike(QWidget& widget, const char* name) {
    const QString file = QStringLiteral("%1.png").arg(QLatin1String(name));
    const QString path = QStringLiteral(REFERENCE_PICTURES "/") + file;
    QImage shown(widget.size(), QImage::Format_RGB32);
    widget.render(&shown);
    if (qEnvironmentVariableIsSet("STOWPOCKET_UPDATE_PICTURES")) {
        EXPECT_TRUE(reduced(shown).save(path)) << path.toStdString();
        return;
    }
    const QImage reference(path);
    EXPECT_EQ(shown.size(), reference.size()) << name;
    if (!looksAlike(shown, reference)) {
        shown.save(file);
        ADD_FAILURE() << "painted otherwise than in " << path.toStdString() << "; see " << name << ".png here";
    }
}

}  // namespace stowpocket
