// SPDX-License-Identifier: MIT
#include "platform/linux/dbus/BusCalls.h"

#include <QDBusPendingCallWatcher>

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

}  // namespace stowpocket
