// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace stowpocket {

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
