// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/NotifierMenu.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QImage>
#include <QPoint>
#include <QTimer>

#include <functional>

namespace stowpocket {

/// Knows whether the desktop shows StatusNotifierItems: some panel must have registered with the watcher of the
/// session. Asks without waiting.
class NotifierHost {
public:
    /// `onAnswer` runs on the main thread, never during this call, whenever the answer may have changed.
    NotifierHost(const QDBusConnection& bus, std::function<void(bool isThere)> onAnswer);

private:
    void askForHost();

    QDBusConnection bus_;
    const std::function<void(bool)> onAnswer_;
    QDBusServiceWatcher watcherService_;
    /// Fires as soon as it is started, which the signals of the watcher do too.
    QTimer asking_;
};

/// What an item shows: one picture in several sizes, and a title.
struct NotifierContent {
    QString title;
    QList<QImage> pictures;
};

/// What an item does for its hosts. None of it may destroy the item.
struct NotifierActions {
    StatusItemMenu menu;
    /// Both get the position of the click in pixels, or (0, 0) when the panel does not report it. The menu is asked
    /// for by hosts that show no menus of items themselves.
    std::function<void(const QPoint&)> onActivate;
    std::function<void(const QPoint&)> onContextMenu;
    /// Gets whether any host is there that has asked for the content, as only hosts that show the item do.
    std::function<void(bool isSeen)> onSeen;
};

/// The icon as a StatusNotifierItem. The panel fetches its picture and its menu over D-Bus and reports clicks, but
/// passes on no drops. Registered with the watcher of the session from construction to destruction.
class NotifierItem : public QDBusVirtualObject {
public:
    NotifierItem(const QDBusConnection& bus, NotifierContent content, NotifierActions actions);
    ~NotifierItem() override;

    void setContent(NotifierContent content);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void requestName();
    void askedBy(const QString& host);
    void announce(const char* signal) const;
    [[nodiscard]] QVariantMap properties() const;
    [[nodiscard]] QDBusMessage answerAboutProperties(const QDBusMessage& question) const;
    [[nodiscard]] QDBusMessage answer(const QDBusMessage& call) const;

    QDBusConnection bus_;
    const QString service_;
    NotifierContent content_;
    const NotifierActions actions_;
    NotifierMenu menu_;
    /// Watches the hosts that have asked for the content.
    QDBusServiceWatcher hosts_;
};

}  // namespace stowpocket
