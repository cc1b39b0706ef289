// SPDX-License-Identifier: MIT
#include "session/PrivateBus.h"

#include "platform/linux/session/ShelfBus.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <signal.h>
#include <sys/prctl.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace stowpocket {
namespace {

constexpr auto configuration = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
  </policy>
</busconfig>
)";

constexpr auto openToAll = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                           QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;

}  // namespace

PrivateBus::PrivateBus() {
    QFile::setPermissions(home_.path(), openToAll);
    QFile file(home_.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QString::fromLatin1(configuration).arg(home_.path()).toLatin1()) < 0)
        throw std::runtime_error("no configuration of a private bus");
    file.close();
    // It ends with a test that is killed, too.
    daemon_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                                                  QStringLiteral("--config-file"), file.fileName()});
    if (!daemon_.waitForReadyRead())
        throw std::runtime_error("dbus-daemon does not start: " + daemon_.readAllStandardError().toStdString());
    address_ = QString::fromLatin1(daemon_.readLine()).trimmed();
    environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address_);
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QString::fromLatin1(variable), home_.path());
    for (const char* variable : {"DISPLAY", "XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        environment.remove(QString::fromLatin1(variable));
}

PrivateBus::~PrivateBus() {
    for (const QString& name : connections_)
        QDBusConnection::disconnectFromBus(name);
    daemon_.terminate();
    daemon_.waitForFinished();
    std::filesystem::remove_all(folder());  // QTemporaryDir leaves names that are no UTF-8
}

QDBusConnection PrivateBus::connection(const QString& name) {
    connections_.push_back(name);
    return QDBusConnection::connectToBus(address_, name);
}

void PrivateBus::makeFile(const std::string& name) const {
    std::ofstream file(folder() + '/' + name);
    if (!file)
        throw std::runtime_error("cannot make " + name);
}

std::unique_ptr<QProcess> PrivateBus::startPeer(const std::vector<std::string>& arguments) {
    auto process = std::make_unique<QProcess>();
    // QProcess makes every argument UTF-8, so the bytes take another way.
    const std::string list = folder() + "/arguments" + std::to_string(++startedPeers_);
    std::ofstream file(list, std::ios::binary);
    for (const std::string& argument : arguments)
        file.write(argument.c_str(), static_cast<std::streamsize>(argument.size() + 1));
    file.close();
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(home_.path());
    process->start(QStringLiteral("bash"),
                   {QStringLiteral("-c"),
                    QStringLiteral("mapfile -d '' -t words <\"$1\"; exec \"$0\" \"${words[@]}\""),
                    QStringLiteral(SESSION_PEER), QString::fromStdString(list)});
    return process;
}

Ended PrivateBus::runPeer(const std::vector<std::string>& arguments) {
    return run(*startPeer(arguments));
}

Ended PrivateBus::run(QProcess& process) {
    waitUntil([&process] { return process.state() == QProcess::NotRunning; });
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
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

QDBusMessage shelfCall(const char* method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(shelfBus::service, shelfBus::path, shelfBus::interface,
                                                          QString::fromLatin1(method));
    message.setArguments(arguments);
    return message;
}

}  // namespace stowpocket
