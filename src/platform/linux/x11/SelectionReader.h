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

/// Why one form of a selection could not be read.
enum class SelectionFailure {
    refused,  ///< the owner has no such form, even if it says so, or is gone
    late,
    tooBig,
};

/// What the owner of a selection does after a request for one form of it. The owner is another program, which may do
/// anything.
class SelectionExchange {
public:
    enum class Sign { come, refused, timeUp };
    /// The property that the data arrive in.
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
    /// Reads from the byte `offset` on. Reading the last part tells the owner that the property was taken.
    [[nodiscard]] virtual Part take(std::size_t offset) = 0;
};

/// Takes the next bytes. Returns false when it takes no more.
using SelectionSink = std::function<bool(std::span<const std::byte>)>;

struct SelectionAnswer {
    std::optional<SelectionFailure> failure;
    std::uint32_t type = 0;
    std::uint8_t format = 8;
};

/// Reads what the owner hands over, at once or in pieces (ICCCM 2.7.2, where an empty piece is the end). After a
/// failure, discard what was handed on before.
[[nodiscard]] SelectionAnswer transferSelection(SelectionExchange& exchange, const SelectionSink& sink);

/// How long to wait for an owner, which may be a program that hangs.
struct SelectionPatience {
    XcbSession::Deadline deadline;
    /// The longest time without any sign of it.
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
    /// Hands the bytes on as they arrive. After a failure, discard those that were handed on before.
    [[nodiscard]] Answer read(const std::string& target, xcb_timestamp_t time, const SelectionPatience& patience,
                              const Sink& sink);
    /// The same, all at once and at most `mostBytes`.
    [[nodiscard]] Answer read(const std::string& target, xcb_timestamp_t time, const SelectionPatience& patience,
                              std::size_t mostBytes, std::vector<std::byte>& bytes);

private:
    XcbSession& session_;
    const xcb_atom_t selection_;
    const xcb_atom_t property_;
};

}  // namespace stowpocket
