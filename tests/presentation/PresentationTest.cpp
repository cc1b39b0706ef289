// SPDX-License-Identifier: MIT
#include "presentation/ShelfPresentation.h"
#include "presentation/Texts.h"
#include "shelf/PersistedShelf.h"

#include <gtest/gtest.h>

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
