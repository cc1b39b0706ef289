// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/quickdrop/ClipboardSnapshot.h"
#include "platform/linux/x11/XcbSession.h"

namespace stowpocket {

/// Holds the clipboard for a program whose content was put back, until another program takes it.
class ClipboardOwner {
public:
    explicit ClipboardOwner(XcbSession& session);

    /// Nothing is offered that needs more than one request to hand over.
    [[nodiscard]] std::size_t mostBytes() const;
    /// Takes the clipboard and offers `items`; without any it leaves the clipboard to nobody.
    void put(std::vector<ClipboardItem> items);
    /// What is offered now; empty when another program has the clipboard.
    [[nodiscard]] const std::vector<ClipboardItem>& items() const { return items_; }
    void handle(const xcb_generic_event_t& event);

private:
    void answer(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool hand(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target);

    XcbSession& session_;
    const xcb_atom_t clipboard_;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    std::vector<ClipboardItem> items_;
};

}  // namespace stowpocket
