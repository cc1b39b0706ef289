// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/XcbSession.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace stowpocket {

/// Why one form of a selection could not be had.
enum class SelectionFailure {
    refused,  ///< the owner has no such thing, whatever it says, or is gone
    late,
    tooBig,
};

/// What the owner of a selection does after it was asked for one form of it. It is another program, which may do
/// anything.
class SelectionExchange {
public:
    enum class Sign { come, refused, timeUp };
    /// Of the property that its data come in.
    struct Part {
        bool isThere = false;
        bool announcesPieces = false;
        std::uint32_t type = 0;
        std::uint8_t format = 8;  ///< bits of one unit: 8, 16 or 32
        std::vector<std::byte> bytes;
        bool isCut = false;  ///< there is more
    };

    virtual ~SelectionExchange() = default;
    [[nodiscard]] virtual Sign awaitAnswer() = 0;
    [[nodiscard]] virtual Sign awaitPiece() = 0;
    /// From the byte `offset` on. The owner learns from the last part that the property was taken.
    [[nodiscard]] virtual Part take(std::size_t offset) = 0;
};

/// Takes the next bytes; false when it takes no more.
using SelectionSink = std::function<bool(std::span<const std::byte>)>;

struct SelectionAnswer {
    std::optional<SelectionFailure> failure;
    std::uint32_t type = 0;
    std::uint8_t format = 8;
};

/// Takes what the owner hands over, at once or in pieces (ICCCM 2.7.2, where an empty piece is the end). What was
/// handed on before a failure is worth nothing.
[[nodiscard]] SelectionAnswer transferSelection(SelectionExchange& exchange, const SelectionSink& sink);

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
