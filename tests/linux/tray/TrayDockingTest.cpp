// SPDX-License-Identifier: MIT
#include "platform/linux/tray/TrayDocking.h"

#include "platform/linux/tray/TrayColors.h"

#include <gtest/gtest.h>

#include <array>

namespace stowpocket {
namespace {

using Step = TrayDocking::Step;
using State = TrayDocking::State;

constexpr TrayDocking::Manager first = 0x100;
constexpr TrayDocking::Manager second = 0x200;

TrayDocking docked() {
    TrayDocking docking;
    docking.embedded();
    EXPECT_EQ(docking.state(), State::waiting);
    EXPECT_EQ(docking.managerAppeared(first), Step::dock);
    EXPECT_EQ(docking.managerAppeared(first), Step::none);
    docking.embedded();
    return docking;
}

TEST(TrayDocking, docksInTheTrayThatFollows) {
    TrayDocking docking = docked();
    EXPECT_EQ(docking.windowDestroyed(second), Step::none);
    EXPECT_EQ(docking.windowDestroyed(first), Step::undock);
    EXPECT_EQ(docking.lostWindow(), Step::none);
    EXPECT_EQ(docking.managerAppeared(second), Step::dock);

    TrayDocking replaced = docked();
    EXPECT_EQ(replaced.managerAppeared(second), Step::dock);
    EXPECT_EQ(replaced.windowDestroyed(first), Step::none);
}

TEST(TrayDocking, doesNotForceItselfOnATrayThatThrewItOut) {
    TrayDocking docking = docked();
    EXPECT_EQ(docking.lostWindow(), Step::undock);
    EXPECT_EQ(docking.state(), State::waiting);
    EXPECT_EQ(docking.managerAppeared(first), Step::dock);
}

TEST(TrayDocking, asksOnceMoreWhatShowsNothing) {
    TrayDocking docking = docked();
    EXPECT_EQ(docking.isUnseen(), Step::dock);
    EXPECT_EQ(docking.isUnseen(), Step::none) << "it has not answered yet";
    docking.embedded();
    EXPECT_EQ(docking.isUnseen(), Step::none) << "it hides on purpose";
    EXPECT_EQ(docking.managerAppeared(second), Step::dock);
    docking.embedded();
    EXPECT_EQ(docking.isUnseen(), Step::dock);
}

TEST(TrayColors, readsTheAnnouncedForeground) {
    constexpr std::array<std::uint32_t, 12> announced{0x1234, 0xABCD, 0xFFFF};
    EXPECT_EQ(announcedForeground(announced), (RgbColor{0x12, 0xAB, 0xFF}));
    EXPECT_EQ(announcedForeground(std::span(announced).first(2)), std::nullopt);
}

TEST(TrayColors, standsOutFromTheBar) {
    constexpr RgbColor white{255, 255, 255};
    EXPECT_EQ(readableOn({50, 50, 50}), white);
    EXPECT_EQ(readableOn({0, 0, 255}), white);
    EXPECT_NE(readableOn({238, 238, 238}), white);
    EXPECT_NE(readableOn({0, 255, 0}), white);
}

}  // namespace
}  // namespace stowpocket
