// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QLoggingCategory>

namespace stowpocket {

Q_DECLARE_LOGGING_CATEGORY(dragsLog)

/// Asks owners of selections for data, one question at a time, without waiting: the answer comes as an event. A
/// window of its own, never seen, takes the data.
class X11Requestor {
public:
    /// `connection` outlives it.
    explicit X11Requestor(const X11Connection& connection);
    X11Requestor(const X11Requestor&) = delete;
    X11Requestor& operator=(const X11Requestor&) = delete;
    ~X11Requestor();

    [[nodiscard]] xcb_window_t window() const { return window_; }
    /// Answers the number of the request, which all events that follow from it carry or exceed.
    [[nodiscard]] unsigned ask(X11Atom selection, X11Atom target, xcb_timestamp_t time) const;
    /// The data of an answer that came for `window()`; none when the owner refused. Taken once.
    [[nodiscard]] std::optional<std::vector<std::uint32_t>>
    takeValues(const xcb_selection_notify_event_t& event) const;
    [[nodiscard]] std::optional<std::string> takeText(const xcb_selection_notify_event_t& event) const;

private:
    void deleteData() const;

    const X11Connection& connection_;
    const xcb_window_t window_;
};

}  // namespace stowpocket
