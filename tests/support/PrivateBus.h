// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>

namespace stowpocket {

/// A session bus of our own, which lets every user in. It ends with this object.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    /// Ends it and starts it anew at the same address. Connections have to be made anew too.
    void restart();

    [[nodiscard]] const QString& address() const { return address_; }
    [[nodiscard]] QDBusConnection connection(const QString& name);

    /// Runs before each wait for events.
    std::function<void()> beforeWaiting = [] {};
    /// Handles events until `condition` holds; a test that waits in vain is ended by its time limit.
    void waitUntil(const std::function<bool()>& condition) const;
    [[nodiscard]] QDBusMessage call(QDBusConnection connection, const QDBusMessage& message);
    [[nodiscard]] QDBusMessage answer(const QDBusPendingCall& call);

private:
    void start();

    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    QStringList connections_;
};

}  // namespace stowpocket
