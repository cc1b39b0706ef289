// SPDX-License-Identifier: MIT
#include "platform/qt/QtPopover.h"
#include "ShelfViewFixture.h"
#include "views/controls/Motion.h"

#include <QScrollBar>

namespace stowpocket {
namespace {

struct ShelfViewTest : testing::Test, ShelfViewFixture {
    /// The names on the tiles, in reading order.
    [[nodiscard]] std::string tileNames() const {
        std::vector<ShelfItemView*> inOrder = tiles();
        std::ranges::sort(inOrder, {}, [](const QWidget* tile) { return std::pair(tile->y(), tile->x()); });
        QStringList shown;
        for (const ShelfItemView* const tile : inOrder)
            shown.append(tile->accessibleName().section(QLatin1String(".txt,"), 0, 0));
        return shown.join(QLatin1Char(' ')).toStdString();
    }
};

constexpr auto fullNotice = "Shelf full - remove items to add more.";
constexpr auto overflowMessage = "Added 2 of 5 files - shelf is full";

TEST_F(ShelfViewTest, tellsWhatDidNotFitThatItIsFullAndThatItIsNotSaved) {
    open(18);
    viewModel->addFileURLs(makeFiles(5, 100));
    fit();
    EXPECT_FALSE(shows(fullNotice));
    preferences.finishSaving("the disk is full");
    EXPECT_TRUE(shows("Changes are not saved: the disk is full") && shows(overflowMessage));
    preferences.finishSaving(std::nullopt);

    click(named(*view, "Dismiss"));
    EXPECT_TRUE(shows(fullNotice));
    preferences.setValue(shelfCapacityKey, 10);
    view->hide();
    view->show();
    EXPECT_TRUE(shows("20/10")) << "a changed capacity counts at the next opening";
}

TEST_F(ShelfViewTest, theWheelTurnsOnlyWhileFilesAreAddedAndSeen) {
    open();
    manager->addFiles(makeFiles(12));
    EXPECT_TRUE(shows("Adding files\u2026"));
    const Spinner& wheel = *visible<Spinner>(*view).at(0);
    for (const bool isSeen : {true, false, true}) {
        host.setVisible(isSeen);
        EXPECT_EQ(wheel.isTurning(), isSeen);
    }
    dispatch.runAll();
    EXPECT_FALSE(shows("Adding files\u2026") || wheel.isTurning());
}

TEST_F(ShelfViewTest, followsEachChangeWithTheTilesItConcerns) {
    open(4);
    const std::vector<ShelfItemView*> before = tiles();
    addFiles(2, 100);
    fit();
    files.removeItem(manager->items()[1].fileURL);
    loseFile(4);
    EXPECT_GT(tiles()[1]->height(), tiles()[0]->height()) << "a line more";
    manager->removeMissingItems();
    fit();
    EXPECT_EQ(tileNames(), "0 2 3 101");
    EXPECT_TRUE(tiles()[0] == before[0] && tiles()[1] == before[2]) << "the same widgets as before";

    manager->load();
    EXPECT_EQ(tileNames(), "0 2 3 101");
    manager->clear();
    fit();
    EXPECT_NE(named<DropZoneView>(*view, "Drop zone for files"), nullptr);
}

TEST_F(ShelfViewTest, scrollsWhenTheHostHasNoRoomForAllTiles) {
    preferences.setValue(shelfCapacityKey, 100);
    room = 500;
    open(100);
    ScrollView& scroll = *visible<ScrollView>(*view).at(0);
    EXPECT_EQ(view->height(), 500);

    manager->clear();
    addFiles(100, 100);
    const int height = scroll.sizeHint().height();
    const std::size_t atOnce = tiles().size();
    EXPECT_LT(atOnce, 100U) << "not all in one turn";
    manager->removeItem(manager->items()[98].id);
    manager->removeItem(manager->items()[1].id);
    EXPECT_EQ(tiles().size(), atOnce - 1);
    addFiles(2, 300);
    for (int turn = 0; turn < 3; ++turn)
        fit();
    EXPECT_EQ(scroll.sizeHint().height(), height) << "all have their room";
    EXPECT_TRUE(tileNames().ends_with(" 300 301"));
}

/// The shelf in a popover below an icon, on a screen of that height.
struct ShelfPopoverTest : testing::TestWithParam<double>, ShelfViewFixture {
    ShelfPopoverTest()
        : window_(
              PopoverEdge::cut,
              [](const QSize& content, int shadow) {
                  return placePopover({400, 0, 24, 24}, {double(content.width()), double(content.height())},
                                      {0, 24, 800, GetParam()}, shadow);
              },
              [] {}) {
        window_.setContent(&open());
    }

    void setOpen(bool isOpen) {
        if (isOpen)
            window_.fitContent();
        window_.setVisible(isOpen);
        QApplication::processEvents();
    }

