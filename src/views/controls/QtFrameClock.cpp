// SPDX-License-Identifier: MIT
#include "views/controls/QtFrameClock.h"

namespace stowpocket {

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

}  // namespace stowpocket
