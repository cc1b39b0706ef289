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
        session_->setEventHandler([this](const xcb_generic_event_t& event) { hear(event); });
        xcb_set_selection_owner(session_->raw(), window_, session_->atom(X11Atom::dragSelection), XCB_CURRENT_TIME);
        propose(name);
    }
    void propose(const std::string& name) {
        write(window_, saveFormat_, name);
        static_cast<void>(session_->serverTime());
    }
    /// Answers so when the file is wanted, after `onSave` has been told the URL.
    void replyWith(const std::string& reply, const std::function<void(const std::string& url)>& onSave) {
        offers_[saveFormat_].bytes = [this, reply, onSave] {
            onSave(session_->text(window_, X11Atom::directSave).value());
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
        const auto tell = [&](X11Atom type, const std::array<std::uint32_t, 5>& fields) {
            session_->sendMessage(target, XCB_EVENT_MASK_NO_EVENT, target, type, fields);
        };
        constexpr std::uint32_t version = 5u << 24;
        tell(X11Atom::dragEnter, {window_, version, types[0], types[1], types[2]});
        const xcb_timestamp_t now = session_->serverTime();
        tell(X11Atom::dragPosition, {window_, 0, 0, now, session_->atom("XdndActionCopy")});
        tell(X11Atom::dragDrop, {window_, 0, now});
        tell(X11Atom::dragLeave, {window_});
    }
    /// Its window goes, and with it what it was dragging.
    void vanish() {
        xcb_destroy_window(session_->raw(), window_);
        static_cast<void>(session_->serverTime());
    }
    /// Answers what it was asked since the last time.
    void work() { session_->handleEvents(); }

    bool wasAsked = false;
    /// Whether the drop was taken, once that is known.
    std::optional<bool> wasTaken;

private:
    struct Offer {
        std::function<std::string()> bytes;
        Manner manner = Manner::atOnce;
    };

    void hear(const xcb_generic_event_t& event) {
        if (const auto* const request = eventAs<xcb_selection_request_event_t>(event))
            answer(*request);
        else if (const auto* const change = eventAs<xcb_property_notify_event_t>(event))
            handNextPiece(*change);
        else if (const auto* const message = eventAs<xcb_client_message_event_t>(event))
            wasTaken = message->type == finished_ ? (message->data.data32[1] & 1) != 0 : wasTaken;
    }
    void answer(const xcb_selection_request_event_t& request) {
        wasAsked = true;
        const auto offer = offers_.find(request.target);
        if (offer == offers_.end() || offer->second.manner == Manner::silent)
            return;
        if (offer->second.manner == Manner::atOnce)
            write(request.requestor, request.property, offer->second.bytes());
        else
            begin(request, offer->second.bytes(), offer->second.manner);
        answerSelectionRequest(session_->raw(), request, request.property);
    }
    void begin(const xcb_selection_request_event_t& request, const std::string& bytes, Manner manner) {
        constexpr std::size_t pieceSize = 100'000;
        pieces_.clear();
        for (std::size_t at = 0; at < bytes.size(); at += pieceSize)
            pieces_.push_back(bytes.substr(at, pieceSize));
        pieces_.emplace_back();
        if (manner == Manner::stopsInTheMiddle)
            pieces_.resize(pieces_.size() / 2);
        session_->hearAlso(request.requestor, XCB_EVENT_MASK_PROPERTY_CHANGE);
        session_->setProperty(request.requestor, request.property, session_->atom(X11Atom::inPieces),
                              {static_cast<std::uint32_t>(bytes.size())});
    }
    void handNextPiece(const xcb_property_notify_event_t& event) {
        if (event.state != XCB_PROPERTY_DELETE || pieces_.empty())
            return;
        write(event.window, event.atom, pieces_.front());
        pieces_.pop_front();
    }
    void write(xcb_window_t window, xcb_atom_t property, const std::string& text) {
        xcb_change_property(session_->raw(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
        xcb_flush(session_->raw());
    }

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
    const xcb_window_t window_ = session_->newWindow();
    const xcb_atom_t saveFormat_ = session_->atom(X11Atom::directSave);
    const xcb_atom_t finished_ = session_->atom("XdndFinished");
    std::map<xcb_atom_t, Offer> offers_;
    std::deque<std::string> pieces_;
};

}  // namespace stowpocket
