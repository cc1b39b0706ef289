// SPDX-License-Identifier: MIT
#include "foundation/Signal.h"

#include <gtest/gtest.h>

#include <string>

namespace stowpocket {
namespace {

TEST(SignalTest, aSlotMayDisconnectItselfAndOthers) {
    Signal<const std::string&> signal;
    std::string heard;
    auto held = std::make_shared<int>(1);
    Subscription first;
    Subscription second;
    first = signal.connect([&, held](const std::string& text) {
        heard += "1" + text;
        first.reset();
        second.reset();
        heard += "!";
    });
    second = signal.connect([&](const std::string& text) { heard += "2" + text; });
    const auto third = signal.connect([&](const std::string& text) { heard += "3" + text; });
    signal.emit("a");
    signal.emit("b");
    EXPECT_EQ(heard, "1a!3a3b");
    EXPECT_EQ(held.use_count(), 1) << "what a slot held is released";
}

TEST(SignalTest, aSlotMayEmitAgainAndOneConnectedMeanwhileWaitsForTheNext) {
    Signal<int> signal;
    std::string heard;
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(signal.connect([&](int depth) {
        heard += std::to_string(depth);
        if (depth == 1)
            signal.emit(2);
        if (depth == 0)
            subscriptions.push_back(signal.connect([&heard](int) { heard += "late"; }));
    }));
    signal.emit(0);
    EXPECT_EQ(heard, "0");
    signal.emit(1);
    EXPECT_EQ(heard, "012latelate");
}

TEST(SignalTest, aSlotMayDestroyTheSignal) {
    auto signal = std::make_unique<Signal<>>();
    int after = 0;
    const auto first = signal->connect([&] { signal.reset(); });
    const auto second = signal->connect([&] { ++after; });
    signal->emit();
    EXPECT_EQ(after, 0);
}

TEST(NotificationCenterTest, reachesTheObserversOfThatNameOnly) {
    NotificationCenter center;
    int one = 0;
    int other = 0;
    const auto first = center.observe("One", [&] { ++one; });
    auto second = center.observe("Other", [&] { ++other; });
    center.post("One");
    center.post("Nobody's");
    second.reset();
    center.post("Other");
    EXPECT_EQ(one, 1);
    EXPECT_EQ(other, 0);
}

}  // namespace
}  // namespace stowpocket
