// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace stowpocket::portalNames {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString shortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
inline const QString request = QStringLiteral("org.freedesktop.portal.Request");
inline const QString session = QStringLiteral("org.freedesktop.portal.Session");
/// Where programs outside of a sandbox say who they are.
inline const QString registry = QStringLiteral("org.freedesktop.host.portal.Registry");
inline const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace stowpocket::portalNames
