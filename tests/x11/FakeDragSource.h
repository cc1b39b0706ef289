// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/XcbSession.h"

namespace stowpocket {

/// Another program that drags a promised file, on a connection of its own. It works only while it is asked to; what
/// it does by itself the server has seen when the call returns.
class FakeDragSource {
public:
    FakeDragSource() {
        xcb_set_selection_owner(connection_, window_, session_->atom("XdndSelection"), XCB_CURRENT_TIME);
    }
    /// Proposes a name for the file.
    void propose(const std::string& name) {
        write(window_, session_->atom("XdndDirectSave0"), name);
        static_cast<void>(session_->serverTime());
    }
    /// Answers with this when the file is wanted, after `onSave` has been told the URL. Silent when empty.
    void replyWith(std::string reply, std::function<void(const std::string& url)> onSave = {}) {
        reply_ = std::move(reply);
        onSave_ = std::move(onSave);
    }
    /// Its window goes, and with it what it was dragging.
    void vanish() {
        xcb_destroy_window(connection_, window_);
        static_cast<void>(session_->serverTime());
    }
    /// Answers what it was asked since the last time.
    void work() {
        while (const XcbSession::Event event{xcb_poll_for_event(connection_)}) {
            if (typeOf(*event) == XCB_SELECTION_REQUEST)
                save(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
        }
    }
    [[nodiscard]] bool wasSaveWanted() const { return wasSaveWanted_; }

private:
    void write(xcb_window_t window, xcb_atom_t property, const std::string& text) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    }
    void save(const xcb_selection_request_event_t& request) {
        wasSaveWanted_ = true;
        const X11Property place = session_->property(window_, request.target, 4096);
        if (onSave_)
            onSave_({reinterpret_cast<const char*>(place.bytes.data()), place.bytes.size()});
        if (reply_.empty())
            return;
        write(request.requestor, request.property, reply_);
        const xcb_selection_notify_event_t notify{
            XCB_SELECTION_NOTIFY, 0, 0, request.time, request.requestor, request.selection, request.target,
            request.property};
        xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&notify));
        xcb_flush(connection_);
    }

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
    xcb_connection_t* const connection_ = session_->raw();
    const xcb_window_t window_ = session_->newWindow();
    std::string reply_;
    std::function<void(const std::string&)> onSave_;
    bool wasSaveWanted_ = false;
};

}  // namespace stowpocket
