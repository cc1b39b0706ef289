// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace stowpocket::notifierNames {

/// As panels and programs use them; the freedesktop names are used by none.
inline const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
inline const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
inline const QString item = QStringLiteral("org.kde.StatusNotifierItem");
inline const QString itemPath = QStringLiteral("/StatusNotifierItem");
inline const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace stowpocket::notifierNames
