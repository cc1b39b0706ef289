// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"

#include <deque>
#include <list>
#include <string>
#include <vector>

namespace stowpocket {

/// Everything that would run later or elsewhere waits here until the test lets it run, on a virtual clock.
class FakeDispatch : public Dispatch, public Clock {
public:
    void async(Work work) override {
        ++wakeUps;
        mainQueue_.push_back(std::move(work));
    }
    [[nodiscard]] std::unique_ptr<ScheduledWork> after(std::chrono::milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> every(std::chrono::milliseconds interval, Work work) override;
    void background(Work work) override { backgroundQueue_.push_back(std::move(work)); }
    void whenIdle(Work work) override {
        ++idleWork;
        background(std::move(work));
    }
    [[nodiscard]] std::unique_ptr<SerialQueue> serialQueue(std::string label) override;

    /// How often work was given that nobody waits for.
    int idleWork = 0;

    [[nodiscard]] Date now() const override { return Date(now_); }

    /// Runs what waits on the main queue, and what that adds to it.
    void runMain();
    /// Runs the background work that waits now; its answers stay on the main queue.
    void runBackground();
    /// Runs both until nothing waits.
    void runAll();
    /// Lets the time pass: timers fire in their order and the main queue runs in between.
    void advance(std::chrono::milliseconds time);

    [[nodiscard]] std::size_t backgroundCount() const { return backgroundQueue_.size(); }
    [[nodiscard]] std::size_t scheduledCount() const { return timers_.size(); }
    /// How often a timer ran, or work was brought to the main queue: what a program at rest wakes up for.
    int wakeUps = 0;
    std::vector<std::string> queueLabels;
    /// How often somebody waited for work of a queue.
    int queuedWork = 0;
    /// Whoever waits for work of a queue waits in vain, and for how long at most.
    bool queuesHang = false;
    std::chrono::milliseconds longestWait{0};

private:
    struct Timer {
        std::chrono::microseconds due;
        std::chrono::microseconds interval;  ///< zero when it fires once
        Work work;
        bool isPaused = false;
    };
    class Scheduled;

    std::unique_ptr<ScheduledWork> schedule(std::chrono::milliseconds delay, std::chrono::milliseconds interval,
                                            Work work);

    std::chrono::microseconds now_ = std::chrono::seconds(1'700'000'000);
    std::deque<Work> mainQueue_;
    std::deque<Work> backgroundQueue_;
    std::list<std::shared_ptr<Timer>> timers_;
};

}  // namespace stowpocket
