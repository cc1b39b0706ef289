// SPDX-License-Identifier: MIT
#include "platform/linux/input/GnomeClicks.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QDBusVariant>

#include <utility>

namespace stowpocket {
namespace {

const QString shell = QStringLiteral("org.gnome.Shell");
const QString shellPath = QStringLiteral("/org/gnome/Shell");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace

bool GnomeClicks::areNeeded(const X11Connection& connection) {
    return isWaylandSession() && connection.windowManagerName() == "GNOME Shell";
}

GnomeClicks::GnomeClicks(const X11Connection& connection, std::function<void()> onOverview)
    : onOverview_(std::move(onOverview)), desktop_(connection, X11ScreenCover::Kind::desktop) {
    desktop_.show();
    asking_.setSingleShot(true);
    asking_.setInterval(0);
    QObject::connect(&asking_, &QTimer::timeout, [this] { askForOverview(); });
    // From any sender: if it were named, Qt would wait for the bus to say who that is.
    QDBusConnection::sessionBus().connect({}, shellPath, properties, QStringLiteral("PropertiesChanged"), {shell}, {},
                                          &asking_, SLOT(start()));
}

void GnomeClicks::askForOverview() {
    callOnBus(QDBusConnection::sessionBus(), propertyCall(shell, shellPath, shell, QStringLiteral("OverviewActive")),
              asking_, [this](const QDBusMessage& answer) {
                  if (answer.arguments().value(0).value<QDBusVariant>().variant().toBool())
                      onOverview_();
              });
}

}  // namespace stowpocket
