// SPDX-License-Identifier: MIT
#include "shelf/ShelfManager.h"

#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct ShelfManagerTest : testing::Test, ShelfFixture {
    ShelfManagerTest() {
        preferences.onSave = [this] { news_ += "saved "; };
    }
    /// What was saved and announced since the last look, in that order.
    std::string news() { return std::exchange(news_, {}); }

private:
    std::string news_;
    Subscription changed_ = manager->itemsChanged.connect([this](const ShelfChange& change) {
        constexpr const char* kinds[] = {"inserted ", "removed ", "updated ", "reset "};
        news_ += kinds[static_cast<int>(change.kind)];
        for (const std::size_t index : change.indexes)
            news_ += std::to_string(index) + ' ';
    });
    Subscription posted_ = notifications.observe(itemsChangedNotification, [this] { news_ += "posted"; });
};

TEST_F(ShelfManagerTest, addsASmallBatchAtOnceAtTheEnd) {
    const std::vector<FileURL> urls = makeFiles(5);
    files.removeItem(urls[1]);
    files.unreadable = {urls[2].path()};
    EXPECT_EQ(manager->addFiles(urls), 0);
    EXPECT_EQ(news(), "saved inserted 0 1 2 3 4 posted");
    ASSERT_EQ(names(), (Names{"0.txt", "1.txt", "2.txt", "3.txt", "4.txt"}));
    EXPECT_FALSE(manager->items()[1].isAvailable || manager->items()[1].bookmarkData);
    EXPECT_EQ(manager->items()[2].fileSize, 0);
    EXPECT_TRUE(files.accesses.empty()) << "no access is begun on a new file";
    EXPECT_EQ(thumbnails.asked.size(), 4u) << "of the available ones";
}

TEST_F(ShelfManagerTest, largeBatchesArriveFromTheBackgroundAndTakeUpRoomMeanwhile) {
    std::vector<bool> loading;
    const auto note = [&] { loading.push_back(manager->isLoading()); };
    const auto loadingWatcher = manager->isLoadingChanged.connect(note);
    const auto arrivals = manager->itemsChanged.connect([&](const ShelfChange&) { note(); });
    EXPECT_EQ(manager->addFiles(makeFiles(6)), 0);
    EXPECT_EQ(files.existsCalls, 0) << "nothing waits for the disk on the main thread";
    EXPECT_EQ(manager->pendingAddCount(), 6);
    dispatch.runBackground();
    dispatch.runMain();
    EXPECT_EQ(news(), "saved inserted 0 1 2 3 4 5 posted");

    EXPECT_EQ(manager->addFiles(makeFiles(6, 100)), 0);
    EXPECT_EQ(manager->addFiles(makeFiles(12, 200)), 4);
    dispatch.runAll();
    EXPECT_EQ(loading, (std::vector<bool>{true, false, false, true, false, false, false}))
        << "each batch that arrives says that it is over";
}

TEST_F(ShelfManagerTest, takesAsManyAsFitInTheOrderOfferedAndNoneTwice) {
    addFiles(18);
    EXPECT_EQ(manager->addFiles(makeFiles(5, 100)), 3);
    for (const int stored : {-5, 0, 10}) {
        preferences.setValue(shelfCapacityKey, stored);
        EXPECT_EQ(manager->capacity(), stored > 0 ? stored : 20);
    }
    news();
    EXPECT_EQ(manager->addFiles(makeFiles(2, 200)), 2) << "a capacity below what is there leaves no room";
    EXPECT_EQ(manager->addFiles(makeFiles(2)), 0) << "they are there";
    EXPECT_EQ(news(), "");
}

TEST_F(ShelfManagerTest, accessEndsOnceWhenAnItemLeavesAndNoFileIsTouched) {
    addFiles(4);
    files.refusedAccess = {"/files/3.txt"};
    restart();
    const UUID removed = manager->items()[1].id;
    manager->removeItem(removed);
    news();
    manager->removeItem(removed);
    EXPECT_EQ(news(), "") << "an id that is not there changes nothing";
    loseFile(0);
    manager->removeMissingItems();
    EXPECT_EQ(files.accesses,
              (std::map<std::string, int>{{"/files/0.txt", 0}, {"/files/1.txt", 0}, {"/files/2.txt", 1}}));
    manager->clear();
    news();
    manager->clear();
    EXPECT_EQ(news(), "saved posted") << "of an empty shelf too";
    EXPECT_FALSE(files.accesses.contains("/files/3.txt")) << "access that was refused is not ended";
    EXPECT_EQ(files.contents(fileAt("/files/2.txt")), "contents");
}

TEST_F(ShelfManagerTest, aRefreshMarksWhatIsGoneAndSavesOnce) {
    addFiles(4);
    for (const char* const gone : {"/files/1.txt", "/files/3.txt"})
        files.removeItem(fileAt(gone));
    files.existsCalls = 0;
    news();
    const ShelfItem before = manager->items()[1];
    manager->refreshAvailability();
    EXPECT_EQ(files.existsCalls, 0) << "nothing waits for the disk on the main thread";
    EXPECT_TRUE(manager->items()[1].isAvailable) << "not before the answer is there";
    dispatch.runAll();
    EXPECT_EQ(news(), "saved updated 1 3 ");
    EXPECT_EQ(manager->items()[1], before) << "an item is itself by its id";
    for (const std::string expected : {"saved removed 1 3 posted", ""}) {
        manager->removeMissingItems();
        EXPECT_EQ(news(), expected);
    }
}

