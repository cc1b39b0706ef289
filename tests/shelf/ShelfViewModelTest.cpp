// SPDX-License-Identifier: MIT
#include "shelf/ShelfViewModel.h"
#include "fakes/AppFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct ShelfViewModelTest : testing::Test, ShelfFixture {
    std::shared_ptr<FakeItemProvider> drop(std::shared_ptr<FakeItemProvider> provider) {
        EXPECT_TRUE(viewModel->handleDrop({provider}));
        return provider;
    }

    int messages = 0;
    Subscription watcher = viewModel->capacityMessageChanged.connect([this] { ++messages; });
};

TEST_F(ShelfViewModelTest, saysHowManyFilesDidNotFitUntilARemovalMakesRoom) {
    addFiles(18);
    viewModel->addFileURLs(makeFiles(7, 100));
    EXPECT_EQ(viewModel->capacityMessage(), "Added 2 of 7 files - shelf is full");
    EXPECT_FALSE(viewModel->handleDrop({FakeItemProvider::withURL("file:///one")}));
    viewModel->addFileURLs(makeFiles(1, 200));
    EXPECT_EQ(viewModel->capacityMessage(), "Added 0 of 1 files - shelf is full");
    viewModel->addFileURLs(makeFiles(1, 300));
    EXPECT_EQ(messages, 2) << "the same words again are no news";
    viewModel->addFileURLs(makeFiles(2));
    EXPECT_EQ(viewModel->capacityMessage(), "Added 0 of 1 files - shelf is full") << "files already there fit";
    preferences.setValue(shelfCapacityKey, 19);
    for (const bool isStillFull : {true, false}) {
        viewModel->removeItem(manager->items()[0].id);
        EXPECT_EQ(viewModel->capacityMessage().has_value(), isStillFull);
    }
}

TEST_F(ShelfViewModelTest, contentsWithoutAFileAreCopiedIntoTheSpoolFolder) {
    files.add("/tmp/picture.png", "first");
    const auto picture = FakeItemProvider::withContents("public.png", "/tmp/picture.png");
    picture->types.emplace_back("public.data");
    drop(picture)->finish();
    EXPECT_EQ(picture->askedType, "public.png");
    files.add("/tmp/picture.png", "second");
    const auto untyped = drop(FakeItemProvider::withContents("", "/tmp/picture.png"));
    EXPECT_EQ(untyped->askedType, "public.item");
    untyped->finish();
    dispatch.runAll();
    ASSERT_EQ(manager->items().size(), 1u);
    const FileURL copy = ShelfManager::filePromiseDirectory(files).appending("picture.png");
    EXPECT_EQ(manager->items()[0].fileURL, copy);
    manager->clear();
    EXPECT_EQ(files.contents(copy), "second") << "the later copy replaces the earlier, and outlives the item";

    const auto bad = FakeItemProvider::withContents("public.png", "/tmp/not written");
    const auto up = FakeItemProvider::withContents("public.png", "/tmp/..");
    const auto web = FakeItemProvider::withURL("https://example.com/");
    EXPECT_TRUE(viewModel->handleDrop({bad, up, web, picture}));
    for (const auto& provider : {bad, up, web, picture})
        provider->finish();
    dispatch.runAll();
    EXPECT_EQ(names(), Names{"picture.png"}) << "what cannot be copied holds up nothing";
}

TEST_F(ShelfViewModelTest, keepsTheDropAliveUntilItHasLoadedAndDropsItWithTheModel) {
    const std::weak_ptr watched = drop(FakeItemProvider::withURL("file:///one"));
    ASSERT_FALSE(watched.expired());
    const auto finish = std::exchange(watched.lock()->finish, nullptr);
    viewModel.reset();
    finish();
    dispatch.runAll();
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(manager->items().empty());
}

TEST_F(ShelfViewModelTest, copiesWhatIsThereInTheOrderOfTheShelf) {
    addFiles(3);
    loseFile(1);
    std::vector<UUID> ids;
    for (const ShelfItem& item : manager->items())
        ids.insert(ids.begin(), item.id);
    viewModel->copyFiles(ids);
    viewModel->copyPaths(ids);
    EXPECT_EQ(clipboard.files, (std::vector{manager->items()[0].fileURL, manager->items()[2].fileURL}));
    EXPECT_EQ(clipboard.text, "/files/0.txt\n/files/2.txt");
    viewModel->copyFiles(std::vector{ids[1]});
    EXPECT_EQ(clipboard.files.size(), 2U) << "nothing to copy leaves the clipboard alone";
}

using namespace std::chrono_literals;

struct UndoTest : testing::Test, ShelfFixture {
    UndoTest() { addFiles(4); }
    void remove(std::initializer_list<std::size_t> indexes) {
        std::vector<UUID> ids;
        for (const std::size_t index : indexes)
            ids.push_back(manager->items()[index].id);
        viewModel->removeItems(ids);
    }
    void undo() {
        manager->undo();
        dispatch.runAll();
    }
    [[nodiscard]] std::string order() const {
        std::string numbers;
        for (const std::string& name : names())
            numbers += name.substr(0, 1);
        return numbers;
    }
};

TEST_F(UndoTest, bringsTheLastRemovalBackAsItWasAndSavesIt) {
    const std::vector<ShelfItem> before = manager->items();
    remove({1});
    remove({0, 2});
    std::vector<std::size_t> inserted;
    const Subscription watcher =
        manager->itemsChanged.connect([&](const ShelfChange& change) { inserted = change.indexes; });
    undo();
    EXPECT_EQ(order(), "023");
    EXPECT_EQ(inserted, (std::vector<std::size_t>{0, 2}));

    manager->clear();
    undo();
    restart();
    EXPECT_EQ(manager->items()[2].bookmarkData, before[3].bookmarkData);

    manager->clear();
    undo();
    EXPECT_EQ(files.accesses["/files/0.txt"], 1);
}

TEST_F(UndoTest, stopsAtTheCapacityAndIsForgottenWhenFilesAreAdded) {
    manager->clear();
    preferences.setValue(shelfCapacityKey, 3);
    undo();
    EXPECT_EQ(order(), "012");
    remove({0});
    addFiles(1, 7);
    undo();
    EXPECT_EQ(order(), "127");
}

TEST_F(UndoTest, whatWentMissingComesBackWithItsFileAndHidesNoRemoval) {
    remove({2});
    loseFile(0);
    manager->removeMissingItems();
    loseFile(0);
    manager->removeMissingItems();
    files.add("/files/1.txt");
    undo();
    EXPECT_EQ(order(), "123");
    loseFile(0);
    manager->removeMissingItems();
    undo();
    EXPECT_EQ(order(), "23") << "its file is still gone";
    files.add("/files/1.txt");
    undo();
    EXPECT_EQ(order(), "123");
}

TEST(UndoLimitTest, endsAMinuteAfterTheShelfWasClosed) {
    AppFixture fixture;
    fixture.launch();
    fixture.app->shelfViewModel().addFileURLs(fixture.makeFiles(2));
    fixture.app->statusItemClicked();
    fixture.shelf().clear();
    fixture.dispatch.advance(2min);
    EXPECT_TRUE(fixture.shelf().undoable()) << "the shelf is open";
    fixture.app->closePopover();
    fixture.dispatch.advance(50s);
    fixture.app->statusItemClicked();
    fixture.app->statusItemClicked();
    fixture.dispatch.advance(50s);
    EXPECT_TRUE(fixture.shelf().undoable());
    fixture.dispatch.advance(20s);
    EXPECT_FALSE(fixture.shelf().undoable());
}

}  // namespace
}  // namespace stowpocket
