// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"
#include "shelf/ShelfManager.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

class ShelfViewModel;

/// The contents of the shelf popover.
struct ShelfPresentation {
    enum class Content {
        dropZone,  ///< nothing on the shelf: the large drop zone
        grid,      ///< the items, with one of these below them:
    };
    enum class BelowGrid { compactDropZone, fullNotice, nothing };

    /// The number of items and the capacity.
    std::string badge;
    /// The capacity message; none without a banner.
    std::optional<std::string> banner;
    /// A second banner: the shelf cannot be saved at present, and why.
    std::optional<std::string> saveBanner;
    Content content = Content::dropZone;
    BelowGrid belowGrid = BelowGrid::compactDropZone;
    bool showsProgress = false;
    bool showsClearButton = false;
    /// Whether another item fits; otherwise drops are refused.
    bool acceptsDrops = true;

    friend bool operator==(const ShelfPresentation&, const ShelfPresentation&) = default;
};

/// From the current items and capacity.
[[nodiscard]] ShelfPresentation shelfPresentation(const ShelfViewModel& viewModel);

/// Formats a file size in bytes.
using ByteCountText = std::function<std::string(std::int64_t bytes)>;

/// The contents of the tile of one item.
struct TilePresentation {
    /// The file name on one line.
    std::string name;
    std::string size;
    bool isMissing = false;

    /// All of it as text, for assistive technology.
    [[nodiscard]] std::string accessibleName() const;
};

[[nodiscard]] TilePresentation tilePresentation(const ShelfItem& item, const ByteCountText& byteCountText);

/// What the icon's menu offers. Panels of other programs name them by these numbers.
enum class IconCommand { openShelf = 1, quickDrop, paste, undo, clear, settings, quit };

/// The icon's menu for the shelf as it is now.
[[nodiscard]] std::vector<StatusItemMenuEntry> iconMenu(const ShelfManager& shelf);

/// The command with that number, unless the menu would not offer it now.
[[nodiscard]] std::optional<IconCommand> iconCommand(int id, const ShelfManager& shelf);

}  // namespace stowpocket
