// SPDX-License-Identifier: MIT
#include "ShelfViewFixture.h"

#include <gtest/gtest.h>

#include <QEnterEvent>
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
    EXPECT_EQ(remove->toolTip(), QLatin1String("Remove from shelf"));
    EXPECT_EQ(remove->geometry().topRight(), QPoint(63, 6)) << "the picture's corner";
    const QImage hovered = tile().grab().toImage();
    EXPECT_GT(hovered.pixelColor(4, 40).blue(), atRest.pixelColor(4, 40).blue()) << "the ground is lit";
    const QRect disc = remove->geometry();
    EXPECT_EQ(hovered.pixelColor(disc.center()), QColor(Qt::white)) << "a white cross";
    EXPECT_EQ(hovered.pixelColor(disc.center().x(), disc.top() + 4).blue(), 0x15) << "on red";
    leave(tile());
    EXPECT_EQ(button(*view, "Remove from shelf"), nullptr);
}

TEST_F(ShelfItemViewTest, aMissingFileCanBeRemovedButNotDragged) {
    addFiles(1);
    open();
    loseFile(0);
    EXPECT_EQ(tile().accessibleName(), QLatin1String("0.txt, 8 bytes, Missing"));
    dragFrom(tile(), {40, 30}, {80, 60});
    EXPECT_EQ(dragged.path, "");
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
    EXPECT_EQ(dragged.path, "");
    dragFrom(tile(), {30, 20}, {30 + distance, 20});
    EXPECT_EQ(dragged.path, "/files/0.txt");
    EXPECT_EQ(dragged.picture.deviceIndependentSize(), QSizeF(48, 48));
    EXPECT_EQ(dragged.hotSpot, QPoint(14, 14)) << "where the picture was held";
}

TEST_F(ShelfItemViewTest, theThumbnailReplacesTheIconWhenItArrives) {
    addFiles(1);
    open();
    const QPoint corner(17, 12);
    const QPoint middle(40, 30);
    EXPECT_NE(tile().grab().toImage().pixelColor(middle), QColor(Qt::blue));
    QImage wide(96, 48, QImage::Format_RGB32);
    wide.fill(Qt::blue);
    thumbnails.asked.at(0).completion(Image{std::make_shared<QtImageContent>(wide), Size{48, 48}});
    dispatch.runAll();
    const QImage shown = tile().grab().toImage();
    EXPECT_EQ(shown.pixelColor(middle), QColor(Qt::blue));
    EXPECT_EQ(shown.pixelColor(17, 30), QColor(Qt::blue)) << "fitted to the frame's width";
    EXPECT_EQ(shown.pixelColor(corner), shown.pixelColor(0, 0)) << "nothing above a wide picture";
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
    const std::string name = std::string(240, 'w') + " &amp;<b>.txt";
    addFile(name);
    open();
    QHelpEvent help(QEvent::ToolTip, {10, 10}, tile().mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&tile(), &help);
    const auto windows = QApplication::topLevelWidgets();
    const auto tip = std::ranges::find(windows, QStringLiteral("qtooltip_label"), &QWidget::objectName);
    ASSERT_NE(tip, windows.end());
    EXPECT_LT((*tip)->width(), 400);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    EXPECT_EQ(shown.toPlainText().remove(QLatin1Char('\n')).remove(QLatin1Char(' ')).toStdString(),
              std::string(240, 'w') + "&amp;<b>.txt");
    QToolTip::hideText();
}

}  // namespace
}  // namespace stowpocket
