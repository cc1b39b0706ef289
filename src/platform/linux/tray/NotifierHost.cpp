// SPDX-License-Identifier: MIT
#include "platform/linux/tray/NotifierHost.h"

#include "platform/linux/tray/NotifierNames.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace stowpocket {

NotifierHost::NotifierHost(const QDBusConnection& bus, std::function<void(bool)> onAnswer)
    : bus_(bus),
      onAnswer_(std::move(onAnswer)),
      watcherService_(notifierNames::watcher, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    asking_.setSingleShot(true);
    asking_.setInterval(0);
    QObject::connect(&asking_, &QTimer::timeout, [this] { ask(); });
    QObject::connect(&watcherService_, &QDBusServiceWatcher::serviceOwnerChanged, &asking_,
                     qOverload<>(&QTimer::start));
    for (const char* const signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(notifierNames::watcher, notifierNames::watcherPath, notifierNames::watcher,
                     QString::fromLatin1(signal), &asking_, SLOT(start()));
    asking_.start();
}

void NotifierHost::ask() {
    if (!bus_.isConnected())
        return onAnswer_(false);
    QDBusMessage question = QDBusMessage::createMethodCall(notifierNames::watcher, notifierNames::watcherPath,
                                                           notifierNames::properties, QStringLiteral("Get"));
    question << notifierNames::watcher << QStringLiteral("IsStatusNotifierHostRegistered");
    // A watcher that is not running is not started for this.
    question.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), &asking_);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, &asking_, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        onAnswer_(reply.isValid() && reply.value().variant().toBool());
    });
}

}  // namespace stowpocket
