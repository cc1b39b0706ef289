// SPDX-License-Identifier: MIT
#include "views/controls/Motion.h"

#include "presentation/AnimationCurve.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

namespace stowpocket::Motion {

bool isWanted(const QWidget& view) {
    return view.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &view) > 0;
}

bool isWanted() {
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
}

void prepare(QVariantAnimation& animation, std::chrono::milliseconds duration) {
    QEasingCurve curve;
    curve.setCustomType([](qreal progress) -> qreal { return easeInOut(progress); });
    animation.setEasingCurve(curve);
    animation.setDuration(static_cast<int>(duration.count()));
}

void finish(QVariantAnimation& animation) {
    animation.stop();
    animation.setCurrentTime(animation.direction() == QVariantAnimation::Forward ? animation.duration() : 0);
}

}  // namespace stowpocket::Motion
