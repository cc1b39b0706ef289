// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/X11WindowPing.h"

#include <algorithm>

namespace stowpocket {
namespace {

constexpr std::size_t longestProtocolList = 1024;

}  // namespace

void X11WindowPing::prepare(xcb_window_t window) {
    const auto spoken = session_.property(window, session_.atom("WM_PROTOCOLS"), longestProtocolList).words();
    if (std::ranges::find(spoken, session_.atom("_NET_WM_PING")) == spoken.end())
        return;
    window_ = window;
    time_ = session_.serverTime();
    watchRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
}

void X11WindowPing::send() const {
    if (!isPossible())
        return;
    xcb_client_message_event_t question{};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = window_;
    question.type = session_.atom("WM_PROTOCOLS");
    question.data.data32[0] = session_.atom("_NET_WM_PING");
    question.data.data32[1] = time_;
    question.data.data32[2] = window_;
    xcb_send_event(session_.raw(), 0, window_, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&question));
    xcb_flush(session_.raw());
}

bool X11WindowPing::isAnswer(const xcb_generic_event_t& event) {
    if (!isPossible() || typeOf(event) != XCB_CLIENT_MESSAGE)
        return false;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    return message.window == session_.root() && message.format == 32 &&
           message.data.data32[0] == session_.atom("_NET_WM_PING") && message.data.data32[1] == time_ &&
           message.data.data32[2] == window_;
}

void X11WindowPing::end() {
    if (isPossible())
        watchRoot(XCB_EVENT_MASK_NO_EVENT);
    window_ = XCB_WINDOW_NONE;
}

void X11WindowPing::watchRoot(std::uint32_t events) const {
    xcb_change_window_attributes(session_.raw(), session_.root(), XCB_CW_EVENT_MASK, &events);
    xcb_flush(session_.raw());
}

}  // namespace stowpocket
