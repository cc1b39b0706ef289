// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11Events.h"

#include <QCoreApplication>
#include <QTimer>

namespace stowpocket {

X11EventFilter::X11EventFilter() {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

void X11EventFilter::later(std::chrono::milliseconds delay, std::function<void()> work) {
    QTimer::singleShot(delay, &context_, std::move(work));
}

bool X11EventFilter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    return eventType == "xcb_generic_event_t" && handleEvent(*static_cast<const xcb_generic_event_t*>(message));
}

}  // namespace stowpocket
