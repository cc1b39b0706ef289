// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QImage>
#include <QPoint>
#include <QTimer>

#include <functional>

namespace stowpocket {

/// Knows whether the desktop shows StatusNotifierItems: some panel must have announced itself to the watcher of the
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
    /// Fires at once when it is started, as the signals of the watcher do.
    QTimer asking_;
};

/// What an item shows: the same picture in several sizes, and what it is called.
struct NotifierContent {
    QString title;
    QList<QImage> pictures;
};

/// The icon as a StatusNotifierItem: the panel fetches its picture over D-Bus and tells of clicks, nothing more; it
/// passes no drops on. Registered with the session's watcher from construction to destruction.
class NotifierItem : public QDBusVirtualObject {
public:
    /// `onActivate` gets the place of the click in pixels, as the panel tells it; (0, 0) when it does not. `onSeen`
    /// tells whether anybody is there who has asked for the face, as only those do who show it; it must not destroy
    /// this.
    NotifierItem(const QDBusConnection& bus, NotifierContent content, std::function<void(const QPoint&)> onActivate,
                 std::function<void(bool isSeen)> onSeen);
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
    const std::function<void(const QPoint&)> onActivate_;
    const std::function<void(bool)> onSeen_;
    /// Watches those who have asked for the face.
    QDBusServiceWatcher hosts_;
};

}  // namespace stowpocket
