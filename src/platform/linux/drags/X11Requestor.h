// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QLoggingCategory>

namespace stowpocket {

Q_DECLARE_LOGGING_CATEGORY(dragsLog)

/// Asks owners of selections for data, one question at a time, without waiting: the answer arrives as an event. An
/// unseen window of its own receives the data.
class X11Requestor {
public:
    /// `connection` outlives it.
    explicit X11Requestor(const X11Connection& connection);
    X11Requestor(const X11Requestor&) = delete;
    X11Requestor& operator=(const X11Requestor&) = delete;
    ~X11Requestor();

    [[nodiscard]] xcb_window_t window() const { return window_; }
    /// Returns the number of the request. All events that follow from it have this number or a higher one.
    [[nodiscard]] unsigned ask(X11Atom selection, X11Atom target, xcb_timestamp_t time) const;
    /// The data of an answer for `window()`, which is deleted. Nothing when the owner refused.
    [[nodiscard]] std::optional<std::vector<std::uint32_t>>
    takeValues(const xcb_selection_notify_event_t& event) const;
    [[nodiscard]] std::optional<std::string> takeText(const xcb_selection_notify_event_t& event) const;

private:
    void deleteData() const;

    const X11Connection& connection_;
    const xcb_window_t window_;
};

}  // namespace stowpocket
