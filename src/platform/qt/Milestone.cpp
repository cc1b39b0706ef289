// SPDX-License-Identifier: MIT
#include "platform/qt/Milestone.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace stowpocket {

void Milestone::reach() {
    isReached_ = true;
    for (std::function<void()>& work : std::exchange(waiting_, {}))
        runSoon(std::move(work));
}

void Milestone::whenReached(std::function<void()> work) {
    if (isReached_)
        runSoon(std::move(work));
    else
        waiting_.push_back(std::move(work));
}

/// A timer waits for what the window system has sent by then, which a posted call would overtake.
void Milestone::runSoon(std::function<void()> work) {
    QTimer::singleShot(std::chrono::milliseconds(0), &context_, std::move(work));
}

}  // namespace stowpocket
