// SPDX-License-Identifier: MIT
#include "foundation/DispatchGroup.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace stowpocket {
namespace {

TEST(DispatchGroupTest, runsItsWorkOnceWhenAllHaveLeft) {
    DispatchGroup group;
    int runs = 0;
    group.enter();
    group.enter();
    group.leave();
    group.notify([&] { ++runs; });
    EXPECT_EQ(runs, 0);
    group.leave();
    EXPECT_EQ(runs, 1);
    group.enter();
    group.leave();
    group.leave();
    EXPECT_EQ(runs, 1);
}

TEST(DispatchGroupTest, anEmptyGroupRunsItsWorkAtOnceAndSurplusLeavesAreHarmless) {
    DispatchGroup group;
    int runs = 0;
    group.leave();
    group.enter();
    group.leave();
    group.leave();
    EXPECT_EQ(runs, 0);
    group.notify([&] { ++runs; });
    EXPECT_EQ(runs, 1);
}

TEST(DispatchGroupTest, isLeftFromManyThreads) {
    for (int round = 0; round < 200; ++round) {
        DispatchGroup group;
        std::atomic<int> runs = 0;
        std::vector<std::jthread> threads;
        for (int count = 0; count < 4; ++count) {
            group.enter();
            threads.emplace_back([&group] { group.leave(); });
        }
        group.notify([&runs] { ++runs; });
        threads.clear();
        EXPECT_EQ(runs, 1);
    }
}

}  // namespace
}  // namespace stowpocket
