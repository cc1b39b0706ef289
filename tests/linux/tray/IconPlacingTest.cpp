// SPDX-License-Identifier: MIT
#include "platform/linux/tray/IconPlacing.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Place = IconPlacing::Place;
using State = TrayDocking::State;

TEST(IconPlacing, followsTraysAndHostsThatComeAndGo) {
    IconPlacing placing;
    EXPECT_FALSE(placing.wantsHost());
    placing.trayIs(State::waiting);
    EXPECT_TRUE(placing.wantsHost());
    EXPECT_EQ(placing.place(), Place::undecided);
    placing.hostIs(false);
    EXPECT_EQ(placing.place(), Place::pocket);
    placing.hostIs(true);
    EXPECT_FALSE(placing.wantsHost());
    EXPECT_EQ(placing.place(), Place::notifier);
    placing.trayIs(State::requested);
    EXPECT_EQ(placing.place(), Place::notifier) << "seen until the tray has answered";
    placing.trayIs(State::docked);
    EXPECT_EQ(placing.place(), Place::tray);
    placing.hostIs(false);
    EXPECT_EQ(placing.place(), Place::tray);
    placing.trayIs(State::waiting);
    EXPECT_EQ(placing.place(), Place::pocket);
}

TEST(IconPlacing, keepsThePocketWhereAHostShowsNothing) {
    IconPlacing placing;
    placing.trayIs(State::waiting);
    placing.hostIs(true);
    EXPECT_FALSE(placing.wantsPocket());
    placing.itemIsOffered();
    EXPECT_TRUE(placing.wantsPocket());
    EXPECT_EQ(placing.place(), Place::notifier) << "it may come to show it";
    placing.itemIsSeen(true);
    EXPECT_FALSE(placing.wantsPocket());
    placing.itemIsOffered();
    EXPECT_FALSE(placing.wantsPocket());
    placing.itemIsSeen(false);
    EXPECT_TRUE(placing.wantsPocket()) << "the panel has ended, and the watcher tells of a host all the same";
    placing.itemIsSeen(true);
    placing.hostIs(false);
    EXPECT_TRUE(placing.wantsPocket());
    placing.hostIs(true);
    EXPECT_FALSE(placing.wantsPocket()) << "another host is given its time";
}

TEST(IconPlacing, doesNotHideBehindATrayThatHangs) {
    IconPlacing placing;
    placing.trayIs(State::requested);
    placing.trayIsSlow();
    EXPECT_TRUE(placing.wantsHost());
    placing.hostIs(false);
    EXPECT_EQ(placing.place(), Place::pocket);
    placing.trayIs(State::docked);
    EXPECT_EQ(placing.place(), Place::tray);
    placing.trayIsSlow();
    EXPECT_EQ(placing.place(), Place::tray);
    placing.trayIs(State::requested);
    EXPECT_EQ(placing.place(), Place::undecided) << "another tray is given its time";
}

}  // namespace
}  // namespace stowpocket
