// SPDX-License-Identifier: MIT
#include "platform/qt/QtPopover.h"
#include "ShelfViewFixture.h"
#include "views/controls/Motion.h"

#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

class ShelfViewTest : public testing::Test, protected ShelfViewFixture {
protected:
    [[nodiscard]] QStringList texts() const { return shownTexts(*view); }
    [[nodiscard]] std::vector<ShelfItemView*> tiles() const { return visible<ShelfItemView>(*view); }
    [[nodiscard]] QStringList tileNames() const {
        std::vector<ShelfItemView*> inOrder = tiles();
        std::ranges::sort(inOrder, {}, [](const QWidget* tile) { return std::pair(tile->y(), tile->x()); });
        QStringList names;
        for (const ShelfItemView* const tile : inOrder)
            names.append(tile->accessibleName().section(QLatin1Char(','), 0, 0));
        return names;
    }
};

TEST_F(ShelfViewTest, theBannerGivesWayToTheFullNoticeWhenDismissed) {
    const QString notice = QStringLiteral("Shelf full - remove items to add more.");
    const QString message = QStringLiteral("Added 2 of 5 files - shelf is full");
    addFiles(18);
    open();
    viewModel->addFileURLs(makeFiles(5, 100));
    fit();
    EXPECT_TRUE(texts().contains(message));
    EXPECT_FALSE(texts().contains(notice));
    EXPECT_TRUE(visible<DropZoneView>(*view).empty());

    QTest::mouseClick(button(*view, "Dismiss"), Qt::LeftButton);
    EXPECT_FALSE(viewModel->capacityMessage());
    EXPECT_FALSE(texts().contains(message));
    EXPECT_TRUE(texts().contains(notice));

    preferences.setValue(shelfCapacityKey, 10);
    view->hide();
    view->show();
    EXPECT_TRUE(texts().contains(QStringLiteral("20/10"))) << "a changed capacity counts at the next opening";
    EXPECT_TRUE(texts().contains(notice));
}

TEST_F(ShelfViewTest, tellsThatTheShelfIsNotSavedForAsLongAsItIsNot) {
    const QString message = QStringLiteral("Changes are not saved: the disk is full");
    addFiles(18);
    open();
    viewModel->addFileURLs(makeFiles(5, 100));
    preferences.finishSaving("the disk is full");
    EXPECT_TRUE(texts().contains(message));
    EXPECT_TRUE(texts().contains(QStringLiteral("Added 2 of 5 files - shelf is full")));
    preferences.finishSaving(std::nullopt);
    EXPECT_FALSE(texts().contains(message));
}

TEST_F(ShelfViewTest, theWheelTurnsOnlyWhileFilesAreAddedAndSeen) {
    open();
    manager->addFiles(makeFiles(12));
    EXPECT_TRUE(texts().contains(QStringLiteral("Adding files\u2026")));
    const auto wheels = visible<Spinner>(*view);
    ASSERT_EQ(wheels.size(), 1U);
    EXPECT_TRUE(wheels[0]->isTurning());
    host.hide();
    EXPECT_FALSE(wheels[0]->isTurning());
    host.show();
    EXPECT_TRUE(wheels[0]->isTurning());
    dispatch.runAll();
    EXPECT_FALSE(texts().contains(QStringLiteral("Adding files\u2026")));
    EXPECT_FALSE(wheels[0]->isTurning());
    EXPECT_EQ(tiles().size(), 12U);
}

