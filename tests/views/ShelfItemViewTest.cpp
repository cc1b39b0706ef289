// SPDX-License-Identifier: MIT
#include "ShelfViewFixture.h"

#include <QAccessible>
#include <QEnterEvent>
#include <QMenu>
#include <QStyleHints>
#include <QTextDocument>
#include <QToolTip>

namespace stowpocket {
namespace {

struct ShelfItemViewTest : testing::Test, ShelfViewFixture {
    [[nodiscard]] ShelfItemView& tile(std::size_t index = 0) const { return *tiles()[index]; }
    [[nodiscard]] QImage look(std::size_t index = 0) const { return tile(index).grab().toImage(); }
    [[nodiscard]] Button* removeButton() const { return named(*view, "Remove from shelf"); }
    [[nodiscard]] QAccessibleInterface& accessible(std::size_t index) const {
        return *QAccessible::queryAccessibleInterface(&tile(index));
    }
    /// The numbers of the selected tiles, as a screen reader is told.
    [[nodiscard]] std::string selected() const {
        std::string numbers;
        for (std::size_t index = 0; index < tiles().size(); ++index) {
            const QAccessible::State state = accessible(index).state();
            numbers += state.selectable && state.selected ? std::to_string(index) : "";
        }
        return numbers;
    }
    void enter() {
        const QPointF point(20, 20);
        QEnterEvent event(point, point, tile().mapToGlobal(point));
        QApplication::sendEvent(&tile(), &event);
    }
    /// The names of the files in the drag that begins, if it does.
    Names drag(QWidget& widget, QPoint distance = {30, 20}) {
        constexpr QPoint start(20, 10);
        dragged.names.clear();
        QTest::mousePress(&widget, Qt::LeftButton, {}, start);
        const QPoint end = start + distance;
        QMouseEvent move(QEvent::MouseMove, end, widget.mapToGlobal(end), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &move);
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, end);
        return dragged.names;
    }
};

TEST_F(ShelfItemViewTest, theRemoveButtonIsThereOnlyUnderThePointer) {
    open(1);
    const QImage atRest = look();
    enter();
    ASSERT_NE(removeButton(), nullptr);
    const QImage hovered = look();
    EXPECT_GT(hovered.pixelColor(4, 40).blue(), atRest.pixelColor(4, 40).blue()) << "the ground is lit";
    EXPECT_EQ(hovered.pixelColor(removeButton()->geometry().center()), QColor(Qt::white)) << "a white cross";
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&tile(), &leave);
    EXPECT_EQ(removeButton(), nullptr);

    loseFile(0);
    enter();
    click(removeButton());
    EXPECT_TRUE(manager->items().empty());
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(ShelfItemViewTest, clicksSelectAndADragCarriesTheSelectionOnceThePointerHasGoneFarEnough) {
    open(4);
    const int distance = QApplication::startDragDistance();
    EXPECT_EQ(drag(tile(), {distance - 1, 0}), Names());
    EXPECT_EQ(drag(tile(3), {distance, 0}), Names{"3.txt"});
    EXPECT_EQ(dragged.hotSpot, QPoint(4, 4)) << "where the picture was held";
    EXPECT_EQ(selected(), "0") << "a drag is no click";

    QTest::mouseClick(&tile(2), Qt::LeftButton, {}, {40, 70});
    QTest::mouseClick(&tile(0), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(drag(tile(2)), (Names{"0.txt", "2.txt"}));
    EXPECT_GT(dragged.hotSpot.y(), 4) << "the badge takes room above";
    EXPECT_EQ(drag(tile(1)), Names{"1.txt"});
    QTest::mouseClick(&tile(1), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "01");

    EXPECT_EQ(drag(*visible<DragHandle>(*view)[0]).size(), 4U);
    QTest::mouseClick(view, Qt::LeftButton, {}, {4, 100});
    EXPECT_EQ(selected(), "") << "clicked beside the tiles";
    QTest::mouseDClick(&tile(3), Qt::LeftButton);
    EXPECT_EQ(opener.opened, Names{"3.txt"});
}

TEST_F(ShelfItemViewTest, theMenuOpensByFingerButtonAndScreenReader) {
    open(2);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host)) << "a program that becomes active closes its menus";
    QGuiApplication::styleHints()->setMousePressAndHoldInterval(1);
    const std::unique_ptr<QPointingDevice> touched(QTest::createTouchDevice());
    const QPoint point(40, 30);
    const std::function<void()> ways[] = {
        [&] {
            QMouseEvent event(QEvent::MouseButtonPress, point, tile().mapToGlobal(point), Qt::LeftButton,
                              Qt::LeftButton, {}, touched.get());
            QApplication::sendEvent(&tile(), &event);
        },
        [&] { accessible(0).actionInterface()->doAction(QAccessibleActionInterface::showMenuAction()); },
        [&] {
            QContextMenuEvent event(QContextMenuEvent::Mouse, point, tile().mapToGlobal(point));
            QApplication::sendEvent(&tile(), &event);
        },
    };
    QMenu* menu = nullptr;
    for (const auto& open : ways) {
        if (menu != nullptr)
            menu->close();
        open();
        ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
        menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_EQ(menu->actions().first()->text(), QLatin1String("Open"));
    }
    menu->actions().last()->trigger();
    EXPECT_EQ(names(), Names{"1.txt"});
}

TEST_F(ShelfItemViewTest, theThumbnailReplacesTheIconWhenItArrives) {
    open(1);
    QImage wide(96, 48, QImage::Format_RGB32);
    wide.fill(Qt::blue);
    thumbnails.asked.at(0).completion(Image{std::make_shared<QtImageContent>(wide), Size{48, 48}});
    dispatch.runAll();
    EXPECT_EQ(look().pixelColor(17, 30), QColor(Qt::blue)) << "fitted to the frame's width";
}

TEST_F(ShelfItemViewTest, theTooltipTellsTheWholeNameAsItIs) {
    addFile("a &amp;<b>.txt");
    open();
    QHelpEvent help(QEvent::ToolTip, {10, 10}, tile().mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&tile(), &help);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    EXPECT_EQ(shown.toPlainText(), QLatin1String("a &amp;<b>.txt"));
    QToolTip::hideText();
}

}  // namespace
}  // namespace stowpocket
