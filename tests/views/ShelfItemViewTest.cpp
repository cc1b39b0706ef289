// SPDX-License-Identifier: MIT
#include "ShelfViewFixture.h"

#include "views/shelf/ShelfView.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QEnterEvent>
#include <QMenu>
#include <QStyleHints>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

namespace stowpocket {
namespace {

constexpr QRect nameFrame(0, 58, 80, 26);

class ShelfItemViewTest : public testing::Test, protected ShelfViewFixture {
protected:
    [[nodiscard]] ShelfItemView& tile(std::size_t index = 0) const { return *visible<ShelfItemView>(*view)[index]; }

    void enter(QWidget& widget) {
        const QPointF point(20, 20);
        QEnterEvent event(point, point, widget.mapToGlobal(point));
        QApplication::sendEvent(&widget, &event);
    }
    void leave(QWidget& widget) {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&widget, &event);
    }
    void dragFrom(QWidget& widget, QPoint start, QPoint end) {
        QTest::mousePress(&widget, Qt::LeftButton, {}, start);
        QMouseEvent move(QEvent::MouseMove, end, widget.mapToGlobal(end), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &move);
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, end);
    }
    static bool isBlank(const QImage& image, const QRect& area) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (image.pixel(x, y) != image.pixel(0, 0))
                    return false;
            }
        }
        return true;
    }
};

TEST_F(ShelfItemViewTest, theRemoveButtonIsThereOnlyUnderThePointer) {
    addFiles(2);
    open();
    EXPECT_EQ(button(*view, "Remove from shelf"), nullptr);
    const QImage atRest = tile().grab().toImage();
    enter(tile());
    Button* const remove = button(tile(), "Remove from shelf");
    ASSERT_NE(remove, nullptr);
    EXPECT_EQ(remove->geometry().topRight(), QPoint(63, 6)) << "the picture's corner";
    const QImage hovered = tile().grab().toImage();
    EXPECT_GT(hovered.pixelColor(4, 40).blue(), atRest.pixelColor(4, 40).blue()) << "the ground is lit";
    EXPECT_EQ(hovered.pixelColor(remove->geometry().center()), QColor(Qt::white)) << "a white cross";
    leave(tile());
    EXPECT_EQ(button(*view, "Remove from shelf"), nullptr);
}

