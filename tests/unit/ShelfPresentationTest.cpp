// SPDX-License-Identifier: MIT
#include "presentation/ShelfPresentation.h"

#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Content = ShelfPresentation::Content;
using BelowGrid = ShelfPresentation::BelowGrid;

class ShelfPresentationTest : public testing::Test, protected ShelfFixture {
protected:
    [[nodiscard]] ShelfPresentation shown() const { return shelfPresentation(*viewModel); }
};

TEST_F(ShelfPresentationTest, anEmptyShelfInvites) {
    EXPECT_EQ(shown().badge, "0/20");
    EXPECT_EQ(shown().content, Content::dropZone);
    EXPECT_TRUE(shown().acceptsDrops);
    EXPECT_FALSE(shown().showsClearButton);
    EXPECT_FALSE(shown().showsProgress);
    EXPECT_FALSE(shown().banner);
}

TEST_F(ShelfPresentationTest, theLastFreePlaceTakesTheDropZoneAway) {
    addFiles(19);
    EXPECT_EQ(shown().content, Content::grid);
    EXPECT_EQ(shown().belowGrid, BelowGrid::compactDropZone);
    EXPECT_TRUE(shown().showsClearButton);
    addFiles(1, 100);
    EXPECT_EQ(shown().badge, "20/20");
    EXPECT_EQ(shown().belowGrid, BelowGrid::fullNotice);
    EXPECT_FALSE(shown().acceptsDrops);
}

TEST_F(ShelfPresentationTest, bannerAndFullNoticeNeverShowTogether) {
    addFiles(18);
    viewModel->addFileURLs(makeFiles(5, 100));
    EXPECT_EQ(shown().banner, "Added 2 of 5 files - shelf is full");
    EXPECT_EQ(shown().belowGrid, BelowGrid::nothing);
    viewModel->setCapacityMessage(std::nullopt);
    EXPECT_EQ(shown().belowGrid, BelowGrid::fullNotice);
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

TEST_F(ShelfPresentationTest, progressShowsWhileALargeBatchIsPrepared) {
    manager->addFiles(makeFiles(6));
    EXPECT_TRUE(shown().showsProgress);
    EXPECT_EQ(shown().content, Content::dropZone);
    dispatch.runAll();
    EXPECT_FALSE(shown().showsProgress);
}

}  // namespace
}  // namespace stowpocket
