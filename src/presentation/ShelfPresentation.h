// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

class ShelfViewModel;
struct ShelfItem;

/// What the shelf popover shows at one moment.
struct ShelfPresentation {
    enum class Content {
        dropZone,  ///< nothing on the shelf: the large drop zone
        grid,      ///< the items, with one of these below them:
    };
    enum class BelowGrid { compactDropZone, fullNotice, nothing };

    /// How many items there are of how many that fit.
    std::string badge;
    /// The capacity message in its banner; absent, there is no banner.
    std::optional<std::string> banner;
    /// Below it, that the shelf is not saved at present, and why.
    std::optional<std::string> saveBanner;
    Content content = Content::dropZone;
    BelowGrid belowGrid = BelowGrid::compactDropZone;
    bool showsProgress = false;
    bool showsClearButton = false;
    /// Whether one more item fits; while none does, drops are refused.
    bool acceptsDrops = true;

    friend bool operator==(const ShelfPresentation&, const ShelfPresentation&) = default;
};

/// Looks at the shelf, and at the capacity in force, anew.
[[nodiscard]] ShelfPresentation shelfPresentation(const ShelfViewModel& viewModel);

/// Writes a file's size, in bytes, as the desktop does.
using ByteCountText = std::function<std::string(std::int64_t bytes)>;

/// What the tile of one item shows.
struct TilePresentation {
    /// The file name on one line.
    std::string name;
    std::string size;
    bool isMissing = false;
    bool isDraggable = true;

    /// All of it in words, for assistive technology.
    [[nodiscard]] std::string accessibleName() const;
};

[[nodiscard]] TilePresentation tilePresentation(const ShelfItem& item, const ByteCountText& byteCountText);

}  // namespace stowpocket
