// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/SelectionTransfer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// One form of what is on the clipboard, as its owner handed it over.
struct ClipboardItem {
    std::string target;
    std::string type;
    std::uint8_t format = 8;  ///< bits of one unit: 8, 16 or 32
    std::vector<std::byte> bytes;
    friend bool operator==(const ClipboardItem&, const ClipboardItem&) = default;
};

struct ClipboardAnswer {
    std::optional<SelectionFailure> failure;
    ClipboardItem item;
};

/// All of the clipboard that is worth keeping, to be put back later. Empty and complete when nobody owned it.
struct ClipboardSnapshot {
    std::vector<ClipboardItem> items;
    /// Whether putting it back loses nothing.
    bool isComplete = true;
};

/// Of what an owner offers, what a snapshot keeps: not the questions about the selection itself, and of several
/// picture formats the best one.
[[nodiscard]] std::vector<std::string> targetsToKeep(const std::vector<std::string>& offered);

/// The names of a file list among the targets.
inline constexpr std::string_view uriListTarget = "text/uri-list";

/// Collects a snapshot target by target within a budget of bytes.
class SnapshotBuilder {
public:
    /// `offered` is none when the owner did not even say what it has.
    SnapshotBuilder(const std::optional<std::vector<std::string>>& offered, std::size_t budget);

    /// The target to ask for next; none when the snapshot is done, complete or not.
    [[nodiscard]] std::optional<std::string> wanted() const;
    /// The most bytes that the answer may have.
    [[nodiscard]] std::size_t budgetLeft() const { return budget_; }
    void take(ClipboardAnswer answer);
    [[nodiscard]] ClipboardSnapshot finished() &&;

private:
    std::vector<std::string> targets_;
    std::size_t next_ = 0;
    std::size_t budget_;
    ClipboardSnapshot snapshot_;
};

}  // namespace stowpocket
