// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QImage>
#include <QMetaType>

namespace stowpocket {

/// A picture as StatusNotifierItems send it, (iiay): pixels of 32 bits, alpha first, not multiplied with it.
struct NotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using NotifierPixmaps = QList<NotifierPixmap>;

/// (sa(iiay)ss): no picture of its own and no text below the title.
struct NotifierToolTip {
    QString iconName;
    NotifierPixmaps pixmaps;
    QString title;
    QString text;
};

[[nodiscard]] NotifierPixmaps notifierPixmaps(const QList<QImage>& pictures);

/// Makes these types known to D-Bus; called before the first is sent.
void registerNotifierPixmaps();
/// The type as D-Bus writes it.
[[nodiscard]] QString notifierSignature(QMetaType type);

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip);

}  // namespace stowpocket

Q_DECLARE_METATYPE(stowpocket::NotifierPixmap)
Q_DECLARE_METATYPE(stowpocket::NotifierToolTip)
