// SPDX-License-Identifier: MIT
#pragma once

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

}  // namespace stowpocket
