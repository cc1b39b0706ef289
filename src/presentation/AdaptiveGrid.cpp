// SPDX-License-Identifier: MIT
#include "presentation/AdaptiveGrid.h"

#include <algorithm>

namespace stowpocket {

std::size_t AdaptiveGrid::columnCount(double width) const {
    const double fitting = (width + columnSpacing) / (minimumColumnWidth + columnSpacing);
    return fitting < 1 ? 1 : static_cast<std::size_t>(fitting);
}

GridLayout AdaptiveGrid::layout(double width, double tileWidth, std::span<const double> tileHeights) const {
    const std::size_t columns = columnCount(width);
    const double spacings = columnSpacing * static_cast<double>(columns - 1);
    const double columnWidth = std::min(maximumColumnWidth, (width - spacings) / static_cast<double>(columns));
    const double left = (width - spacings - columnWidth * static_cast<double>(columns)) / 2;

    GridLayout layout;
    layout.positions.reserve(tileHeights.size());
    for (std::size_t first = 0; first < tileHeights.size(); first += columns) {
        const auto row = tileHeights.subspan(first, std::min(columns, tileHeights.size() - first));
        const double top = first == 0 ? 0 : layout.height + rowSpacing;
        const double rowHeight = *std::ranges::max_element(row);
        for (std::size_t column = 0; column < row.size(); ++column) {
            const double columnLeft = left + static_cast<double>(column) * (columnWidth + columnSpacing);
            layout.positions.push_back(
                {columnLeft + (columnWidth - tileWidth) / 2, top + (rowHeight - row[column]) / 2});
        }
        layout.height = top + rowHeight;
    }
    return layout;
}

}  // namespace stowpocket
