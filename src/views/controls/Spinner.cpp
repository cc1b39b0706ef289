// SPDX-License-Identifier: MIT
#include "views/controls/Spinner.h"

#include "views/controls/Motion.h"
#include "views/controls/Theme.h"

#include <QPainter>

#include <chrono>

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
