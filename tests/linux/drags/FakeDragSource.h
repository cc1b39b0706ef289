// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/XcbSession.h"

#include <deque>

namespace stowpocket {

/// Another program that drags a promised file, on a connection of its own. It works only while it is asked to; what
/// it does by itself the server has seen when the call returns.
class FakeDragSource {
public:
    /// Proposes a name for the file, if it is given one.
    explicit FakeDragSource(const std::string& name = {}) {
        xcb_set_selection_owner(connection_, window_, session_->atom("XdndSelection"), XCB_CURRENT_TIME);
        propose(name);
    }
    void propose(const std::string& name) {
        write(window_, session_->atom(saveFormat), name);
        static_cast<void>(session_->serverTime());
    }
    /// Answers so when the file is wanted, after `onSave` has been told the URL.
    void replyWith(const std::string& reply, const std::function<void(const std::string& url)>& onSave) {
        offers_[session_->atom(saveFormat)].bytes = [this, reply, onSave] {
            const X11Property place = session_->property(window_, session_->atom(saveFormat), 4096);
            onSave({reinterpret_cast<const char*>(place.bytes.data()), place.bytes.size()});
            return reply;
        };
    }
    enum class Manner { atOnce, inPieces, stopsInTheMiddle, silent };
    /// Offers data in one more format.
    void offer(const std::string& format, std::string bytes, Manner manner = Manner::atOnce) {
        offers_[session_->atom(format)] = {[bytes = std::move(bytes)] { return bytes; }, manner};
    }
    /// Drags all that over a window and lets go there. Says at the end that it left, as wlroots does.
    void drop(xcb_window_t target) {
        std::vector<xcb_atom_t> types;
        for (const auto& [format, offer] : offers_)
            types.push_back(format);
        types.resize(3);
        constexpr std::uint32_t version = 5u << 24;
        send(target, "XdndEnter", {window_, version, types[0], types[1], types[2]});
        const xcb_timestamp_t now = session_->serverTime();
        send(target, "XdndPosition", {window_, 0, 0, now, session_->atom("XdndActionCopy")});
        send(target, "XdndDrop", {window_, 0, now, 0, 0});
        send(target, "XdndLeave", {window_});
    }
    /// Whether the drop was taken, once that is known.
    [[nodiscard]] std::optional<bool> wasTaken() const { return wasTaken_; }
    /// Its window goes, and with it what it was dragging.
    void vanish() {
        xcb_destroy_window(connection_, window_);
        static_cast<void>(session_->serverTime());
    }
    /// Answers what it was asked since the last time.
    void work() {
        while (const XcbSession::Event event{xcb_poll_for_event(connection_)}) {
            if (const auto* const request = eventAs<xcb_selection_request_event_t>(*event))
                answer(*request);
            else if (const auto* const change = eventAs<xcb_property_notify_event_t>(*event))
                handNextPiece(*change);
            else if (const auto* const message = eventAs<xcb_client_message_event_t>(*event))
                hear(*message);
        }
    }
    [[nodiscard]] bool wasAsked() const { return wasAsked_; }

private:
    static constexpr auto saveFormat = "XdndDirectSave0";
    struct Offer {
        std::function<std::string()> bytes;
        Manner manner = Manner::atOnce;
    };

    void send(xcb_window_t target, const char* type, const std::array<std::uint32_t, 5>& fields) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = target;
        message.type = session_->atom(type);
        std::ranges::copy(fields, std::begin(message.data.data32));
        sendEvent(connection_, target, XCB_EVENT_MASK_NO_EVENT, message);
    }
    void hear(const xcb_client_message_event_t& message) {
        if (message.type == session_->atom("XdndFinished"))
            wasTaken_ = (message.data.data32[1] & 1) != 0;
    }
    void answer(const xcb_selection_request_event_t& request) {
        wasAsked_ = true;
        const auto offer = offers_.find(request.target);
        if (offer == offers_.end() || offer->second.manner == Manner::silent)
            return;
        if (offer->second.manner == Manner::atOnce)
            write(request.requestor, request.property, offer->second.bytes());
        else
            begin(request, offer->second.bytes(), offer->second.manner);
        answerSelectionRequest(connection_, request, request.property);
    }
    void begin(const xcb_selection_request_event_t& request, const std::string& bytes, Manner manner) {
        constexpr std::size_t pieceSize = 100'000;
        pieces_.clear();
        for (std::size_t at = 0; at < bytes.size(); at += pieceSize)
            pieces_.push_back(bytes.substr(at, pieceSize));
        pieces_.emplace_back();
        if (manner == Manner::stopsInTheMiddle)
            pieces_.resize(pieces_.size() / 2);
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection_, request.requestor, XCB_CW_EVENT_MASK, &mask);
        const auto size = static_cast<std::uint32_t>(bytes.size());
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                            session_->atom("INCR"), 32, 1, &size);
    }
    void handNextPiece(const xcb_property_notify_event_t& event) {
        if (event.state != XCB_PROPERTY_DELETE || pieces_.empty())
            return;
        write(event.window, event.atom, pieces_.front());
        xcb_flush(connection_);
        pieces_.pop_front();
    }
    void write(xcb_window_t window, xcb_atom_t property, const std::string& text) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    }

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
    xcb_connection_t* const connection_ = session_->raw();
    const xcb_window_t window_ = session_->newWindow();
    bool wasAsked_ = false;
    std::map<xcb_atom_t, Offer> offers_;
    std::deque<std::string> pieces_;
    std::optional<bool> wasTaken_;
};

}  // namespace stowpocket
