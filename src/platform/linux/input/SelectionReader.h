// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/XcbSession.h"

#include <span>

namespace stowpocket {

/// Why one form of a selection could not be had.
enum class SelectionFailure {
    refused,  ///< the owner has no such thing, whatever it says, or is gone
    late,
    tooBig,
};

/// How long an owner is waited for. It may be another program that hangs.
struct SelectionPatience {
    XcbSession::Deadline deadline;
    /// Without any sign of it.
    std::chrono::milliseconds silence = std::chrono::hours(1);
};

/// Reads what another program offers as a selection, such as the clipboard or a drag, in pieces of bounded size.
class SelectionReader {
public:
    /// Takes the next bytes; false when it takes no more.
    using Sink = std::function<bool(std::span<const std::byte>)>;

    struct Answer {
        std::optional<SelectionFailure> failure;
        xcb_atom_t type = XCB_ATOM_NONE;
        std::uint8_t format = 8;  ///< bits of one unit: 8, 16 or 32
    };

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
    struct Question;

    [[nodiscard]] Answer receive(const Question& question);
    [[nodiscard]] Answer receiveInPieces(const Question& question);
    [[nodiscard]] Answer takeProperty(const Question& question, std::size_t& size) const;
    /// Null after the time is up.
    [[nodiscard]] XcbSession::Event await(const Question& question,
                                          const std::function<bool(const xcb_generic_event_t&)>& isWanted);

    XcbSession& session_;
    const xcb_atom_t selection_;
    const xcb_atom_t property_;
    const xcb_atom_t inPieces_;
};

}  // namespace stowpocket
