// SPDX-License-Identifier: MIT
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <signal.h>
#include <sys/prctl.h>

#include <stdexcept>

namespace stowpocket {
namespace {

constexpr auto configuration =
    R"(<busconfig><type>session</type><listen>unix:path=%1/bus</listen><auth>EXTERNAL</auth>
<policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*"/><allow receive_sender="*"/>
</policy></busconfig>)";

}  // namespace

PrivateBus::PrivateBus() {
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7777));
    QFile file(folder_.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QString::fromUtf8(configuration).arg(folder_.path()).toUtf8()) < 0)
        throw std::runtime_error("no configuration of a private bus");
    file.close();
    // It ends with a test that is killed, too.
    daemon_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    start();
}

void PrivateBus::start() {
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--nofork"), QStringLiteral("--print-address"), QStringLiteral("--config-file"),
                   folder_.filePath(QStringLiteral("bus.conf"))});
    if (!daemon_.waitForReadyRead())
        throw std::runtime_error("dbus-daemon does not start: " + daemon_.readAllStandardError().toStdString());
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

void PrivateBus::restart() {
    daemon_.terminate();
    daemon_.waitForFinished();
    start();
}

PrivateBus::~PrivateBus() {
    for (const QString& name : connections_)
        QDBusConnection::disconnectFromBus(name);
    daemon_.terminate();
    daemon_.waitForFinished();
}

QDBusConnection PrivateBus::connection(const QString& name) {
    connections_.push_back(name);
    return QDBusConnection::connectToBus(address_, name);
}

void PrivateBus::waitUntil(const std::function<bool()>& condition) const {
    while (!condition()) {
        beforeWaiting();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

QDBusMessage PrivateBus::call(QDBusConnection connection, const QDBusMessage& message) {
    return answer(connection.asyncCall(message));
}

QDBusMessage PrivateBus::answer(const QDBusPendingCall& call) {
    const QDBusPendingCallWatcher watcher(call);
    waitUntil([&watcher] { return watcher.isFinished(); });
    return watcher.reply();
}

}  // namespace stowpocket
