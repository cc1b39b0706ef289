// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/XcbSession.h"

namespace stowpocket {

/// Asks the program of a window for a sign of life (_NET_WM_PING), which it gives when it gets round to the events
/// that it was sent before. The answer goes to the root window, which is watched from the preparation until the end.
class X11WindowPing {
public:
    explicit X11WindowPing(XcbSession& session) : session_(session) {}

    /// Finds out whether the program has promised to answer, so that sending takes no time.
    void prepare(xcb_window_t window);
    [[nodiscard]] bool isPossible() const { return window_ != XCB_WINDOW_NONE; }
    void send() const;
    [[nodiscard]] bool isAnswer(const xcb_generic_event_t& event);
    void end();

private:
    void watchRoot(std::uint32_t events) const;

    XcbSession& session_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_timestamp_t time_ = XCB_CURRENT_TIME;
};

}  // namespace stowpocket
