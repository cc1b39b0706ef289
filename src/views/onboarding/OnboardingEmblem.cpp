// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingEmblem.h"

#include "views/controls/Compose.h"
#include "views/controls/Shapes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

constexpr int squareSide = 84;
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
constexpr int glowSide = OnboardingEmblem::side + 2 * glowReach;
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
    const int pixels = static_cast<int>(std::lround(glowSide * ratio));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    const auto coordinate = [&](int pixel) { return (pixel + 0.5) / ratio - glowSide / 2.0; };
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
    return image;
}

void paintSquare(QPainter& painter, const QWidget& view) {
    const QRectF square(0, 0, squareSide, squareSide);
    QLinearGradient fill(square.topLeft(), square.bottomLeft());
    fill.setColorAt(0, squareTop);
    fill.setColorAt(1, squareBottom);
    painter.fillPath(continuousRoundedRect(square, squareRadius), fill);
    painter.strokePath(continuousRoundedRect(square.adjusted(0.5, 0.5, -0.5, -0.5), squareRadius - 0.5),
                       Theme::color(ColorRole::primary, view.palette(), edgeOpacity));
    drawSymbol(painter, square, "tray.and.arrow.down",
               {.pointSize = symbolPointSize, .weight = FontWeight::medium, .role = ColorRole::accent}, view);
}

}  // namespace

QRect OnboardingEmblem::reach(const QPoint& topLeft) {
    return QRect(topLeft, QSize(side, side)).adjusted(-glowReach, -glowReach - highestOffset, glowReach, glowReach);
}

OnboardingEmblem::OnboardingEmblem(const QWidget& view)
    : view_(view),
      glow_({glowSide, glowSide},
            [&view](QPainter& painter) {
                painter.drawImage(
                    0, 0,
                    glow(Theme::color(ColorRole::accent, view.palette()), painter.device()->devicePixelRatioF()));
            }),
      square_({squareSide, squareSide}, [&view](QPainter& painter) { paintSquare(painter, view); }) {}

void OnboardingEmblem::paint(QPainter& painter, const QPointF& topLeft, const OnboardingPresentation& shown) {
    const double ratio = view_.devicePixelRatioF();
    // Between two pixels the symbol would blur.
    const QPointF place = topLeft + QPointF(0, std::round(shown.emblemOffset * ratio) / ratio);
    const QColor accent = Theme::color(ColorRole::accent, view_.palette());
    const double opacity = painter.opacity();
    painter.setOpacity(opacity * shown.emblemGlow);
    painter.drawImage(place - QPointF(glowReach, glowReach), glow_.image(ratio, accent));
    painter.setOpacity(opacity);
    constexpr double inset = (side - squareSide) / 2.0;
    painter.drawImage(place + QPointF(inset, inset), square_.image(ratio, accent));
}

}  // namespace stowpocket
