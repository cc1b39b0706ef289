// SPDX-License-Identifier: MIT
#include "FakeNotifierPanel.h"

#include "platform/linux/notifier/NotifierNames.h"
#include "platform/linux/notifier/NotifierPixmap.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace stowpocket {

FakeNotifierPanel::FakeNotifierPanel()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"))) {
    bus_.registerVirtualObject(notifierNames::watcherPath, this);
    bus_.registerService(notifierNames::watcher);
}

FakeNotifierPanel::~FakeNotifierPanel() {
    bus_.unregisterService(notifierNames::watcher);
    QDBusConnection::disconnectFromBus(QStringLiteral("panel"));
}

QString FakeNotifierPanel::item() const {
    return bus_.interface()->isServiceRegistered(item_) ? item_ : QString();
}

bool FakeNotifierPanel::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (message.member() == QStringLiteral("RegisterStatusNotifierItem"))
        item_ = message.arguments().value(0).toString();
    return bus_.send(message.interface() == notifierNames::properties
                         ? message.createReply(QVariant::fromValue(QDBusVariant(true)))
                         : message.createReply());
}

void FakeNotifierPanel::click(int x, int y) {
    QDBusMessage call = QDBusMessage::createMethodCall(item_, notifierNames::itemPath, notifierNames::item,
                                                       QStringLiteral("Activate"));
    call << x << y;
    bus_.call(call, QDBus::NoBlock);
}

QList<int> FakeNotifierPanel::pictureSizes() {
    QDBusMessage question = QDBusMessage::createMethodCall(item_, notifierNames::itemPath, notifierNames::properties,
                                                           QStringLiteral("Get"));
    question << notifierNames::item << QStringLiteral("IconPixmap");
    const QDBusPendingReply<QDBusVariant> reply = bus_.call(question, QDBus::BlockWithGui);
    QList<int> sizes;
    for (const NotifierPixmap& pixmap : qdbus_cast<NotifierPixmaps>(reply.value().variant())) {
        if (pixmap.pixels.size() == qsizetype{4} * pixmap.width * pixmap.height)
            sizes.push_back(pixmap.width);
    }
    return sizes;
}

}  // namespace stowpocket
