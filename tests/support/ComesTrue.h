// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace stowpocket {

/// Lets this program and, through `others`, those that it talks to work until `condition` holds. Far longer than it
/// ever takes, then gives up.
template <class Others, class Condition>
bool comesTrue(Others others, Condition condition) {
    using namespace std::chrono_literals;
    const QDeadlineTimer deadline(20s);
    QTimer look;  // what others do need not be an event here
    look.start(2ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        others();
    }
    return true;
}

/// The same where the others work by themselves.
template <class Condition>
bool comesTrue(Condition condition) {
    return comesTrue([] {}, condition);
}

}  // namespace stowpocket