TEST_F(ShelfViewTest, followsEachChangeWithTheTilesItConcerns) {
    addFiles(4);
    open();
    const std::vector<ShelfItemView*> before = tiles();
    addFiles(2, 100);
    fit();
    EXPECT_EQ(tileNames().join(QLatin1Char(' ')), QLatin1String("0.txt 1.txt 2.txt 3.txt 100.txt 101.txt"));
    files.removeItem(manager->items()[1].fileURL);
    loseFile(4);
    EXPECT_TRUE(tiles()[1]->accessibleName().endsWith(QLatin1String(", Missing")));
    EXPECT_GT(tiles()[1]->height(), tiles()[0]->height()) << "a line more";
    manager->removeMissingItems();
    fit();
    EXPECT_EQ(tileNames().join(QLatin1Char(' ')), QLatin1String("0.txt 2.txt 3.txt 101.txt"));
    EXPECT_EQ(tiles()[0], before[0]) << "the same widget as before";
    EXPECT_EQ(tiles()[1], before[2]);

    manager->load();
    EXPECT_EQ(tileNames().size(), 4);
    manager->clear();
    fit();
    EXPECT_TRUE(tiles().empty());
    EXPECT_EQ(visible<DropZoneView>(*view)[0]->accessibleName(), QLatin1String("Drop zone for files"));
    EXPECT_EQ(button(*view, "Clear All"), nullptr);
}

TEST_F(ShelfViewTest, scrollsWhenTheHostHasNoRoomForAllTiles) {
    preferences.setValue(shelfCapacityKey, 100);
    addFiles(100);
    room = 500;
    open();
    ScrollView& scroll = *visible<ScrollView>(*view).at(0);
    EXPECT_EQ(view->height(), 500);
    EXPECT_EQ(scroll.viewport()->width(), 320) << "the indicator takes no room";
    EXPECT_GT(scroll.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroll.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(painted.asked, 1) << "one icon serves all files of its type";

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
    EXPECT_EQ(tileNames().size(), 100);
    EXPECT_EQ(tileNames().last(), QLatin1String("301.txt"));

    manager->clear();
    addFiles(1);
    fit();
    EXPECT_LT(view->height(), 300);
}

/// The shelf in a popover below an icon, on a screen of that height.
class ShelfPopoverTest : public testing::TestWithParam<double>, protected ShelfViewFixture {
protected:
    ShelfPopoverTest()
        : window_(
              PopoverEdge::cut,
              [](const QSize& content, int shadow) {
                  const Rect icon{400, 0, 24, 24};
                  return placePopover(icon, {double(content.width()), double(content.height())},
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

    /// Opens the popover if it is closed; nothing in it is to lie over anything else or to be cut off.
    void expectInOrder() {
        QApplication::processEvents();
        setOpen(true);
        const int limit = int(GetParam() - popoverMargin - popoverArrowHeight);
        EXPECT_EQ(view->height(), std::min(view->sizeHint().height(), limit));
        QWidget& content = *view->findChild<QScrollArea*>()->widget();
        EXPECT_TRUE(!content.isVisible() || content.height() == content.sizeHint().height());
        const QRect whole(QPoint(), content.size());
        QRect above;
        for (const QWidget* const part : content.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (!part->isVisible())
                continue;
            EXPECT_GT(part->y(), above.bottom());
            EXPECT_TRUE(whole.contains(part->geometry()));
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
            manager->clear();
            expectInOrder();
            const auto change = [&](const std::function<void()>& work) {
                setOpen(isOpen);
                work();
                expectInOrder();
            };
            change([&] { addFiles(count, first += 100); });
            change([&] { addFiles(1, first += 100); });
            change([&] { manager->removeItem(manager->items()[0].id); });
        }
    }
}

INSTANTIATE_TEST_SUITE_P(screens, ShelfPopoverTest, testing::Values(2000, 420));

TEST_F(ShelfViewTest, theFooterOpensSettingsAndQuits) {
    open();
    QTest::mouseClick(button(*view, "Settings"), Qt::LeftButton);
    QTest::keyClick(button(*view, "Quit stowpocket"), Qt::Key_Return);
    EXPECT_EQ(settingsOpened, 1);
    EXPECT_EQ(quits, 1);
}

TEST_F(ShelfViewTest, theKeyboardReachesTilesAndButtonsInReadingOrder) {
    open();
    addFiles(5);
    fit();
    host.activateWindow();
    view->setFocus();
    const auto tile = tiles();
    const auto tab = [&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); };
    tab();
    EXPECT_EQ(QApplication::focusWidget(), tile[0]);
    QTest::keyClick(tile[0], Qt::Key_Right);
    QTest::keyClick(tile[1], Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), tile[4]);
    QTest::keyClick(tile[4], Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), tile[4]) << "no row below";
    QTest::keyClick(tile[4], Qt::Key_Home);
    EXPECT_EQ(QApplication::focusWidget(), tile[0]);
    QTest::keyClick(tile[0], Qt::Key_End);
    EXPECT_EQ(QApplication::focusWidget(), tile[4]);
    for (const char* const name : {"Settings", "Clear All", "Quit stowpocket"}) {
        tab();
        EXPECT_EQ(QApplication::focusWidget(), button(*view, name));
    }

    tile[4]->setFocus();
    QTest::keyClick(tile[4], Qt::Key_Delete);
    EXPECT_EQ(manager->items().size(), 4U);
    EXPECT_EQ(QApplication::focusWidget(), tile[3]) << "the keyboard stays with the tiles";
    QTest::keyClick(tile[3], Qt::Key_Up);
    QTest::keyClick(tile[0], Qt::Key_Backspace);
    EXPECT_EQ(names(), (std::vector<std::string>{"1.txt", "2.txt", "3.txt"}));
    EXPECT_EQ(QApplication::focusWidget(), tile[1]);
}

TEST_F(ShelfViewTest, keysSelectOpenPreviewAndRemove) {
    addFiles(5);
    open();
    host.activateWindow();
    const auto tile = tiles();
    const auto press = [](int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
    };
    const auto selected = [&] { return std::ranges::count_if(tile, &ShelfItemView::isSelected); };
    view->setFocus();
    press(Qt::Key_Right);
    EXPECT_TRUE(tile[0]->hasFocus() && tile[0]->isSelected());
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), 4);
    press(Qt::Key_Return);
    EXPECT_EQ(opener.opened.size(), 4U);
    press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(selected(), 4);
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selected(), 5);
    press(Qt::Key_Space);
    EXPECT_EQ(opener.previewed, "4.txt");
    press(Qt::Key_Left);
    EXPECT_EQ(selected(), 1);
    view->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.files.size(), 5U) << "a tile has the keyboard again";
    press(Qt::Key_Delete);
    EXPECT_TRUE(manager->items().empty());
}

