// SPDX-License-Identifier: MIT
#include "platform/linux/input/MenuCover.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>

namespace stowpocket {
namespace {

bool isMenu(QObject* receiver) {
    const auto* const widget = qobject_cast<QWidget*>(receiver);
    return widget != nullptr && widget->windowType() == Qt::Popup;
}

}  // namespace

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
