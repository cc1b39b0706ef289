// SPDX-License-Identifier: MIT
#include "presentation/AdaptiveGrid.h"

#include <gtest/gtest.h>

#include <array>

namespace stowpocket {
namespace {

constexpr AdaptiveGrid grid{.minimumColumnWidth = 80, .maximumColumnWidth = 100, .columnSpacing = 8, .rowSpacing = 8};

TEST(AdaptiveGridTest, takesAsManyColumnsAsFitAtTheirMinimum) {
    using Case = std::pair<double, std::size_t>;
    for (const auto& [width, columns] : {Case{300, 3}, Case{264, 3}, Case{256, 3}, Case{255, 2}, Case{167, 1},
                                         Case{168, 2}, Case{20, 1}, Case{0, 1}, Case{344, 4}})
        EXPECT_EQ(grid.columnCount(width), columns) << width;
}

TEST(AdaptiveGridTest, centresTilesInTheirColumnsAndColumnsInTheGrid) {
    constexpr std::array<double, 3> heights{100, 100, 100};
    const GridLayout shared = grid.layout(276, 80, heights);  // columns of (276 - 16) / 3
    EXPECT_DOUBLE_EQ(shared.positions[1].x, (276 - 80) / 2.0);
    EXPECT_DOUBLE_EQ(shared.positions[0].x + shared.positions[2].x + 80, 276);

    const GridLayout widest = grid.layout(255, 80, heights);  // two columns, not wider than 100
    EXPECT_DOUBLE_EQ(widest.positions[0].x, (255 - 208) / 2.0 + 10);
    EXPECT_DOUBLE_EQ(widest.positions[1].x - widest.positions[0].x, 108);
}

TEST(AdaptiveGridTest, rowsAreAsHighAsTheirHighestTile) {
    constexpr std::array<double, 5> heights{100, 110, 100, 90, 100};
    const GridLayout layout = grid.layout(300, 80, heights);
    EXPECT_EQ(layout.positions[0].y, 0);
    EXPECT_EQ(layout.positions[2].y, 0);
    EXPECT_EQ(layout.positions[3].y, 118);
    EXPECT_EQ(layout.height, 218);
    EXPECT_EQ(grid.layout(300, 80, {}).height, 0);
}

}  // namespace
}  // namespace stowpocket
