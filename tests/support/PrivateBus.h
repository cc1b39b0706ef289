// SPDX-License-Identifier: MIT
#pragma once

#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <signal.h>

#include <array>
#include <cstdio>
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
    /// Not by QProcess: its child shares the memory of this thread until it is another program, which leaves the
    /// thread sanitizer blind to the locks that this thread takes from then on.
    void start() {
        // It ends with a test that is killed, too.
        const std::string command =
            "exec setpriv --pdeathsig TERM dbus-daemon --nofork --print-address=1 --print-pid=1 "
            "--config-file " +
            folder_.path("bus.conf");
        daemon_ = ::popen(command.c_str(), "re");
        std::array<char, 256> address{};
        if (daemon_ == nullptr || std::fscanf(daemon_, "%255s %d", address.data(), &process_) != 2)
            throw std::runtime_error("dbus-daemon does not start");
        address_ = QString::fromUtf8(address.data());
    }
    void end() {
        ::kill(process_, SIGTERM);
        ::pclose(daemon_);
    }

    TemporaryFolder folder_;
    std::FILE* daemon_ = nullptr;
    pid_t process_ = 0;
    QString address_;
    QStringList connections_;
};

}  // namespace stowpocket