class ClearConfirmationTest : public testing::Test, protected ShelfViewFixture {
protected:
    ClearConfirmationTest() {
        addFiles(20);
        viewModel->addFileURLs(makeFiles(1, 100));
        open();
        host.activateWindow();
        QTest::mouseClick(button(*view, "Clear All"), Qt::LeftButton);
    }

    /// Null when nothing is asked.
    [[nodiscard]] AlertView* alert() const {
        const auto alerts = visible<AlertView>(*view);
        return alerts.empty() ? nullptr : alerts[0];
    }
};

TEST_F(ClearConfirmationTest, cancellingChangesNothingAndItCanBeAskedAgain) {
    const std::vector<std::function<void()>> ways{
        [this] { QTest::mouseClick(button(*alert(), "Cancel"), Qt::LeftButton); },
        [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); },
        [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); },
        [this] { host.hide(), host.show(); },
    };
    for (const auto& way : ways) {
        ASSERT_NE(alert(), nullptr);
        way();
        EXPECT_EQ(alert(), nullptr);
        EXPECT_EQ(manager->items().size(), 20U);
        EXPECT_TRUE(viewModel->capacityMessage());
        QTest::mouseClick(button(*view, "Clear All"), Qt::LeftButton);
    }
}

TEST_F(ClearConfirmationTest, keepsKeyboardAndPointerToItself) {
    EXPECT_EQ(shownTexts(*alert()).first(), QLatin1String("Clear Shelf?"));
    EXPECT_LT(button(*alert(), "Clear All")->x(), button(*alert(), "Cancel")->x());
    for (const char* const name : {"Clear All", "Cancel", "Clear All"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), button(*alert(), name));
    }
    const QPoint settings = button(*view, "Settings")->mapTo(view, QPoint(5, 5));
    EXPECT_EQ(view->childAt(settings), alert());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(manager->items().empty());
    EXPECT_FALSE(viewModel->capacityMessage());
    EXPECT_EQ(alert(), nullptr);
}

}  // namespace
}  // namespace stowpocket
