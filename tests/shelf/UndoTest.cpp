// SPDX-License-Identifier: MIT
#include "fakes/AppFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

class UndoTest : public testing::Test, protected ShelfFixture {
protected:
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
    EXPECT_EQ(manager->undoable(), Undoable::removal);
    std::vector<std::size_t> inserted;
    const Subscription watcher =
        manager->itemsChanged.connect([&](const ShelfChange& change) { inserted = change.indexes; });
    undo();
    EXPECT_EQ(order(), "023");
    EXPECT_EQ(inserted, (std::vector<std::size_t>{0, 2}));
    undo();
    EXPECT_EQ(order(), "023") << "one step only";

    manager->clear();
    EXPECT_EQ(manager->undoable(), Undoable::clear);
    undo();
    restart();
    EXPECT_EQ(order(), "023");
    EXPECT_EQ(manager->items()[2], before[3]);
    EXPECT_EQ(manager->items()[2].dateAdded, before[3].dateAdded);
    EXPECT_EQ(manager->items()[2].bookmarkData, before[3].bookmarkData);

    manager->clear();
    EXPECT_EQ(files.accesses["/files/0.txt"], 0);
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
    EXPECT_EQ(order(), "3");
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
