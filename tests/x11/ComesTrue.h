// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace stowpocket {

/// Lets this program and, through `others`, those that it talks to work until `condition` holds. Far longer than it
/// ever takes, then gives up.
template <class Others, class Condition>
bool comesTrue(Others others, Condition condition) {
    using namespace std::chrono_literals;
    const QDeadlineTimer deadline(20s);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        others();
    }
    return true;
}

}  // namespace stowpocket
