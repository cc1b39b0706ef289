// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// What became of one file that another process asked to add or to remove.
enum class AddOutcome { added, alreadyOnShelf, shelfFull, malformed };
enum class RemoveOutcome { removed, notOnShelf, malformed };

/// The requests that carry nothing.
enum class ShelfAction { clear, show, toggle, quickDrop };

/// One item, as told to other processes.
struct StagedFile {
    std::string id;
    FileURL fileURL;
    bool isAvailable = false;
    std::int64_t fileSize = 0;

    friend bool operator==(const StagedFile&, const StagedFile&) = default;
};

/// More in one request are refused; a longer list is sent in parts.
inline constexpr std::size_t maxFilesPerRequest = 16'384;
/// Longer names are malformed: four times what a path can be, each byte of it escaped.
inline constexpr std::size_t maxNameLength = std::size_t{4} * 3 * 4096;

/// The outcomes as words between processes; empty for a word that is none.
[[nodiscard]] std::string_view word(AddOutcome outcome);
[[nodiscard]] std::string_view word(RemoveOutcome outcome);
[[nodiscard]] std::optional<AddOutcome> addOutcome(std::string_view word);
[[nodiscard]] std::optional<RemoveOutcome> removeOutcome(std::string_view word);

}  // namespace stowpocket
