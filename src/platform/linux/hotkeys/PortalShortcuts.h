// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/hotkeys/PortalRequest.h"

#include <QDBusArgument>
#include <QList>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

/// A key combination as the freedesktop shortcuts specification writes it, such as "ALT+SHIFT+s". Keys are named by
/// what the reference keyboard has on them. Empty for a key that has no name there.
[[nodiscard]] std::string shortcutTrigger(std::uint32_t keyCode, std::uint32_t carbonModifiers);

/// A shortcut as it is requested from the desktop.
struct PortalShortcut {
    /// The same in every run, since the desktop remembers the user's choice under it.
    QString id;
    /// What the user reads.
    QString description;
    /// A proposal, as `shortcutTrigger` writes it; may be empty.
    QString trigger;

    friend bool operator==(const PortalShortcut&, const PortalShortcut&) = default;
};

/// (sa{sv}), a shortcut on the bus.
struct PortalShortcutEntry {
    QString id;
    QVariantMap properties;
};
using PortalShortcutEntries = QList<PortalShortcutEntry>;

/// The entries to send. Registers their type with D-Bus.
[[nodiscard]] PortalShortcutEntries entriesOf(const QList<PortalShortcut>& shortcuts);

/// The ids of the shortcuts that the desktop has bound. Empty when `shortcuts` is no list of shortcuts.
[[nodiscard]] std::optional<QStringList> boundIds(const QVariant& shortcuts);

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcutEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcutEntry& entry);

}  // namespace stowpocket

Q_DECLARE_METATYPE(stowpocket::PortalShortcutEntry)

namespace stowpocket {

/// One set of shortcuts, bound for the lifetime of this object. A desktop binds once in a session, and may ask the
/// user, so another set needs another session.
class PortalShortcutSession : public QObject {
    Q_OBJECT

public:
    struct Events {
        /// The shortcuts work, as far as the user allowed them.
        std::function<void()> bound;
        /// The shortcuts do not work, or no longer; `answer` has the reason. May destroy the session.
        std::function<void(const PortalAnswer& answer)> ended;
        /// The token lets a window that is opened for the press take the focus. It may be empty.
        std::function<void(const QString& id, const QString& activationToken)> activated;
    };

    /// None of `events` runs during this call.
    PortalShortcutSession(const Portal& portal, QList<PortalShortcut> shortcuts, Events events);
    ~PortalShortcutSession() override;

private:
    Q_SLOT void activated(const QDBusMessage& signal);
    Q_SLOT void closed();
    void sessionCreated(const PortalAnswer& answer);
    void bindShortcuts();
    void shortcutsAnswered(const PortalAnswer& answer);
    void end(const PortalAnswer& answer) const;
    void fail(const QString& reason) const { end(PortalAnswer::failure(reason)); }
    [[nodiscard]] QDBusMessage call(const char* method) const;

    Portal portal_;
    const QList<PortalShortcut> shortcuts_;
    const Events events_;
    const QString token_ = nextPortalToken();
    const QString handle_;
    std::unique_ptr<PortalRequest> request_;
};

}  // namespace stowpocket
