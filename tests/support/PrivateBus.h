// SPDX-License-Identifier: MIT
#pragma once

#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QProcess>

#include <signal.h>
#include <sys/prctl.h>

#include <functional>
#include <stdexcept>

namespace stowpocket {

/// A session bus of our own, which lets every user in. It ends with this object.
class PrivateBus {
public:
    PrivateBus() {
        std::filesystem::permissions(folder_.path(), std::filesystem::perms::all);
        folder_.write("bus.conf", "<busconfig><type>session</type><listen>unix:path=" + folder_.path("bus") +
                                      R"(</listen><auth>EXTERNAL</auth>
<policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*"/><allow receive_sender="*"/>
</policy></busconfig>)");
        // It ends with a test that is killed, too.
        daemon_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
        start();
    }
    ~PrivateBus() {
        for (const QString& name : connections_)
            QDBusConnection::disconnectFromBus(name);
        end();
    }

    /// Ends it and starts it anew at the same address. Connections have to be made anew too.
    void restart() {
        end();
        start();
    }

    [[nodiscard]] const QString& address() const { return address_; }
    [[nodiscard]] QDBusConnection connection(const QString& name) {
        connections_.push_back(name);
        return QDBusConnection::connectToBus(address_, name);
    }

    /// Runs before each wait for events.
    std::function<void()> beforeWaiting = [] {};
    /// Handles events until `condition` holds; a test that waits in vain is ended by its time limit.
    void waitUntil(const std::function<bool()>& condition) const {
        while (!condition()) {
            beforeWaiting();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    [[nodiscard]] QDBusMessage call(QDBusConnection connection, const QDBusMessage& message) {
        return answer(connection.asyncCall(message));
    }
    [[nodiscard]] QDBusMessage answer(const QDBusPendingCall& call) {
        const QDBusPendingCallWatcher watcher(call);
        waitUntil([&watcher] { return watcher.isFinished(); });
        return watcher.reply();
    }

private:
    void start() {
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--nofork"), QStringLiteral("--print-address"), QStringLiteral("--config-file"),
                       QString::fromStdString(folder_.path("bus.conf"))});
        if (!daemon_.waitForReadyRead())
            throw std::runtime_error("dbus-daemon does not start: " + daemon_.readAllStandardError().toStdString());
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    void end() {
        daemon_.terminate();
        daemon_.waitForFinished();
    }

    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList connections_;
};

}  // namespace stowpocket