    /// Changes the shelf in the open or closed popover. Nothing in it is to lie over anything else or to be cut off.
    void expectInOrderAfter(bool isOpen, const std::function<void()>& change) {
        setOpen(isOpen);
        change();
        QApplication::processEvents();
        setOpen(true);
        const int limit = int(GetParam() - popoverMargin - popoverArrowHeight);
        EXPECT_EQ(view->height(), std::min(view->sizeHint().height(), limit));
        const QWidget& content = *view->findChild<QScrollArea*>()->widget();
        EXPECT_TRUE(!content.isVisible() || content.height() == content.sizeHint().height());
        QRect above;
        for (const QWidget* const part : content.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (!part->isVisible())
                continue;
            EXPECT_GT(part->y(), above.bottom());
            EXPECT_TRUE(content.rect().contains(part->geometry()));
            above = part->geometry();
        }
    }

private:
    PopoverWindow window_;
};

TEST_P(ShelfPopoverTest, isInOrderAfterAnyNumberOfFilesCame) {
    preferences.setValue(shelfCapacityKey, 13);
    int first = 0;
    for (const bool isOpen : {true, false}) {
        for (int count = 0; count <= 13; ++count) {
            SCOPED_TRACE(std::to_string(count) + (isOpen ? " into the open popover" : " into the closed popover"));
            expectInOrderAfter(true, [&] { manager->clear(); });
            expectInOrderAfter(isOpen, [&] { addFiles(count, first += 100); });
            expectInOrderAfter(isOpen, [&] { addFiles(1, first += 100); });
            expectInOrderAfter(isOpen, [&] { manager->removeItem(manager->items()[0].id); });
        }
    }
}

INSTANTIATE_TEST_SUITE_P(screens, ShelfPopoverTest, testing::Values(2000, 420));

TEST_F(ShelfViewTest, theKeyboardReachesTilesAndButtonsInReadingOrder) {
    open(5);
    view->setFocus();
    const auto tile = tiles();
    press(Qt::Key_Tab);
    for (const auto& [key, reached] :
         {std::pair(Qt::Key_Right, 1), {Qt::Key_Down, 4}, {Qt::Key_Down, 4}, {Qt::Key_Home, 0}, {Qt::Key_End, 4}}) {
        press(key);
        EXPECT_EQ(QApplication::focusWidget(), tile[std::size_t(reached)]) << key;
    }
    for (const char* const name : {"Settings", "Clear All", "Quit stowpocket"}) {
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), named(*view, name));
    }
    press(Qt::Key_Return);
    EXPECT_EQ(quits, 1);
    click(named(*view, "Settings"));
    EXPECT_EQ(settingsOpened, 1);

    tile[4]->setFocus();
    press(Qt::Key_Delete);
    press(Qt::Key_Up);
    press(Qt::Key_Backspace);
    EXPECT_EQ(tileNames(), "1 2 3");
}

TEST_F(ShelfViewTest, keysSelectOpenPreviewCopyAndRemove) {
    open(5);
    const auto tile = tiles();
    const auto selected = [&] { return std::ranges::count_if(tile, &ShelfItemView::isSelected); };
    view->setFocus();
    press(Qt::Key_Right);
    EXPECT_TRUE(tile[0]->hasFocus() && tile[0]->isSelected());
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), 4);
    press(Qt::Key_Return);
    EXPECT_EQ(opener.opened.size(), 4U);
    press(Qt::Key_Right, Qt::ControlModifier);
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selected(), 5);
    press(Qt::Key_Space);
    EXPECT_EQ(opener.previewed, "4.txt");
    press(Qt::Key_Left);
    view->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.files.size(), 5U) << "a tile has the keyboard again";
    press(Qt::Key_Delete);
    EXPECT_TRUE(manager->items().empty());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(manager->items().size(), 5U);
}

TEST_F(ShelfViewTest, clearingAsksWithKeyboardAndPointerToItself) {
    addFiles(20);
    viewModel->addFileURLs(makeFiles(1, 100));
    open();
    const auto alert = [this] {
        const auto alerts = visible<AlertView>(*view);
        return alerts.empty() ? nullptr : alerts[0];
    };
    const auto cancelledBy = [&](const std::function<void()>& way) {
        click(named(*view, "Clear All"));
        ASSERT_NE(alert(), nullptr);
        way();
        EXPECT_EQ(alert(), nullptr);
        EXPECT_EQ(manager->items().size(), 20U);
    };
    cancelledBy([&] { click(named(*alert(), "Cancel")); });
    cancelledBy([] { press(Qt::Key_Return); });
    cancelledBy([] { press(Qt::Key_Escape); });
    cancelledBy([&] {
        for (const char* const name : {"Clear All", "Cancel", "Clear All"}) {
            press(Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), named(*alert(), name));
        }
        EXPECT_EQ(view->childAt(named(*view, "Settings")->mapTo(view, QPoint(5, 5))), alert());
        host.hide();
        host.show();
    });
    click(named(*view, "Clear All"));
    click(named(*alert(), "Clear All"));
    EXPECT_TRUE(manager->items().empty());
}

}  // namespace
}  // namespace stowpocket
