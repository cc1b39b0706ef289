// SPDX-License-Identifier: MIT
#include "views/controls/Motion.h"

#include "views/controls/Theme.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr int side = 16;
constexpr int spokes = 8;
constexpr auto stepInterval = 100ms;
constexpr double spokeWidth = 2;
constexpr double innerRadius = 3.5;
constexpr double outerRadius = 6.5;
constexpr double faintest = 0.25;

}  // namespace

bool Motion::isWanted(const QWidget& view) {
    return view.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &view) > 0;
}

bool Motion::isWanted() {
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
}

void Motion::prepare(QVariantAnimation& animation, std::chrono::milliseconds duration) {
    QEasingCurve easeInOut(QEasingCurve::BezierSpline);
    easeInOut.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    animation.setEasingCurve(easeInOut);
    animation.setDuration(static_cast<int>(duration.count()));
}

void Motion::finish(QVariantAnimation& animation) {
    animation.stop();
    animation.setCurrentTime(animation.direction() == QVariantAnimation::Forward ? animation.duration() : 0);
}

QtFrameClock::QtFrameClock() {
    elapsed_.start();
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
        const std::function<void()> frame = std::move(frame_);
        frame();
    });
}

Seconds QtFrameClock::now() const {
    return std::chrono::nanoseconds(elapsed_.nsecsElapsed());
}

void QtFrameClock::callAfter(Seconds delay, std::function<void()> frame) {
    frame_ = std::move(frame);
    timer_.start(std::chrono::round<std::chrono::milliseconds>(delay));
}

Spinner::Spinner() {
    setFixedSize(side, side);
    timer_.setInterval(stepInterval);
    connect(&timer_, &QTimer::timeout, this, [this] {
        step_ = (step_ + 1) % spokes;
        update();
    });
}

void Spinner::showEvent(QShowEvent*) {
    if (Motion::isWanted(*this))
        timer_.start();
}

void Spinner::hideEvent(QHideEvent*) {
    timer_.stop();
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    painter.rotate(360.0 / spokes * step_);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const double opacity = faintest + (1 - faintest) * spoke / (spokes - 1);
        painter.setPen(
            QPen(Theme::color(ColorRole::secondary, palette(), opacity), spokeWidth, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -innerRadius), QPointF(0, -outerRadius));
        painter.rotate(360.0 / spokes);
    }
}

}  // namespace stowpocket
