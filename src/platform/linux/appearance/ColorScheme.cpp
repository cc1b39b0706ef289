// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/ColorScheme.h"

#include "platform/linux/appearance/XSettings.h"
#include "platform/linux/dbus/BusCalls.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

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
    QObject::connect(&asking_, &QTimer::timeout, [this] { askForScheme(); });
    // From any sender: if it were named, Qt would wait for the bus to say who that is.
    bus_.connect({}, portalPath, settings, QStringLiteral("SettingChanged"), {appearance, colorScheme}, {}, &asking_,
                 SLOT(start()));
    asking_.start();
}

void PortalColorScheme::askForScheme() {
    QDBusMessage question = QDBusMessage::createMethodCall(portal, portalPath, settings, QStringLiteral("Read"));
    question << appearance << colorScheme;
    callOnBus(bus_, question, asking_, [this](const QDBusMessage& answer) { onAnswer_(schemeOf(answer)); });
}

X11ThemeWatch::X11ThemeWatch(const X11Connection& connection, std::function<void(bool)> onAnswer)
    : connection_(connection), onAnswer_(std::move(onAnswer)) {
    reading_.setSingleShot(true);
    reading_.setInterval(0);
    QObject::connect(&reading_, &QTimer::timeout, [this] { readTheme(); });
    reading_.start();
}

bool X11ThemeWatch::handleEvent(const xcb_generic_event_t& event) {
    bool isOurs = false;
    if (const auto* const change = eventAs<xcb_property_notify_event_t>(event))
        isOurs = change->window == owner_ && change->atom == connection_.atom(X11Atom::settings);
    else if (const auto* const gone = eventAs<xcb_destroy_notify_event_t>(event))
        isOurs = gone->window == owner_;
    else if (const auto* const announced = eventAs<xcb_client_message_event_t>(event))
        isOurs = announced->type == connection_.atom(X11Atom::manager) &&
                 announced->data.data32[1] == connection_.atom(X11Atom::settingsOwner);
    if (isOurs)
        reading_.start();
    return false;
}

void X11ThemeWatch::readTheme() {
    // A new manager of the settings announces itself there.
    connection_.hearAlso(connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    owner_ = connection_.selectionOwner(X11Atom::settingsOwner);
    if (owner_ == x11None)
        return onAnswer_(false);
    connection_.hearAlso(owner_, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const std::string bytes = connection_.text(owner_, X11Atom::settings).value_or("");
    onAnswer_(isDarkThemeName(textXSetting(bytes, "Net/ThemeName").value_or("")));
}

DesktopColorScheme::DesktopColorScheme(const QDBusConnection& bus, const X11Connection& connection,
                                       std::function<void(bool)> onChange)
    : onChange_(std::move(onChange)),
      portal_(bus, [this](ColorScheme scheme) { decide(scheme, isThemeDark_); }),
      theme_(connection, [this](bool isDark) { decide(wish_, isDark); }) {}

void DesktopColorScheme::decide(ColorScheme wish, bool isThemeDark) {
    wish_ = wish;
    isThemeDark_ = isThemeDark;
    const bool isDark = wish == ColorScheme::noPreference ? isThemeDark : wish == ColorScheme::dark;
    if (std::exchange(isDark_, isDark) != isDark)
        onChange_(isDark);
}

}  // namespace stowpocket
