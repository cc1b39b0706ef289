// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace stowpocket {

/// A connection of its own to the X server, with an unseen window. Used by one thread at a time. Questions wait for
/// the server.
class XcbSession : public X11Connection {
public:
    using Deadline = std::chrono::steady_clock::time_point;
    using Event = XcbAnswer<xcb_generic_event_t>;

    /// Null when the server cannot be reached.
    [[nodiscard]] static std::unique_ptr<XcbSession> open();
    ~XcbSession();
    XcbSession(const XcbSession&) = delete;
    XcbSession& operator=(const XcbSession&) = delete;

    [[nodiscard]] xcb_window_t window() const { return window_; }
    /// Makes another unseen window, which gets the events of its properties.
    [[nodiscard]] xcb_window_t newWindow() const;

    using X11Connection::atom;
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    [[nodiscard]] std::vector<std::string> namesOf(const std::vector<xcb_atom_t>& atoms) const;
    /// The time of the server, which owners of selections are told.
    [[nodiscard]] xcb_timestamp_t serverTime();

    /// The handler gets the events that nobody waits for.
    void setEventHandler(std::function<void(const xcb_generic_event_t&)> handler) { handler_ = std::move(handler); }
    /// Hands on the events that have arrived, without waiting.
    void handleEvents();
    /// Waits for an event that satisfies `isWanted` and hands on the others. Returns null after the deadline.
    [[nodiscard]] Event await(Deadline deadline, const std::function<bool(const xcb_generic_event_t&)>& isWanted);

private:
    explicit XcbSession(xcb_connection_t* connection);
    [[nodiscard]] Event next(Deadline deadline) const;

    const xcb_window_t window_;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::function<void(const xcb_generic_event_t&)> handler_ = [](const xcb_generic_event_t&) {};
};

}  // namespace stowpocket
