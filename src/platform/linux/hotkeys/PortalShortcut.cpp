// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/PortalShortcut.h"

#include <QDBusMetaType>

namespace stowpocket {

PortalShortcutEntries entriesOf(const QList<PortalShortcut>& shortcuts) {
    qDBusRegisterMetaType<PortalShortcutEntry>();
    qDBusRegisterMetaType<PortalShortcutEntries>();
    PortalShortcutEntries entries;
    for (const PortalShortcut& shortcut : shortcuts) {
        QVariantMap properties{{QStringLiteral("description"), shortcut.description}};
        if (!shortcut.trigger.isEmpty())
            properties.insert(QStringLiteral("preferred_trigger"), shortcut.trigger);
        entries.push_back({shortcut.id, properties});
    }
    return entries;
}

std::optional<QStringList> boundIds(const QVariant& shortcuts) {
    if (shortcuts.metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto argument = shortcuts.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("a(sa{sv})"))
        return std::nullopt;
    QStringList ids;
    for (const PortalShortcutEntry& entry : qdbus_cast<PortalShortcutEntries>(argument))
        ids.push_back(entry.id);
    return ids;
}

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcutEntry& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcutEntry& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument;
}

}  // namespace stowpocket
