// SPDX-License-Identifier: MIT
#pragma once

#include "services/MainBundle.h"

#include <QList>
#include <QString>
#include <QVariantMap>

/// The names by which the running program and its command verbs find each other on the session bus.
namespace stowpocket::shelfBus {

inline const QString service =
    QString::fromLatin1(bundleIdentifier.data(), static_cast<qsizetype>(bundleIdentifier.size()));
inline const QString path = QStringLiteral("/com/example/stowpocket");
inline const QString interface = QStringLiteral("com.example.stowpocket.Shelf1");

/// Keys of the tokens that a request carries, as org.freedesktop.Application calls them.
inline const QString activationTokenKey = QStringLiteral("activation-token");
inline const QString startupIDKey = QStringLiteral("desktop-startup-id");

/// The items that List answers with (aa{sv}), and the keys of each.
using ItemList = QList<QVariantMap>;
inline const QString idKey = QStringLiteral("id");
inline const QString urlKey = QStringLiteral("url");
inline const QString availableKey = QStringLiteral("available");
inline const QString sizeKey = QStringLiteral("size");

}  // namespace stowpocket::shelfBus
