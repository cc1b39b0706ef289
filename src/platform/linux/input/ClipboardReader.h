// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/ClipboardSnapshot.h"
#include "platform/linux/input/XcbSession.h"

namespace stowpocket {

/// Reads what another program has on the clipboard, never waiting longer than told.
class ClipboardReader {
public:
    using Deadline = XcbSession::Deadline;

    explicit ClipboardReader(XcbSession& session);

    [[nodiscard]] xcb_atom_t selection() const { return clipboard_; }
    /// 0 when nobody owns it.
    [[nodiscard]] xcb_window_t owner() const;
    /// Hears of new owners from now on, or no longer.
    void watchOwner(bool isWatched);
    /// The owner that the event tells of; 0 when that is nobody, or the event tells of something else.
    [[nodiscard]] xcb_window_t newOwnerIn(const xcb_generic_event_t& event) const;

    /// What the owner offers; none when it does not answer.
    [[nodiscard]] std::optional<std::vector<std::string>> targets(Deadline deadline);
    [[nodiscard]] ClipboardAnswer read(const std::string& target, Deadline deadline, std::size_t mostBytes);

private:
    struct Received {
        std::optional<ClipboardFailure> failure;
        X11Property property;
    };
    [[nodiscard]] Received convert(const std::string& target, Deadline deadline, std::size_t mostBytes);
    [[nodiscard]] Received receive(xcb_window_t requestor, xcb_atom_t target, Deadline deadline,
                                   std::size_t mostBytes);
    [[nodiscard]] Received receiveInPieces(xcb_window_t requestor, Deadline deadline, std::size_t mostBytes);

    XcbSession& session_;
    const xcb_atom_t clipboard_;
    const xcb_atom_t property_;
    std::uint8_t fixesEvent_ = 0;
};

}  // namespace stowpocket
