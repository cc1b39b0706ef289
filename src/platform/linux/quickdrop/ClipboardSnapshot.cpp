// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/ClipboardSnapshot.h"

#include <algorithm>
#include <array>
#include <utility>

namespace stowpocket {
namespace {

/// Targets that ask something of the owner instead of naming a form of its data (ICCCM 2.6).
constexpr std::array<std::string_view, 7> questions{"TARGETS", "MULTIPLE",         "TIMESTAMP",      "SAVE_TARGETS",
                                                    "DELETE",  "INSERT_SELECTION", "INSERT_PROPERTY"};
constexpr std::string_view imagePrefix = "image/";
constexpr std::string_view bestImage = "image/png";
/// A picture format whose name does not say so; GTK offers it beside the others.
constexpr std::string_view iconImage = "application/ico";

bool isImage(std::string_view target) {
    return target.starts_with(imagePrefix) || target == iconImage;
}

bool contains(const auto& range, std::string_view value) {
    return std::ranges::find(range, value) != range.end();
}

}  // namespace

std::vector<std::string> targetsToKeep(const std::vector<std::string>& offered) {
    const bool hasBestImage = contains(offered, bestImage);
    std::vector<std::string> kept;
    for (const std::string& target : offered) {
        const bool isWorseImage = hasBestImage && isImage(target) && target != bestImage;
        if (!contains(questions, target) && !isWorseImage && !contains(kept, target))
            kept.push_back(target);
    }
    return kept;
}

SnapshotBuilder::SnapshotBuilder(const std::optional<std::vector<std::string>>& offered, std::size_t budget)
    : targets_(targetsToKeep(offered.value_or(std::vector<std::string>()))), budget_(budget) {
    snapshot_.isComplete = !targets_.empty();
}

std::optional<std::string> SnapshotBuilder::wanted() const {
    return snapshot_.isComplete && next_ < targets_.size() ? std::optional(targets_.at(next_)) : std::nullopt;
}

void SnapshotBuilder::take(ClipboardAnswer answer) {
    ++next_;
    if (answer.failure == SelectionFailure::refused)
        return;
    snapshot_.isComplete = !answer.failure && answer.item.bytes.size() <= budget_;
    if (!snapshot_.isComplete)
        return;
    budget_ -= answer.item.bytes.size();
    snapshot_.items.push_back(std::move(answer.item));
}

ClipboardSnapshot SnapshotBuilder::finished() && {
    const bool isDone = !wanted() && !snapshot_.items.empty();
    snapshot_.isComplete = snapshot_.isComplete && isDone;
    if (!snapshot_.isComplete)
        snapshot_.items.clear();
    return std::move(snapshot_);
}

}  // namespace stowpocket
