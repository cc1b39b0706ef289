// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/X11ActiveWindow.h"

#include <QCoreApplication>

namespace stowpocket {
namespace {

constexpr std::uint8_t sentEventBit = 0x80;

}  // namespace

X11ActiveWindow::X11ActiveWindow(const X11Connection& connection) : connection_(connection) {
    QCoreApplication::instance()->installNativeEventFilter(this);
    look();
}

/// Only notes what happened: the server may not be asked anything while an event is being looked at.
bool X11ActiveWindow::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if ((event.response_type & ~sentEventBit) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto& change = *static_cast<const xcb_property_notify_event_t*>(message);
    if (change.window == connection_.root() && change.atom == connection_.atom(X11Atom::activeWindow))
        QMetaObject::invokeMethod(
            &context_, [this] { look(); }, Qt::QueuedConnection);
    return false;
}

void X11ActiveWindow::look() {
    const std::vector<std::uint32_t> active = connection_.property(connection_.root(), X11Atom::activeWindow);
    if (!active.empty() && active.front() != x11None && !connection_.isOwn(active.front()))
        lastForeign_ = active.front();
}

}  // namespace stowpocket
