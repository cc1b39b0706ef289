// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11Events.h"

#include <QCoreApplication>
#include <QTimer>

namespace stowpocket {

void answerSelectionRequest(xcb_connection_t* connection, const xcb_selection_request_event_t& request,
                            xcb_atom_t property) {
    const xcb_selection_notify_event_t notify{
        XCB_SELECTION_NOTIFY, 0, 0, request.time, request.requestor, request.selection, request.target, property};
    sendEvent(connection, request.requestor, XCB_EVENT_MASK_NO_EVENT, notify);
}

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
