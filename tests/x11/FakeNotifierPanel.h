// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/notifier/NotifierNames.h"
#include "platform/linux/notifier/NotifierPixmap.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QDBusVirtualObject>

namespace stowpocket {

/// A panel that shows StatusNotifierItems, and the session's watcher of them, on a bus connection of its own.
class FakeNotifierPanel : public QDBusVirtualObject {
public:
    FakeNotifierPanel() {
        bus_.registerVirtualObject(notifierNames::watcherPath, this);
        bus_.registerService(notifierNames::watcher);
    }
    ~FakeNotifierPanel() override {
        bus_.unregisterService(notifierNames::watcher);
        QDBusConnection::disconnectFromBus(bus_.name());
    }
    /// Empty before any, and once the last has left the bus.
    [[nodiscard]] QString item() const { return bus_.interface()->isServiceRegistered(item_) ? item_ : QString(); }
    void click(int x, int y) {
        QDBusMessage call = QDBusMessage::createMethodCall(item_, notifierNames::itemPath, notifierNames::item,
                                                           QStringLiteral("Activate"));
        bus_.call(call << x << y, QDBus::NoBlock);
    }
    /// The sides of the pictures that the item offers.
    [[nodiscard]] QList<int> pictureSizes() {
        QDBusMessage question = QDBusMessage::createMethodCall(item_, notifierNames::itemPath,
                                                               notifierNames::properties, QStringLiteral("Get"));
        question << notifierNames::item << QStringLiteral("IconPixmap");
        const QDBusPendingReply<QDBusVariant> reply = bus_.call(question, QDBus::BlockWithGui);
        QList<int> sizes;
        for (const NotifierPixmap& pixmap : qdbus_cast<NotifierPixmaps>(reply.value().variant())) {
            if (pixmap.pixels.size() == qsizetype{4} * pixmap.width * pixmap.height)
                sizes.push_back(pixmap.width);
        }
        return sizes;
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        if (message.member() == QStringLiteral("RegisterStatusNotifierItem"))
            item_ = message.arguments().value(0).toString();
        return bus_.send(message.interface() == notifierNames::properties
                             ? message.createReply(QVariant::fromValue(QDBusVariant(true)))
                             : message.createReply());
    }

private:
    QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"));
    QString item_;
};

}  // namespace stowpocket
