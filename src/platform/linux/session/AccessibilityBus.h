// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>

namespace stowpocket {

/// Finds out whether the accessibility bus answers. Qt would wait 25 seconds, twice, for one that does not. Main
/// thread.
class AccessibilityBusProbe {
public:
    /// Sends the question and does not wait for the answer.
    explicit AccessibilityBusProbe(const QDBusConnection& bus);

    /// Called before the first window. Waits until at most 300 ms after the question. Without an answer by then,
    /// returns false and has Qt serve screen readers without asking whether there is one.
    bool avoidSilentBus();

private:
    QDBusPendingCall answer_;
};

}  // namespace stowpocket
