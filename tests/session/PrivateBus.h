// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <functional>
#include <string>
#include <vector>

namespace stowpocket {

/// What a process left behind.
struct Ended {
    int code = -1;
    std::string out;
    std::string err;
};

/// A session bus of our own, which lets every user in, and a home folder for the processes on it. Everything on it
/// ends with it.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    [[nodiscard]] QDBusConnection connection(const QString& name);
    /// The folder in which the peers run.
    [[nodiscard]] std::string folder() const { return home_.path().toStdString(); }
    void makeFile(const std::string& name) const;

    /// For the peers that start from here on.
    QProcessEnvironment environment;
    /// Runs before each wait for events.
    std::function<void()> beforeWaiting = [] {};

    [[nodiscard]] std::unique_ptr<QProcess> startPeer(const std::vector<std::string>& arguments);
    [[nodiscard]] Ended runPeer(const std::vector<std::string>& arguments);
    [[nodiscard]] Ended run(QProcess& process);
    /// Handles events until `condition` holds; a test that waits in vain is ended by its time limit.
    void waitUntil(const std::function<bool()>& condition) const;
    [[nodiscard]] QDBusMessage call(QDBusConnection connection, const QDBusMessage& message);
    [[nodiscard]] QDBusMessage answer(const QDBusPendingCall& call);

private:
    QTemporaryDir home_;
    QProcess daemon_;
    QString address_;
    std::vector<QString> connections_;
    int startedPeers_ = 0;
};

/// A call of the program's interface.
[[nodiscard]] QDBusMessage shelfCall(const char* method, const QVariantList& arguments = {});

}  // namespace stowpocket
