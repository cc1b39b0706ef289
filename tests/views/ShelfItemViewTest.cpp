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

constexpr QRect nameFrame(0, 58, 80, 26);

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
    EXPECT_EQ(removeButton(), nullptr);
    const QImage atRest = look();
    enter();
    ASSERT_NE(removeButton(), nullptr);
    EXPECT_EQ(removeButton()->geometry().topRight(), QPoint(63, 6)) << "the picture's corner";
    const QImage hovered = look();
    EXPECT_GT(hovered.pixelColor(4, 40).blue(), atRest.pixelColor(4, 40).blue()) << "the ground is lit";
    EXPECT_EQ(hovered.pixelColor(removeButton()->geometry().center()), QColor(Qt::white)) << "a white cross";
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&tile(), &leave);
    EXPECT_EQ(removeButton(), nullptr);

    loseFile(0);
    EXPECT_EQ(tile().accessibleName(), QLatin1String("0.txt, 8 bytes, Missing"));
    EXPECT_EQ(drag(tile()), Names()) << "it can only be removed";
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
    EXPECT_EQ(dragged.picture.deviceIndependentSize(), QSizeF(48, 48));
    EXPECT_EQ(dragged.hotSpot, QPoint(4, 4)) << "where the picture was held";
    EXPECT_EQ(selected(), "0") << "a drag is no click";

    QTest::mouseClick(&tile(2), Qt::LeftButton, {}, {40, 70});
    QTest::mouseClick(&tile(0), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(selected(), "02");
    EXPECT_EQ(drag(tile(2)), (Names{"0.txt", "2.txt"}));
    EXPECT_GT(dragged.picture.deviceIndependentSize().width(), 48);
    EXPECT_GT(dragged.hotSpot.y(), 4) << "the badge takes room above";
    EXPECT_EQ(drag(tile(1)), Names{"1.txt"});
    QTest::mouseClick(&tile(1), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "01");

    EXPECT_EQ(drag(*visible<DragHandle>(*view)[0]).size(), 4U);
    QTest::mouseClick(view, Qt::LeftButton, {}, {4, 100});
    EXPECT_EQ(selected(), "") << "clicked beside the tiles";
    QTest::mouseDClick(&tile(3), Qt::LeftButton);
    EXPECT_EQ(opener.opened, Names{"3.txt"});
    view->hide();
    view->show();
    EXPECT_EQ(selected(), "") << "the shelf opens without a selection";
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
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "gone with its tile";
}

TEST_F(ShelfItemViewTest, theThumbnailReplacesTheIconWhenItArrives) {
    open(1);
    QImage wide(96, 48, QImage::Format_RGB32);
    wide.fill(Qt::blue);
    thumbnails.asked.at(0).completion(Image{std::make_shared<QtImageContent>(wide), Size{48, 48}});
    dispatch.runAll();
    EXPECT_EQ(look().pixelColor(17, 30), QColor(Qt::blue)) << "fitted to the frame's width";
    EXPECT_EQ(look().pixelColor(17, 12), look().pixelColor(0, 0)) << "nothing above a wide picture";
}

TEST_F(ShelfItemViewTest, noFileNameLeavesItsFrame) {
    addFile("\u3000");  // a blank: what is drawn besides names
    for (const char* const name : {"word without any end ", "no_blanks_", "שלום", "👩‍👩‍👧‍👦",
                                   "\xff\xfe", "a\nb", "Z\u0351\u0368\u0351\u0368\u0351\u0368", "&amp;<b>"}) {
        std::string longName;
        while (longName.size() + std::string_view(name).size() <= 255)
            longName += name;
        addFile(longName, 1200);
    }
    open();
    const QImage blank = look();
    for (std::size_t index = 1; index < manager->items().size(); ++index) {
        EXPECT_EQ(tile(index).size(), tile(0).size());
        QImage image = look(index);
        EXPECT_NE(image, blank) << index;
        QPainter(&image).drawImage(nameFrame.topLeft(), blank, nameFrame);
        EXPECT_EQ(image, blank) << "drawn outside the frame: " << index;
    }
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
