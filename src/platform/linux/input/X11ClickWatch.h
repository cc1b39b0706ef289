// SPDX-License-Identifier: MIT
#pragma once

#include "services/MonitorList.h"

#include <QAbstractNativeEventFilter>
#include <QMetaObject>

#include <cstdint>
#include <xcb/xcb.h>

namespace stowpocket {

/// Sees the left and right mouse buttons go down outside this program's windows, whoever holds the pointer. Without
/// monitors the server sends nothing. On Qt's connection, which has agreed on the version of the input extension;
/// where the extension is missing there are no clicks. Of a click on a Wayland window the server learns nothing but
/// that the keyboard goes elsewhere, so in a Wayland session that counts as one: at the end of the drag where
/// one out of this program did it.
class X11ClickWatch : private QAbstractNativeEventFilter {
public:
    using Handler = std::function<void()>;
    using AfterDrag = std::function<void(std::function<void()> work)>;

    X11ClickWatch(xcb_connection_t* connection, AfterDrag afterDrag);
    ~X11ClickWatch() override;
    X11ClickWatch(const X11ClickWatch&) = delete;
    X11ClickWatch& operator=(const X11ClickWatch&) = delete;

    [[nodiscard]] std::unique_ptr<EventMonitorToken> add(Handler handler) {
        return monitors_.add(std::move(handler));
    }
    /// Bit 0 left, bit 1 right, bit 2 middle.
    [[nodiscard]] std::uint32_t pressedButtons() const;

private:
    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;
    [[nodiscard]] bool isOutsideClick(const xcb_generic_event_t& event) const;
    [[nodiscard]] bool pointerIsOverOwnWindow() const;
    void follow();
    void followServer();
    void clicked() const;
    void keyboardWent();

    xcb_connection_t* const connection_;
    const AfterDrag afterDrag_;
    const xcb_window_t root_;
    std::uint8_t inputExtension_ = 0;
    QMetaObject::Connection deactivation_;
    MonitorList<Handler> monitors_{[this] { follow(); }};
};

}  // namespace stowpocket
