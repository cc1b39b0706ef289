// SPDX-License-Identifier: MIT
#include "platform/linux/input/WaylandClicks.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QWidget>

#include <utility>

namespace stowpocket {
namespace {

const QString shell = QStringLiteral("org.gnome.Shell");
const QString shellPath = QStringLiteral("/org/gnome/Shell");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

bool isMenu(QObject* receiver) {
    const auto* const widget = qobject_cast<QWidget*>(receiver);
    return widget != nullptr && widget->windowType() == Qt::Popup;
}

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

MenuCover::MenuCover(const X11Connection& connection) : cover_(connection, X11ScreenCover::Kind::unmanaged) {
    if (isWaylandSession())
        qGuiApp->installEventFilter(this);
}

/// Qt tells of both before it happens, so that the menu comes to lie above.
bool MenuCover::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::Show && menu_ == nullptr && QGuiApplication::focusWindow() == nullptr &&
        isMenu(receiver)) {
        menu_ = receiver;
        cover_.show();
    } else if (event->type() == QEvent::Hide && receiver == menu_) {
        menu_ = nullptr;
        cover_.hide();
    }
    return false;
}

}  // namespace stowpocket
