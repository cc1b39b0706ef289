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

/// A shortcut as the desktop is asked for it.
struct PortalShortcut {
    /// The same in every run: under it the desktop remembers what the user chose.
    QString id;
    /// What the user reads.
    QString description;
    /// A proposal, as `shortcutTrigger` writes it; may be empty.
    QString trigger;

    friend bool operator==(const PortalShortcut&, const PortalShortcut&) = default;
};

/// (sa{sv}), as shortcuts travel.
struct PortalShortcutEntry {
    QString id;
    QVariantMap properties;
};
using PortalShortcutEntries = QList<PortalShortcutEntry>;

/// The entries to send. Makes their type known to D-Bus.
[[nodiscard]] PortalShortcutEntries entriesOf(const QList<PortalShortcut>& shortcuts);

/// The ids among the shortcuts that the desktop answers to have bound; none when that is no list of shortcuts.
[[nodiscard]] std::optional<QStringList> boundIds(const QVariant& shortcuts);

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcutEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcutEntry& entry);

}  // namespace stowpocket

Q_DECLARE_METATYPE(stowpocket::PortalShortcutEntry)

namespace stowpocket {

/// One set of shortcuts, bound as long as this lives. Desktops bind once in a session, and may ask the user: another
/// set needs another session.
class PortalShortcutSession : public QObject {
    Q_OBJECT

public:
    struct Events {
        /// The shortcuts work, as far as the user let them.
        std::function<void()> bound;
        /// They do not, or not any longer, for the reason in `answer`; may destroy the session.
        std::function<void(const PortalAnswer& answer)> ended;
        /// The token lets a window opened for it take the focus; may be empty.
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
