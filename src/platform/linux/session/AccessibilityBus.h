// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>

namespace stowpocket {

/// Finds out whether the bus of accessibility answers: Qt would wait 25 seconds, twice, for one that does not. Main
/// thread.
class AccessibilityBusProbe {
public:
    /// Asks, without waiting for the answer.
    explicit AccessibilityBusProbe(const QDBusConnection& bus);

    /// Before the first window. Waits until 300 ms after the question at most. Where there is no answer by then, Qt
    /// serves screen readers without asking whether there is one; false then.
    bool avoidSilentBus();

private:
    QDBusPendingCall answer_;
};

}  // namespace stowpocket
