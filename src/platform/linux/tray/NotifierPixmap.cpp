// SPDX-License-Identifier: MIT
#include "platform/linux/tray/NotifierPixmap.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace stowpocket {

NotifierPixmaps notifierPixmaps(const QList<QImage>& pictures) {
    NotifierPixmaps pixmaps;
    for (const QImage& picture : pictures) {
        const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
        NotifierPixmap pixmap{image.width(), image.height(), QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
        qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / qsizetype{sizeof(quint32)},
                              pixmap.pixels.data());
        pixmaps.push_back(std::move(pixmap));
    }
    return pixmaps;
}

void registerNotifierPixmaps() {
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<NotifierPixmaps>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

QString notifierSignature(QMetaType type) {
    return QString::fromLatin1(QDBusMetaType::typeToSignature(type));
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

}  // namespace stowpocket
