// SPDX-License-Identifier: MIT
#include "foundation/Signal.h"
#include "foundation/NotificationCenter.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace stowpocket {
namespace {

TEST(SignalTest, callsItsSlotsInOrderUntilTheyLeave) {
    Signal<const std::string&> signal;
    std::string heard;
    auto first = signal.connect([&](const std::string& text) { heard += "1" + text; });
    {
        const auto second = signal.connect([&](const std::string& text) { heard += "2" + text; });
        signal.emit("a");
    }
    signal.emit("b");
    first.reset();
    signal.emit("c");
    EXPECT_EQ(heard, "1a2a1b");
}

TEST(SignalTest, aSlotMayDisconnectItselfAndOthers) {
    Signal<> signal;
    std::string heard;
    Subscription first;
    Subscription second;
    first = signal.connect([&] {
        heard += "1";
        first.reset();
        second.reset();
        heard += "!";
    });
    second = signal.connect([&] { heard += "2"; });
    const auto third = signal.connect([&] { heard += "3"; });
    signal.emit();
    signal.emit();
    EXPECT_EQ(heard, "1!33");
}

TEST(SignalTest, aSlotConnectedDuringAnEmitWaitsForTheNext) {
    Signal<> signal;
    int late = 0;
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(signal.connect([&] { subscriptions.push_back(signal.connect([&late] { ++late; })); }));
    signal.emit();
    EXPECT_EQ(late, 0);
    signal.emit();
    EXPECT_EQ(late, 1);
}

TEST(SignalTest, aSlotMayEmitAgain) {
    Signal<int> signal;
    std::string heard;
    const auto first = signal.connect([&](int depth) {
        heard += std::to_string(depth);
        if (depth < 2)
            signal.emit(depth + 1);
    });
    signal.emit(0);
    EXPECT_EQ(heard, "012");
}

TEST(SignalTest, aSlotMayDestroyTheSignal) {
    auto signal = std::make_unique<Signal<>>();
    int after = 0;
    const auto first = signal->connect([&] { signal.reset(); });
    const auto second = signal->connect([&] { ++after; });
    signal->emit();
    EXPECT_EQ(after, 0);
}

TEST(SignalTest, aThrowingSlotDoesNotJamIt) {
    Signal<> signal;
    int calls = 0;
    bool throws = true;
    auto leaving = signal.connect([] {});
    const auto thrower = signal.connect([&] {
        leaving.reset();
        if (std::exchange(throws, false))
            throw std::runtime_error("slot");
    });
    const auto counter = signal.connect([&] { ++calls; });
    EXPECT_THROW(signal.emit(), std::runtime_error);
    signal.emit();
    EXPECT_EQ(calls, 1);
}

TEST(SignalTest, releasesWhatADisconnectedSlotHeld) {
    Signal<> signal;
    auto held = std::make_shared<int>(1);
    auto subscription = signal.connect([held] {});
    subscription.reset();
    EXPECT_EQ(held.use_count(), 1);
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
