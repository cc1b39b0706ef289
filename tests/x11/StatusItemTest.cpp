// SPDX-License-Identifier: MIT
#include "ComesTrue.h"
#include "FakeNotifierPanel.h"
#include "FakeTray.h"
#include "platform/linux/x11/X11StatusItem.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

class StatusItemTest : public testing::Test {
protected:
    StatusItemTest() {
        button().setImage({"tray", 16, FontWeight::medium, "Shelf"});
        button().setAction([this] { ++clicks; });
    }

    template <class Condition>
    bool waitFor(Condition condition) {
        return comesTrue(
            [this] {
                if (tray)
                    tray->work();
            },
            condition);
    }
    X11StatusItemButton& button() { return static_cast<X11StatusItemButton&>(*item->button()); }
    bool isPocketShown(bool isShown) {
        return waitFor([isShown] {
            return isShown == std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* window) {
                       return window->isVisible() && window->windowTitle() == QStringLiteral("stowpocket pocket");
                   });
        });
    }
    bool docksIn(FakeTray::Container container) {
        tray = std::make_unique<FakeTray>(container);
        return waitFor([this] { return tray->docked() != 0 && tray->docked() == button().window(); });
    }

    std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    std::unique_ptr<StatusItem> item = X11StatusBar(
                                           *connection,
                                           [](const StatusItemImage&, const QColor&, int pixels) {
                                               return QImage(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
                                           },
                                           nullptr)
                                           .makeStatusItem();
    std::unique_ptr<FakeTray> tray;
    int clicks = 0;
};

TEST_F(StatusItemTest, isAnItemOfANotifierHostWhereTheTrayOnlyCopiesItsPicture) {
    auto panel = std::make_unique<FakeNotifierPanel>();
    ASSERT_TRUE(docksIn(FakeTray::Container::underRoot));
    ASSERT_TRUE(waitFor([&] { return button().window() == x11None && !panel->item().isEmpty(); }));
    EXPECT_EQ(tray->dockedCount(), 1);
    EXPECT_EQ(panel->pictureSizes(), (QList<int>{16, 22, 32, 48}));
    EXPECT_TRUE(isPocketShown(false));
    panel->click(700, 20);
    ASSERT_TRUE(waitFor([this] { return clicks == 1; }));
    EXPECT_EQ(button().rectOnScreen().topLeft(), QPoint(700, 20));

    panel.reset();
    ASSERT_TRUE(isPocketShown(true));
    panel = std::make_unique<FakeNotifierPanel>();
    ASSERT_TRUE(waitFor([&] { return !panel->item().isEmpty(); }));
    EXPECT_TRUE(isPocketShown(false));
    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel));
    EXPECT_TRUE(waitFor([&] { return panel->item().isEmpty(); }));
    tray.reset();
    EXPECT_TRUE(waitFor([&] { return !panel->item().isEmpty(); })) << "when the tray has crashed";
}

}  // namespace
}  // namespace stowpocket
