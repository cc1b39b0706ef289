// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingParts.h"

#include "presentation/Onboarding.h"
#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"
#include "views/controls/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace stowpocket {
namespace {

constexpr int ringSide = 100;
constexpr double ringWidth = 3;
constexpr int circleSide = 72;
constexpr double lineWidth = 7;
/// Qt counts angles anticlockwise in sixteenths of a degree. The circle starts at its right and runs clockwise.
constexpr int startAngle = 0;
constexpr int fullTurn = 360 * 16;

constexpr int squareSide = 84;
constexpr double squareRadius = 24;
constexpr int emblemPointSize = 48;
const QColor squareTop(0x2c, 0x34, 0x40);
const QColor squareBottom(0x1a, 0x20, 0x2a);
constexpr double edgeOpacity = 0.12;

constexpr double glowRadius = 40;
/// The standard deviation of the blur that turns the glow's shape into light, in points.
constexpr double glowBlur = 13;
/// How far the light is visible beyond the emblem's frame.
constexpr int glowReach = 32;
constexpr int glowSide = OnboardingEmblem::side + 2 * glowReach;
/// The largest distance of the emblem from its place.
constexpr int highestOffset = 30;

/// The distance of a point from a rounded square around the origin; negative inside.
double distanceOutside(double x, double y, double halfSide, double radius) {
    const double cornerX = std::abs(x) - halfSide + radius;
    const double cornerY = std::abs(y) - halfSide + radius;
    const double outside = std::hypot(std::max(cornerX, 0.0), std::max(cornerY, 0.0));
    return outside + std::min(std::max(cornerX, cornerY), 0.0) - radius;
}

/// A blurred edge fades like the integral of a bell curve, so the picture needs no blur filter.
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
               {.pointSize = emblemPointSize, .weight = FontWeight::medium, .role = ColorRole::accent}, view);
}

constexpr int symbolFrame = 24;
constexpr int symbolPointSize = 16;
constexpr int symbolSpacing = 12;
constexpr int textPointSize = 14;

/// The same for every font: large line spacing would not leave enough room for the button.
constexpr int lineHeight = 17;
constexpr int textLeft = symbolFrame + symbolSpacing;

/// Centres the first line on the symbol.
int firstLineTop() {
    return (Symbol::side(symbolPointSize) - lineHeight) / 2;
}

}  // namespace

QPainterPath OnboardingCheckmarkShape::path(const QRectF& rect) {
    return trimmedPath(rect, 1);
}

QPainterPath OnboardingCheckmarkShape::trimmedPath(const QRectF& rect, double fraction) {
    QPainterPath path;
    for (const Point& point : trimmed(onboardingCheckmark(rect.width(), rect.height()), fraction)) {
        if (path.elementCount() == 0)
            path.moveTo(point.x, point.y);
        else
            path.lineTo(point.x, point.y);
    }
    return path;
}

OnboardingBadge::OnboardingBadge()
    : ring_({ringSide, ringSide}, [this](QPainter& painter) { paintRing(painter); }),
      mark_({ringSide, ringSide}, [this](QPainter& painter) { paintMark(painter); }) {
    setFixedSize(ringSide, ringSide);
}

void OnboardingBadge::setPresentation(const OnboardingPresentation& shown) {
    const auto changed = [](double& value, double newValue) { return std::exchange(value, newValue) != newValue; };
    const bool ring = changed(ringOpacity_, shown.ringOpacity);
    const bool circle = changed(circleTrim_, shown.circleTrim);
    const bool checkmark = changed(checkmarkTrim_, shown.checkmarkTrim);
    if (ring || circle || checkmark)
        update();
}

void OnboardingBadge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    FadingView::applyOpacity(painter, *this);
    const QColor accent = Theme::color(ColorRole::accent, palette());
    const double opacity = painter.opacity();
    painter.setOpacity(opacity * ringOpacity_);
    painter.drawImage(0, 0, ring_.image(devicePixelRatioF(), accent));
    painter.setOpacity(opacity);
    if (circleTrim_ == 1 && checkmarkTrim_ == 1) {
        painter.drawImage(0, 0, mark_.image(devicePixelRatioF(), accent));
    } else {
        painter.setRenderHint(QPainter::Antialiasing);
        paintMark(painter);
    }
}

void OnboardingBadge::paintRing(QPainter& painter) const {
    constexpr double inset = ringWidth / 2;
    painter.setPen(QPen(Theme::color(ColorRole::accent, palette()), ringWidth));
    painter.drawEllipse(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
}

void OnboardingBadge::paintMark(QPainter& painter) const {
    painter.translate((ringSide - circleSide) / 2.0, (ringSide - circleSide) / 2.0);
    constexpr QRectF circle(0, 0, circleSide, circleSide);
    painter.setPen(
        QPen(Theme::color(ColorRole::accent, palette()), lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (circleTrim_ > 0)
        painter.drawArc(circle, startAngle, -static_cast<int>(std::lround(fullTurn * circleTrim_)));
    painter.drawPath(OnboardingCheckmarkShape::trimmedPath(circle, checkmarkTrim_));
}

QRect OnboardingEmblem::paintedArea(const QPoint& topLeft) {
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
    // Between two pixels the symbol would be blurred.
    const QPointF place = topLeft + QPointF(0, std::round(shown.emblemOffset * ratio) / ratio);
    const QColor accent = Theme::color(ColorRole::accent, view_.palette());
    const double opacity = painter.opacity();
    painter.setOpacity(opacity * shown.emblemGlow);
    painter.drawImage(place - QPointF(glowReach, glowReach), glow_.image(ratio, accent));
    painter.setOpacity(opacity);
    constexpr double inset = (side - squareSide) / 2.0;
    painter.drawImage(place + QPointF(inset, inset), square_.image(ratio, accent));
}

OnboardingPointView::OnboardingPointView(std::string_view symbolName, const QString& text, int width)
    : QLabel(text),
      symbolName_(symbolName),
      lines_(brokenIntoLines(text, Theme::font(textPointSize), width - textLeft)) {
    setTextFormat(Qt::PlainText);
    setFont(Theme::font(textPointSize));
    const int textHeight = firstLineTop() + static_cast<int>(lines_.size()) * lineHeight;
    setFixedSize(width, std::max(textHeight, Symbol::side(symbolPointSize)) + travel);
}

void OnboardingPointView::setPresentation(const OnboardingPresentation::Bullet& shown) {
    if (shown_.opacity == shown.opacity && shown_.offset == shown.offset)
        return;
    shown_ = shown;
    update();
}

/// The movement keeps to whole screen pixels; text and symbol would be blurred between them.
void OnboardingPointView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    FadingView::applyOpacity(painter, *this);
    painter.setOpacity(painter.opacity() * shown_.opacity);
    const double ratio = devicePixelRatioF();
    painter.translate(0, std::round(shown_.offset * ratio) / ratio);

    const int side = Symbol::side(symbolPointSize);
    drawSymbol(painter, QRectF((symbolFrame - side) / 2.0, 0, side, side), symbolName_,
               {.pointSize = symbolPointSize, .weight = FontWeight::medium, .role = ColorRole::accent}, *this);
    painter.setPen(Theme::color(ColorRole::secondary, palette()));
    QRect place(textLeft, firstLineTop(), width() - textLeft, lineHeight);
    for (const QString& line : lines_) {
        painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, line);
        place.translate(0, lineHeight);
    }
}

}  // namespace stowpocket
