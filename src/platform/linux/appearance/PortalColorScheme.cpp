// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/PortalColorScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

namespace stowpocket {
namespace {

// The Settings interface of the desktop portal.
const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// Portals wrap the value in a second variant.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

ColorScheme schemeOf(const QDBusMessage& reply) {
    const QVariant value = unwrapped(reply.arguments().value(0));
    if (reply.type() != QDBusMessage::ReplyMessage || value.typeId() != QMetaType::UInt)
        return ColorScheme::noPreference;
    switch (value.toUInt()) {
    case 1:
        return ColorScheme::dark;
    case 2:
        return ColorScheme::light;
    default:
        return ColorScheme::noPreference;
    }
}

}  // namespace

PortalColorScheme::PortalColorScheme(const QDBusConnection& bus, std::function<void(ColorScheme)> onAnswer)
    : bus_(bus), onAnswer_(std::move(onAnswer)) {
    asking_.setSingleShot(true);
    asking_.setInterval(0);
    QObject::connect(&asking_, &QTimer::timeout, [this] { ask(); });
    // From whomever: naming the sender would make Qt wait for the bus to tell who that is.
    bus_.connect({}, portalPath, settings, QStringLiteral("SettingChanged"), {appearance, colorScheme}, {}, &asking_,
                 SLOT(start()));
    asking_.start();
}

void PortalColorScheme::ask() {
    QDBusMessage question = QDBusMessage::createMethodCall(portal, portalPath, settings, QStringLiteral("Read"));
    question << appearance << colorScheme;
    auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), &asking_);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, &asking_, [this, answer] {
        answer->deleteLater();
        onAnswer_(schemeOf(answer->reply()));
    });
}

}  // namespace stowpocket
