// SPDX-License-Identifier: MIT
#include "presentation/TileCommands.h"
#include "fakes/FakeDesktop.h"
#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// A shelf of the files 0.txt to 5.txt.
struct TileCommandsTest : testing::Test, ShelfFixture {
    TileCommandsTest() { addFiles(6); }

    [[nodiscard]] const UUID& id(std::size_t index) const { return manager->items()[index].id; }
    void select(std::size_t index, Selecting how = Selecting::alone) { selection.select(id(index), how); }
    [[nodiscard]] Names dragged(std::size_t index) {
        return namesOf(commands.itemsOfDrag(id(index)), &ShelfItem::filename);
    }
    /// The numbers of the selected files.
    [[nodiscard]] std::string selected() const {
        std::string numbers;
        for (const ShelfItem& item : manager->items())
            numbers += selection.isSelected(item.id) ? item.filename.substr(0, 1) : "";
        return numbers;
    }

    FakeFileOpener opener;
    TileCommands commands{viewModel, opener};
    ShelfSelection& selection = commands.selection();
};

TEST_F(TileCommandsTest, clicksSelectAsInAFileManager) {
    select(2);
    select(4, Selecting::toggle);
    select(2, Selecting::toggle);
    EXPECT_EQ(selected(), "4");
    select(1, Selecting::range);
    EXPECT_EQ(selected(), "12") << "from the last tile that was clicked otherwise";
    select(5, Selecting::range);
    EXPECT_EQ(selected(), "2345") << "and in the other direction";
    manager->removeItem(id(2));
    select(3, Selecting::range);
    EXPECT_EQ(selected(), "4") << "the tile where it would begin is gone";
    selection.selectAll();
    EXPECT_EQ(selected(), "01345");
    selection.clear();
    EXPECT_EQ(selected(), "");
    selection.extend(id(1), id(3));
    EXPECT_EQ(selected(), "134");
}

TEST_F(TileCommandsTest, stepsStayInTheGrid) {
    using Case = std::tuple<GridStep, std::size_t, int>;
    for (const auto& [step, from, to] :
         {Case{GridStep::left, 3, 2}, Case{GridStep::left, 0, -1}, Case{GridStep::right, 5, 6},
          Case{GridStep::right, 7, -1}, Case{GridStep::up, 3, 0}, Case{GridStep::up, 2, -1},
          Case{GridStep::down, 4, 7}, Case{GridStep::down, 5, -1}, Case{GridStep::first, 4, 0},
          Case{GridStep::last, 4, 7}})
        EXPECT_EQ(static_cast<int>(tileAfter(step, from, 8, 3).value_or(-1)), to) << from;
}

TEST_F(TileCommandsTest, aDragCarriesTheSelectionItBeginsOnAndOnlyFilesThatAreThere) {
    select(1);
    select(3, Selecting::toggle);
    select(0, Selecting::toggle);
    EXPECT_EQ(dragged(3), (Names{"0.txt", "1.txt", "3.txt"}));
    files.removeItem(manager->items()[3].fileURL);
    EXPECT_EQ(dragged(3), (Names{"0.txt", "1.txt"})) << "one has just gone";
    dispatch.runAll();
    EXPECT_EQ(dragged(3), Names{}) << "a missing tile offers no drag";

    preferences.setValue(shelfCapacityKey, 100);
    addFiles(94, 100);
    selection.selectAll();
    EXPECT_EQ(commands.itemsOfDrag(id(99)).size(), 99U);
}

TEST_F(TileCommandsTest, asksBeforeItOpensManyFiles) {
    std::function<void()> confirmed;
    commands.confirmOpening = [&](std::size_t, std::function<void()> open) { confirmed = std::move(open); };
    addFiles(5, 100);
    selection.selectAll();
    commands.perform(TileCommand::open, id(0));
    ASSERT_TRUE(confirmed);
    confirmed();
    EXPECT_EQ(opener.opened.size(), 11U);
    confirmed = nullptr;
    select(0, Selecting::toggle);
    commands.perform(TileCommand::open, id(1));
    EXPECT_EQ(opener.opened.size(), 10U);
}

TEST_F(TileCommandsTest, theMenuActsOnTheSelectionAndSelectsAnotherTile) {
    select(1);
    select(2, Selecting::toggle);
    loseFile(2);
    const std::vector<TileMenuEntry> two{{TileCommand::open, "Open 2 Files"},
                                         {TileCommand::showInFolder, "Show 2 Files in Folder"},
                                         {TileCommand::copy, "Copy 2 Files", true, true},
                                         {TileCommand::copyPath, "Copy 2 Paths"},
                                         {TileCommand::remove, "Remove 2 Files from Shelf", true, true}};
    EXPECT_EQ(commands.menu(id(2)), two);
    commands.perform(TileCommand::open, id(2));
    EXPECT_EQ(opener.opened, Names{"1.txt"}) << "without the missing one";
    EXPECT_FALSE(viewModel->capacityMessage());
    commands.perform(TileCommand::copyPath, id(2));
    EXPECT_EQ(clipboard.text, "/files/1.txt");
    opener.hasApplications = false;
    commands.perform(TileCommand::open, id(1));
    EXPECT_EQ(viewModel->capacityMessage(), "No application opens this file.");
    const int saves = preferences.saves;
    commands.perform(TileCommand::remove, id(2));
    EXPECT_EQ(preferences.saves, saves + 1) << "as one change";

    loseFile(3);
    const std::vector<TileMenuEntry> missing{{TileCommand::open, "Open", false},
                                             {TileCommand::showInFolder, "Show in Folder", false},
                                             {TileCommand::copy, "Copy", false, true},
                                             {TileCommand::copyPath, "Copy Path", false},
                                             {TileCommand::remove, "Remove from Shelf", true, true}};
    EXPECT_EQ(commands.menu(id(3)), missing);
    EXPECT_EQ(selected(), "5");
    commands.preview(id(3));
    commands.perform(TileCommand::showInFolder, id(3));
    EXPECT_EQ(opener.previewed, "");
    EXPECT_EQ(opener.shown, Names{});
}

TEST(DragPictureTest, showsAFewPicturesAndHowManyFilesThereAre) {
    const auto measure = [](const std::string& text) { return 7.0 * static_cast<double>(text.size()); };
    const DragPictureLayout one = layOutDragPicture(1, 48, measure);
    EXPECT_EQ(one.size, (Size{48, 48}));
    const DragPictureLayout many = layOutDragPicture(100, 48, measure);
    EXPECT_EQ(many.pictures.size(), 3U);
    EXPECT_EQ(many.badgeText, "100");
    EXPECT_EQ(many.badge.centerX(), 48) << "on the corner of the first picture";
    EXPECT_GE(many.size.width, many.badge.right());
}

}  // namespace
}  // namespace stowpocket
