// SPDX-License-Identifier: MIT
#include "presentation/Layout.h"
#include "presentation/ShelfPresentation.h"
#include "presentation/Texts.h"
#include "shelf/ShelfItem.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace stowpocket {
namespace {

TEST(ByteCountTest, readsAsThePlatformWritesFileSizes) {
    using Case = std::pair<std::int64_t, const char*>;
    for (const auto& [bytes, text] : {
             Case{0, "Zero KB"},
             Case{1, "1 byte"},
             Case{999, "999 bytes"},
             Case{12'499, "12 KB"},
             Case{12'500, "13 KB"},
             Case{999'500, "1 MB"},
             Case{3'449'999, "3.4 MB"},
             Case{999'949'999, "999.9 MB"},
             Case{999'950'000, "1 GB"},
             Case{1'250'000'000, "1.25 GB"},
             Case{1'050'000'000, "1.05 GB"},
             Case{5'000'000'000'000, "5 TB"},
             Case{std::numeric_limits<std::int64_t>::max(), "9.22 EB"},
             Case{std::numeric_limits<std::int64_t>::min(), "-9.22 EB"},
         })
        EXPECT_EQ(byteCountText(bytes), text) << bytes;
}

TEST(AdaptiveGridTest, fillsItsColumnsInRowsAsHighAsTheirHighestTile) {
    constexpr AdaptiveGrid grid{
        .minimumColumnWidth = 80, .maximumColumnWidth = 100, .columnSpacing = 8, .rowSpacing = 8};
    using Case = std::pair<double, std::size_t>;
    for (const auto& [width, columns] : {Case{0, 1}, Case{167, 1}, Case{168, 2}, Case{300, 3}, Case{344, 4}})
        EXPECT_EQ(grid.columnCount(width), columns) << width;
    constexpr std::array<double, 5> heights{100, 110, 100, 90, 100};
    const GridLayout layout = grid.layout(255, 80, heights);  // two columns, not wider than 100
    EXPECT_EQ(layout.positions[0].x, (255 - 208) / 2.0 + 10);
    EXPECT_EQ(layout.positions[1].x - layout.positions[0].x, 108);
    EXPECT_EQ(layout.positions[0].y, 5) << "in the middle of the row";
    EXPECT_EQ(layout.positions[2].y, 118);
    EXPECT_EQ(layout.positions[4].y, 226);
    EXPECT_EQ(layout.height, 326);
}

TEST(TilePresentationTest, aFileNameIsOneHonestLine) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [filename, shown] : {
             Case{"two\nlines\t\x7f.txt", "two lines  .txt"},
             Case{"next\u0085line\u2028and\u2029paragraph", "next line and paragraph"},
             Case{"invoice\u202egpj.exe", "invoicegpj.exe"},
             Case{"\u2066isolated\u2069", "isolated"},
             Case{"עברית.txt", "עברית.txt"},
             Case{"👩‍👩‍👧‍👦.png", "👩‍👩‍👧‍👦.png"},
         })
        EXPECT_EQ(displayName(filename), shown);
}

TEST(TilePresentationTest, theDesktopWritesTheSize) {
    const ShelfItem item{.id = UUID::random(),
                         .fileURL = *FileURL::fromPath("/a.txt"),
                         .bookmarkData = {},
                         .filename = "a.txt",
                         .fileSize = 1200,
                         .dateAdded = {},
                         .isAvailable = true};
    const TilePresentation tile =
        tilePresentation(item, [](std::int64_t bytes) { return std::to_string(bytes) + " octets"; });
    EXPECT_EQ(tile.size, "1200 octets");
    EXPECT_EQ(tile.accessibleName(), "a.txt, 1200 octets");
}

}  // namespace
}  // namespace stowpocket
