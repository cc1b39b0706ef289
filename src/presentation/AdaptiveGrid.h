// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace stowpocket {

/// Where the tiles of a grid stand, from the grid's top left corner, and how high the grid is.
struct GridLayout {
    struct Position {
        double x = 0;
        double y = 0;
        friend bool operator==(const Position&, const Position&) = default;
    };

    std::vector<Position> positions;
    double height = 0;
};

/// A grid with as many columns as fit at their minimum width; they share the room up to their maximum width and
/// stand in the middle of it. A row is as high as its highest tile.
struct AdaptiveGrid {
    double minimumColumnWidth = 0;
    double maximumColumnWidth = 0;
    double columnSpacing = 0;
    double rowSpacing = 0;

    /// At least one.
    [[nodiscard]] std::size_t columnCount(double width) const;
    /// Places tiles of the same width, each in the middle of its column and its row.
    [[nodiscard]] GridLayout layout(double width, double tileWidth, std::span<const double> tileHeights) const;
};

}  // namespace stowpocket
