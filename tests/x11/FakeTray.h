// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/XcbSession.h"

#include <array>

namespace stowpocket {

/// A tray manager on a connection of its own, as a panel would be. It works only while it is asked to, and ends
/// as a crash does: its windows go, with all that is inside.
class FakeTray {
public:
    /// Where a tray puts the windows that it takes in.
    enum class Container { inPanel, underRoot };

    /// Takes the selection and announces itself.
    explicit FakeTray(Container container)
        : parent_(container == Container::inPanel ? makeWindow(session_->root()) : session_->root()) {
        const xcb_atom_t selection = session_->atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(connection_, session_->window(), selection, XCB_CURRENT_TIME);
        send(session_->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, "MANAGER",
             {XCB_CURRENT_TIME, selection, session_->window()});
    }
    /// Takes in the window that was offered since the last time, if any.
    void work() {
        const xcb_atom_t opcode = session_->atom("_NET_SYSTEM_TRAY_OPCODE");
        while (const XcbSession::Event event{xcb_poll_for_event(connection_)}) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if (typeOf(*event) == XCB_CLIENT_MESSAGE && message.type == opcode)
                takeIn(message.data.data32[2]);
        }
    }
    /// 0 before any.
    [[nodiscard]] xcb_window_t docked() const { return docked_; }
    [[nodiscard]] int dockedCount() const { return dockedCount_; }

private:
    xcb_window_t makeWindow(xcb_window_t parent) {
        const xcb_window_t window = xcb_generate_id(connection_);
        constexpr std::uint32_t overrideRedirect = 1;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, parent, 5, 3, 22, 24, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &overrideRedirect);
        xcb_map_window(connection_, window);
        return window;
    }
    void send(xcb_window_t window, std::uint32_t mask, const char* type, const std::array<std::uint32_t, 3>& data) {
        xcb_client_message_event_t event{XCB_CLIENT_MESSAGE, 32, 0, window, session_->atom(type), {}};
        std::copy(data.begin(), data.end(), std::begin(event.data.data32));
        xcb_send_event(connection_, 0, window, mask, reinterpret_cast<const char*>(&event));
        xcb_flush(connection_);
    }
    void takeIn(xcb_window_t window) {
        constexpr std::uint32_t embeddedNotify = 0;
        xcb_reparent_window(connection_, window, makeWindow(parent_), 0, 0);
        xcb_map_window(connection_, window);
        send(window, XCB_EVENT_MASK_NO_EVENT, "_XEMBED", {XCB_CURRENT_TIME, embeddedNotify, 0});
        docked_ = window;
        ++dockedCount_;
    }

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
    xcb_connection_t* const connection_ = session_->raw();
    const xcb_window_t parent_;
    xcb_window_t docked_ = 0;
    int dockedCount_ = 0;
};

}  // namespace stowpocket
