// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

namespace stowpocket {

/// A panel that shows StatusNotifierItems, and the session's watcher of them, on a bus connection of its own.
class FakeNotifierPanel : public QDBusVirtualObject {
public:
    FakeNotifierPanel();
    ~FakeNotifierPanel() override;

    /// Empty before any, and once the last has left the bus.
    [[nodiscard]] QString item() const;
    void click(int x, int y);
    /// The sides of the pictures that the item offers.
    [[nodiscard]] QList<int> pictureSizes();

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QDBusConnection bus_;
    QString item_;
};

}  // namespace stowpocket
