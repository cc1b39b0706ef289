// SPDX-License-Identifier: MIT
#include "views/OnboardingEmblem.h"

#include "views/Compose.h"
#include "views/Shapes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

constexpr double squareSide = 84;
constexpr double squareRadius = 24;
constexpr int symbolPointSize = 48;
const QColor squareTop(0x2c, 0x34, 0x40);
const QColor squareBottom(0x1a, 0x20, 0x2a);
constexpr double edgeOpacity = 0.12;

constexpr double glowRadius = 40;
/// The standard deviation of the blur that turns the glow's shape into light, in points.
constexpr double glowBlur = 13;
/// How far the light is seen beyond the emblem's frame.
constexpr int glowReach = 32;
/// The farthest that the emblem is away from its place.
constexpr int highestOffset = 30;

/// How far a point is outside a rounded square around the origin; negative inside.
double distanceOutside(double x, double y, double halfSide, double radius) {
    const double cornerX = std::abs(x) - halfSide + radius;
    const double cornerY = std::abs(y) - halfSide + radius;
    const double outside = std::hypot(std::max(cornerX, 0.0), std::max(cornerY, 0.0));
    return outside + std::min(std::max(cornerX, cornerY), 0.0) - radius;
}

/// A blurred edge fades like the integral of a bell curve, so no filter has to run over the picture.
QImage glow(const QColor& color, double ratio) {
    constexpr int points = OnboardingEmblem::side + 2 * glowReach;
    const int pixels = static_cast<int>(std::ceil(points * ratio));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    const auto coordinate = [&](int pixel) { return (pixel + 0.5) / ratio - points / 2.0; };
    for (int y = 0; y < pixels; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < pixels; ++x) {
            const double distance =
                distanceOutside(coordinate(x), coordinate(y), OnboardingEmblem::side / 2.0, glowRadius);
            const double strength = std::erfc(distance / (glowBlur * std::sqrt(2.0))) / 2;
            line[x] = qPremultiply(
                qRgba(color.red(), color.green(), color.blue(), static_cast<int>(std::lround(255 * strength))));
        }
    }
    image.setDevicePixelRatio(ratio);
    return image;
}

}  // namespace

QRect OnboardingEmblem::reach(const QPoint& topLeft) {
    return QRect(topLeft, QSize(side, side)).adjusted(-glowReach, -glowReach - highestOffset, glowReach, glowReach);
}

void OnboardingEmblem::paint(QPainter& painter, const QPointF& topLeft, const OnboardingPresentation& shown,
                             const QWidget& view) {
    const double ratio = view.devicePixelRatioF();
    if (glow_.isNull() || glow_.devicePixelRatio() != ratio)
        glow_ = glow(Theme::color(ColorRole::accent, view.palette()), ratio);
    // Between two pixels the symbol would blur.
    const QPointF place = topLeft + QPointF(0, std::round(shown.emblemOffset * ratio) / ratio);
    const double opacity = painter.opacity();
    painter.setOpacity(opacity * shown.emblemGlow);
    painter.drawImage(place - QPointF(glowReach, glowReach), glow_);
    painter.setOpacity(opacity);

    constexpr double inset = (side - squareSide) / 2;
    paintSquare(painter, QRectF(place + QPointF(inset, inset), QSizeF(squareSide, squareSide)), view);
}

void OnboardingEmblem::paintSquare(QPainter& painter, const QRectF& square, const QWidget& view) const {
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(square.topLeft(), square.bottomLeft());
    fill.setColorAt(0, squareTop);
    fill.setColorAt(1, squareBottom);
    painter.fillPath(continuousRoundedRect(square, squareRadius), fill);
    painter.strokePath(continuousRoundedRect(square.adjusted(0.5, 0.5, -0.5, -0.5), squareRadius - 0.5),
                       Theme::color(ColorRole::primary, view.palette(), edgeOpacity));
    drawSymbol(painter, square, "tray.and.arrow.down",
               {.pointSize = symbolPointSize, .weight = FontWeight::medium, .role = ColorRole::accent}, view);
}

}  // namespace stowpocket
