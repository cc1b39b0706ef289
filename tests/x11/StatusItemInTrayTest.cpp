// SPDX-License-Identifier: MIT
#include "ComesTrue.h"
#include "FakeTray.h"
#include "platform/linux/x11/X11StatusItem.h"

#include <QApplication>
#include <QPainter>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

constexpr std::uint32_t darkPanel = 0x303030;
constexpr std::uint32_t lightPanel = 0xEEEEEE;

class StatusItemInTray : public testing::Test {
protected:
    StatusItemInTray() {
        button().setImage({"tray", 16, FontWeight::medium, "Shelf"});
        button().setTitle({" 7", 9, FontWeight::bold, 4});
    }

    X11StatusItemButton& button() { return static_cast<X11StatusItemButton&>(*item->button()); }

    template <class Condition>
    bool comesTrue(Condition condition) {
        return stowpocket::comesTrue(
            [this] {
                if (tray)
                    tray->work();
            },
            condition);
    }
    bool isDocked() {
        return comesTrue([this] { return tray->docked() != 0 && tray->docked() == button().window(); });
    }

    std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    std::unique_ptr<StatusItem> item =
        X11StatusBar(*connection, [](const StatusItemImage&, const QColor& color, int pixels) {
            QImage symbol(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
            symbol.fill(color);
            return symbol;
        }).makeStatusItem();
    std::unique_ptr<FakeTray> tray;
};

TEST_F(StatusItemInTray, docksInATrayThatStartsLateAndInEveryOneAfterIt) {
    comesTrue([] { return true; });
    EXPECT_EQ(button().window(), x11None);
    for (int round = 0; round < 3; ++round) {
        tray = std::make_unique<FakeTray>(FakeTray::Container::inPanel, darkPanel);
        ASSERT_TRUE(isDocked());
        EXPECT_EQ(tray->dockedCount(), 1);
        tray.reset();
        ASSERT_TRUE(comesTrue([this] { return button().window() == x11None; }));
    }
}

TEST_F(StatusItemInTray, knowsItsPlaceFromTheServer) {
    const QRect undocked = button().rectOnScreen();
    EXPECT_TRUE(QRect(0, 0, 800, 600).contains(undocked));
    tray = std::make_unique<FakeTray>(FakeTray::Container::inPanel, darkPanel);
    ASSERT_TRUE(isDocked());
    const QRect expected(FakeTray::panelX + 5, FakeTray::panelY + 3, FakeTray::grantedWidth, FakeTray::grantedHeight);
    EXPECT_TRUE(comesTrue([&] { return button().rectOnScreen() == expected; }));
}

TEST_F(StatusItemInTray, runsItsActionOnAClick) {
    int clicks = 0;
    button().setAction([&] { ++clicks; });
    tray = std::make_unique<FakeTray>(FakeTray::Container::inPanel, darkPanel);
    ASSERT_TRUE(isDocked());
    ASSERT_TRUE(comesTrue([this] { return tray->lightest() > lightPanel; }));
    tray->click();
    EXPECT_TRUE(comesTrue([&] { return clicks == 1; }));
}

TEST_F(StatusItemInTray, standsOutFromTheBarThatItIsIn) {
    tray = std::make_unique<FakeTray>(FakeTray::Container::inPanel, darkPanel);
    ASSERT_TRUE(isDocked());
    EXPECT_TRUE(comesTrue([this] { return tray->lightest() == 0xFFFFFFU; }));

    tray = std::make_unique<FakeTray>(FakeTray::Container::inPanel, lightPanel);
    ASSERT_TRUE(isDocked());
    EXPECT_TRUE(comesTrue([this] { return tray->darkest() < 0x404040U && tray->darkest() > 0U; }));
}

TEST_F(StatusItemInTray, leavesATrayThatOnlyCopiesItsPicture) {
    tray = std::make_unique<FakeTray>(FakeTray::Container::underRoot, darkPanel);
    ASSERT_TRUE(isDocked());
    EXPECT_TRUE(comesTrue([this] { return button().window() == x11None; }));
    EXPECT_EQ(tray->dockedCount(), 1);

    tray = std::make_unique<FakeTray>(FakeTray::Container::inPanel, darkPanel);
    EXPECT_TRUE(isDocked());
}

}  // namespace
}  // namespace stowpocket
