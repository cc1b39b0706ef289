// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/quickdrop/ClipboardSnapshot.h"
#include "platform/linux/x11/SelectionReader.h"

namespace stowpocket {

/// Reads what another program has on the clipboard, never waiting longer than told.
class ClipboardReader {
public:
    using Deadline = XcbSession::Deadline;

    explicit ClipboardReader(XcbSession& session);

    [[nodiscard]] xcb_atom_t selection() const { return reader_.selection(); }
    /// 0 when nobody owns it.
    [[nodiscard]] xcb_window_t owner() const { return reader_.owner(); }
    /// Hears of new owners from now on, or no longer.
    void watchOwner(bool isWatched);
    /// The owner that the event tells of; 0 when that is nobody, or the event tells of something else.
    [[nodiscard]] xcb_window_t newOwnerIn(const xcb_generic_event_t& event) const;

    /// What the owner offers; none when it does not answer.
    [[nodiscard]] std::optional<std::vector<std::string>> targets(Deadline deadline);
    [[nodiscard]] ClipboardAnswer read(const std::string& target, Deadline deadline, std::size_t mostBytes);

private:
    XcbSession& session_;
    SelectionReader reader_;
    std::uint8_t fixesEvent_ = 0;
};

}  // namespace stowpocket