TEST_F(ShelfManagerTest, neverLooksTwiceAtOnceAndSkipsWhatLeftMeanwhile) {
    addFiles(2);
    files.removeItem(manager->items()[1].fileURL);
    for (int count = 0; count < 50; ++count)
        manager->refreshAvailability();
    EXPECT_EQ(dispatch.backgroundCount(), 1u);
    manager->removeItem(manager->items()[0].id);
    dispatch.runBackground();
    dispatch.runMain();
    ASSERT_EQ(manager->items().size(), 1u);
    EXPECT_EQ(dispatch.backgroundCount(), 1u) << "asked meanwhile, it looks once more";
    makeFiles(2);
    dispatch.runAll();
    EXPECT_EQ(dispatch.backgroundCount(), 0u);
    EXPECT_TRUE(manager->items()[0].isAvailable) << "is there again";
}

TEST_F(ShelfManagerTest, backgroundAnswersComeTooLateHarmlessly) {
    addFiles(1);
    manager->addFiles(makeFiles(8, 10));
    manager->refreshAvailability();
    manager.reset();
    viewModel.reset();
    dispatch.runAll();
    thumbnails.asked[0].completion(fakeImage());
    dispatch.runAll();
    EXPECT_EQ(posts, 1);
}

TEST_F(ShelfManagerTest, asksForThumbnailsInPointsAndTheScreensScale) {
    for (const std::optional<double> scale : {std::optional<double>(), {1.5}}) {
        screen.scale = scale;
        addFiles(1, static_cast<int>(thumbnails.asked.size()));
        EXPECT_EQ(thumbnails.asked.back().request.scale, scale.value_or(2));
    }
    EXPECT_EQ(thumbnails.asked.size(), 2u) << "the first is still on its way";
}

TEST_F(ShelfManagerTest, keepsThumbnailsByItemAndPacksThoseOfItemsThatHaveLeft) {
    addFiles(5);
    std::vector<UUID> ids;
    for (const ShelfItem& item : manager->items())
        ids.push_back(item.id);
    std::vector<UUID> told;
    const auto thumbnailWatcher = manager->thumbnailChanged.connect([&](const UUID& id) { told.push_back(id); });
    for (std::size_t index = 0; index < 5; ++index)
        thumbnails.asked[index].completion(index < 4 ? std::optional(fakeImage()) : std::nullopt);
    EXPECT_EQ(manager->thumbnail(ids[0]), nullptr) << "applied on the main queue";
    dispatch.runMain();
    EXPECT_EQ(told, std::vector<UUID>(ids.begin(), ids.begin() + 4));
    EXPECT_EQ(manager->thumbnail(ids[0])->size, (Size{48, 48}));
    manager->requestThumbnails();
    ASSERT_EQ(thumbnails.asked.size(), 6u) << "the one that failed is asked for again";

    const auto packedCount = [&] {
        return std::ranges::count_if(ids.begin(), ids.begin() + 4, [&](const UUID& id) {
            return dynamic_cast<const FakeImageContent&>(*manager->thumbnail(id)->content).isPacked;
        });
    };
    loseFile(1);
    EXPECT_EQ(packedCount(), 0);
    manager->removeItem(ids[0]);
    EXPECT_EQ(packedCount(), 1);
    manager->removeMissingItems();
    EXPECT_EQ(packedCount(), 2);
    manager->clear();
    EXPECT_EQ(packedCount(), 4) << "no thumbnail is ever forgotten";
    thumbnails.asked[5].completion(fakeImage());
    dispatch.runMain();
    EXPECT_EQ(manager->thumbnail(ids[4]), nullptr) << "its item has left";
}

TEST_F(ShelfManagerTest, sharesIconsByTypeAndGivesApplicationsTheirOwn) {
    for (const char* const path :
         {"/f/a.TXT", "/f/b.txt", "/f/One.app", "/f/Two.APP", "/f/Three.APP", "/f/Makefile"}) {
        files.add(path);
        manager->addFiles(std::vector<FileURL>{fileAt(path)});
    }
    for (int round = 0; round < 2; ++round) {
        for (const ShelfItem& item : manager->items())
            EXPECT_EQ(manager->icon(item).size, (Size{48, 48}));
    }
    EXPECT_EQ(icons.askedPaths, (Names{"/f/a.TXT", "/f/One.app", "/f/Two.APP", "/f/Three.APP", "/f/Makefile"}));
}

TEST_F(ShelfManagerTest, spoolsIntoAFolderOfItsOwn) {
    EXPECT_EQ(ShelfManager::filePromiseDirectory(files).path(),
              "/home/user/.local/share/" + std::string(bundleIdentifier) + "/FilePromises");
    files.hasApplicationSupport = false;
    EXPECT_DEATH(static_cast<void>(ShelfManager::filePromiseDirectory(files)), "application data");
}

}  // namespace
}  // namespace stowpocket
