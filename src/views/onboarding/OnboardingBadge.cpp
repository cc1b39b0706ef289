// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingBadge.h"

#include "views/controls/Layer.h"
#include "views/controls/Theme.h"
#include "views/onboarding/OnboardingCheckmarkShape.h"

#include <QPainter>

#include <cmath>
#include <utility>

namespace stowpocket {
namespace {

constexpr int ringSide = 100;
constexpr double ringWidth = 3;
constexpr int circleSide = 72;
constexpr double lineWidth = 7;
/// Qt counts angles in sixteenths of a degree against the clock. The circle begins at its right and runs clockwise.
constexpr int startAngle = 0;
constexpr int fullTurn = 360 * 16;

}  // namespace

OnboardingBadge::OnboardingBadge()
    : ring_({ringSide, ringSide}, [this](QPainter& painter) { paintRing(painter); }),
      mark_({ringSide, ringSide}, [this](QPainter& painter) { paintMark(painter); }) {
    setFixedSize(ringSide, ringSide);
}

void OnboardingBadge::evaluate(const OnboardingPresentation& shown) {
    const auto changed = [](double& value, double newValue) { return std::exchange(value, newValue) != newValue; };
    const bool ring = changed(ringOpacity_, shown.ringOpacity);
    const bool circle = changed(circleTrim_, shown.circleTrim);
    const bool checkmark = changed(checkmarkTrim_, shown.checkmarkTrim);
    if (ring || circle || checkmark)
        update();
}

void OnboardingBadge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Layer::applyOpacity(painter, *this);
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

}  // namespace stowpocket
