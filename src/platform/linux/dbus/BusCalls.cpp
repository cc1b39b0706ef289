// SPDX-License-Identifier: MIT
#include "platform/linux/dbus/BusCalls.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QLoggingCategory>

#include <utility>

namespace stowpocket {

void callOnBus(const QDBusConnection& bus, const QDBusMessage& call, QObject& context,
               std::function<void(const QDBusMessage& answer)> then, std::chrono::milliseconds limit) {
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, static_cast<int>(limit.count())), &context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context, [watcher, then = std::move(then)] {
        watcher->deleteLater();
        then(watcher->reply());
    });
}

QDBusMessage busCall(const QString& method, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                       QStringLiteral("/org/freedesktop/DBus"),
                                                       QStringLiteral("org.freedesktop.DBus"), method);
    call.setArguments(arguments);
    return call;
}

QDBusMessage nameRequest(const QString& name) {
    constexpr uint doNotQueue = 4;
    return busCall(QStringLiteral("RequestName"), {name, doNotQueue});
}

QDBusMessage propertyCall(const QString& service, const QString& path, const QString& interface,
                          const QString& property) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << interface << property;
    return call;
}

namespace {

Q_LOGGING_CATEGORY(sessionLog, "stowpocket.session")

constexpr int patienceMs = 300;
/// Makes Qt 6 ask for the address only, without waiting.
constexpr auto alwaysOn = "QT_LINUX_ACCESSIBILITY_ALWAYS_ON";

QDBusMessage question() {
    QDBusMessage question = propertyCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                         QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"));
    // A bus that is not running is not started for this, and Qt does not ask it either.
    question.setAutoStartService(false);
    return question;
}

}  // namespace

AccessibilityBusProbe::AccessibilityBusProbe(const QDBusConnection& bus)
    : answer_(bus.asyncCall(question(), patienceMs)) {}

bool AccessibilityBusProbe::avoidSilentBus() {
    answer_.waitForFinished();
    const QDBusError::ErrorType error = answer_.error().type();
    const bool isSilent =
        error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
    if (isSilent) {
        qCWarning(sessionLog, "the accessibility bus does not answer; it is served when it does");
        qputenv(alwaysOn, "1");
    }
    return !isSilent;
}

}  // namespace stowpocket
