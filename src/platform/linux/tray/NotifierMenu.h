// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <string>
#include <vector>

namespace stowpocket {

/// The icon's menu as hosts of StatusNotifierItems fetch and show it: com.canonical.dbusmenu, with one level. Hosts
/// are other programs, so every call may be malformed. On the bus from construction to destruction.
class NotifierMenu : public QDBusVirtualObject {
public:
    static const QString path;

    /// A chosen entry is passed on when its call has been answered.
    NotifierMenu(const QDBusConnection& bus, StatusItemMenu menu);
    ~NotifierMenu() override;

    /// Tells hosts that have fetched the menu if it has changed since.
    void announceChange();

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    using Entries = std::vector<StatusItemMenuEntry>;

    [[nodiscard]] Entries entriesNow() const;
    [[nodiscard]] QDBusMessage answer(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage answerAboutProperties(const QDBusMessage& question) const;
    [[nodiscard]] QDBusMessage layout(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage propertiesOfEntries(const QDBusMessage& call) const;
    [[nodiscard]] QDBusMessage propertyOfEntry(const QDBusMessage& call) const;
    [[nodiscard]] QDBusMessage handleEvent(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage handleEventGroup(const QDBusMessage& call);
    [[nodiscard]] bool isToBeFetched() const { return entriesNow() != delivered_; }
    void happen(int id, const QString& event);

    QDBusConnection bus_;
    const StatusItemMenu menu_;
    /// What hosts know, and its number.
    Entries delivered_;
    uint revision_ = 1;
};

}  // namespace stowpocket
