// SPDX-License-Identifier: MIT
#include "ReferencePicture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QPainter>

#include <algorithm>
#include <cstdlib>
#include <map>

namespace stowpocket {
namespace {

/// Of 255: how far a colour may be from the nearest in the other picture, a pixel away at most.
constexpr int colorTolerance = 60;
/// Pixels that have no like in the other picture, in a square of that side: smoothing strews a few of them over all
/// edges, whatever is missing leaves a heap.
constexpr int strayPixels = 8;
constexpr int squareSide = 16;

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

/// Whether all of the image has its like in the reference.
bool isContained(const QImage& image, const QImage& reference) {
    std::map<std::pair<int, int>, int> strays;  // by square
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isStray = !hasLikeNearby(image.pixel(x, y), reference, x, y);
            if (isStray && ++strays[{x / squareSide, y / squareSide}] > strayPixels)
                return false;
        }
    }
    return true;
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

void expectLooksLike(QWidget& widget, const std::string& name) {
    const QString file = QString::fromStdString(name + ".png");
    const QString path = QStringLiteral(REFERENCE_PICTURES "/") + file;
    QImage shown(widget.size(), QImage::Format_RGB32);
    widget.render(&shown);
    if (qEnvironmentVariableIsSet("STOWPOCKET_UPDATE_PICTURES")) {
        EXPECT_TRUE(shown.save(path)) << path.toStdString();
        return;
    }
    const QImage reference(path);
    if (shown.size() != reference.size() || !isContained(shown, reference) || !isContained(reference, shown)) {
        shown.save(file);
        ADD_FAILURE() << "painted otherwise than in " << path.toStdString() << "; see " << name << ".png here";
    }
}

}  // namespace stowpocket