TEST_F(ShelfItemViewTest, aMissingFileCanBeRemovedButNotDragged) {
    addFiles(1);
    open();
    loseFile(0);
    EXPECT_EQ(tile().accessibleName(), QLatin1String("0.txt, 8 bytes, Missing"));
    dragFrom(tile(), {40, 30}, {80, 60});
    EXPECT_TRUE(dragged.paths.empty());
    enter(tile());
    QTest::mouseClick(button(*view, "Remove from shelf"), Qt::LeftButton);
    EXPECT_TRUE(manager->items().empty());
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(ShelfItemViewTest, aDragBeginsOnceThePointerHasGoneFarEnough) {
    addFiles(1);
    open();
    const int distance = QApplication::startDragDistance();
    dragFrom(tile(), {30, 20}, {30 + distance - 1, 20});
    EXPECT_TRUE(dragged.paths.empty());
    dragFrom(tile(), {30, 20}, {30 + distance, 20});
    EXPECT_EQ(dragged.paths, std::vector<std::string>{"/files/0.txt"});
    EXPECT_EQ(dragged.picture.deviceIndependentSize(), QSizeF(48, 48));
    EXPECT_EQ(dragged.hotSpot, QPoint(14, 14)) << "where the picture was held";
}

TEST_F(ShelfItemViewTest, clicksSelectAndADragCarriesTheSelection) {
    addFiles(4);
    open();
    const auto selected = [this] {
        std::string numbers;
        for (std::size_t index = 0; index < 4; ++index) {
            const QAccessible::State state = QAccessible::queryAccessibleInterface(&tile(index))->state();
            numbers += state.selectable && state.selected ? std::to_string(index) : "";
        }
        return numbers;
    };
    using Paths = std::vector<std::string>;
    const QImage atRest = tile(2).grab().toImage();
    QTest::mouseClick(&tile(2), Qt::LeftButton, {}, {40, 70});
    const QImage clicked = tile(2).grab().toImage();
    EXPECT_NE(clicked.pixelColor(4, 40), atRest.pixelColor(4, 40)) << "the ground";
    QTest::mouseClick(&tile(0), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(selected(), "02");
    dragFrom(tile(2), {30, 20}, {60, 40});
    EXPECT_EQ(dragged.paths, (Paths{"/files/0.txt", "/files/2.txt"}));
    EXPECT_GT(dragged.picture.deviceIndependentSize().width(), 48);
    EXPECT_GT(dragged.hotSpot.y(), 14) << "the badge takes room above";
    dragFrom(tile(1), {30, 20}, {60, 40});
    EXPECT_EQ(dragged.paths, Paths{"/files/1.txt"});
    EXPECT_EQ(selected(), "02") << "a drag is no click";
    QTest::mouseClick(&tile(1), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "01");

    DragHandle& badge = *visible<DragHandle>(*view)[0];
    dragFrom(badge, {5, 5}, {50, 40});
    EXPECT_EQ(dragged.paths.size(), 4U);
    QTest::mouseClick(view, Qt::LeftButton, {}, {4, 100});
    EXPECT_EQ(selected(), "") << "clicked beside the tiles";
    QTest::mouseDClick(&tile(3), Qt::LeftButton);
    EXPECT_EQ(opener.opened, std::vector<std::string>{"3.txt"});
    view->hide();
    view->show();
    EXPECT_EQ(selected(), "") << "the shelf opens without a selection";
}

TEST_F(ShelfItemViewTest, theMenuOpensByFingerButtonAndScreenReader) {
    addFiles(2);
    open();
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
        [&] {
            QContextMenuEvent event(QContextMenuEvent::Mouse, point, tile().mapToGlobal(point));
            QApplication::sendEvent(&tile(), &event);
        },
        [&] {
            QAccessibleActionInterface& actions = *QAccessible::queryAccessibleInterface(&tile())->actionInterface();
            actions.doAction(QAccessibleActionInterface::showMenuAction());
        },
    };
    for (const auto& open : ways) {
        open();
        ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
        QApplication::activePopupWidget()->close();
    }
    ways[1]();
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    EXPECT_EQ(menu->actions().first()->text(), QLatin1String("Open"));
    menu->actions().last()->trigger();
    EXPECT_EQ(names(), std::vector<std::string>{"1.txt"});
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "gone with its tile";
}

TEST_F(ShelfItemViewTest, theThumbnailReplacesTheIconWhenItArrives) {
    addFiles(1);
    open();
    QImage wide(96, 48, QImage::Format_RGB32);
    wide.fill(Qt::blue);
    thumbnails.asked.at(0).completion(Image{std::make_shared<QtImageContent>(wide), Size{48, 48}});
    dispatch.runAll();
    const QImage shown = tile().grab().toImage();
    EXPECT_EQ(shown.pixelColor(17, 30), QColor(Qt::blue)) << "fitted to the frame's width";
    EXPECT_EQ(shown.pixelColor(17, 12), shown.pixelColor(0, 0)) << "nothing above a wide picture";
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
    const QImage blank = tile(0).grab().toImage();
    ASSERT_TRUE(isBlank(blank, nameFrame));
    for (std::size_t index = 1; index < manager->items().size(); ++index) {
        EXPECT_EQ(tile(index).size(), tile(0).size());
        const QImage image = tile(index).grab().toImage();
        EXPECT_FALSE(isBlank(image, nameFrame)) << index;
        QImage withoutName = image;
        QPainter(&withoutName).drawImage(nameFrame.topLeft(), blank, nameFrame);
        EXPECT_EQ(withoutName, blank) << "drawn outside the frame: " << index;
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
