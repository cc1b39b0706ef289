// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/SelectionTransfer.h"
#include "platform/linux/x11/XcbSession.h"

namespace stowpocket {

/// How long an owner is waited for. It may be another program that hangs.
struct SelectionPatience {
    XcbSession::Deadline deadline;
    /// Without any sign of it.
    std::chrono::milliseconds silence = std::chrono::hours(1);
};

/// Reads what another program offers as a selection, such as the clipboard or a drag, in pieces of bounded size.
class SelectionReader {
public:
    using Sink = SelectionSink;
    using Answer = SelectionAnswer;

    /// `session` outlives it.
    SelectionReader(XcbSession& session, const std::string& selection);

    [[nodiscard]] xcb_atom_t selection() const { return selection_; }
    /// 0 when nobody owns it.
    [[nodiscard]] xcb_window_t owner() const;
    /// Hands the bytes on as they come; those that were handed on before a failure are worth nothing.
    [[nodiscard]] Answer read(const std::string& target, xcb_timestamp_t time, const SelectionPatience& patience,
                              const Sink& sink);
    /// The same, all at once and not longer than `mostBytes`.
    [[nodiscard]] Answer read(const std::string& target, xcb_timestamp_t time, const SelectionPatience& patience,
                              std::size_t mostBytes, std::vector<std::byte>& bytes);

private:
    XcbSession& session_;
    const xcb_atom_t selection_;
    const xcb_atom_t property_;
};

}  // namespace stowpocket
