// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QTimer>

#include <functional>

namespace stowpocket {

/// Knows whether the desktop shows StatusNotifierItems: some panel must have announced itself to the watcher of the
/// session. Asks without waiting.
class NotifierHost {
public:
    /// `onAnswer` runs on the main thread, never during this call, whenever the answer may have changed.
    NotifierHost(const QDBusConnection& bus, std::function<void(bool isThere)> onAnswer);

private:
    void ask();

    QDBusConnection bus_;
    const std::function<void(bool)> onAnswer_;
    QDBusServiceWatcher watcherService_;
    /// Fires at once when it is started, as the signals of the watcher do.
    QTimer asking_;
};

}  // namespace stowpocket
