// SPDX-License-Identifier: MIT
#include "presentation/ShelfPresentation.h"

#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using BelowGrid = ShelfPresentation::BelowGrid;

class ShelfPresentationTest : public testing::Test, protected ShelfFixture {
protected:
    [[nodiscard]] ShelfPresentation shown() const { return shelfPresentation(*viewModel); }
};

TEST_F(ShelfPresentationTest, theLastFreePlaceTakesTheDropZoneAway) {
    addFiles(19);
    EXPECT_EQ(shown().content, ShelfPresentation::Content::grid);
    EXPECT_EQ(shown().belowGrid, BelowGrid::compactDropZone);
    EXPECT_TRUE(shown().showsClearButton);
    addFiles(1, 100);
    EXPECT_EQ(shown().badge, "20/20");
    EXPECT_EQ(shown().belowGrid, BelowGrid::fullNotice);
    EXPECT_FALSE(shown().acceptsDrops);
}

TEST_F(ShelfPresentationTest, theCapacityInForceCountsAtEachLook) {
    addFiles(20);
    for (const std::int64_t stored : {0, -5}) {
        preferences.setValue(shelfCapacityKey, stored);
        EXPECT_EQ(shown().badge, "20/20");
        EXPECT_EQ(shown().belowGrid, BelowGrid::fullNotice);
    }
    preferences.setValue(shelfCapacityKey, 10);
    EXPECT_EQ(shown().badge, "20/10") << "a capacity below the count leaves the items";
    EXPECT_FALSE(shown().acceptsDrops);
    preferences.setValue(shelfCapacityKey, 50);
    EXPECT_EQ(shown().belowGrid, BelowGrid::compactDropZone);
}

}  // namespace
}  // namespace stowpocket
