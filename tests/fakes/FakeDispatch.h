// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"

#include <algorithm>
#include <deque>
#include <list>
#include <utility>

namespace stowpocket {

/// Everything that would run later or elsewhere waits here until the test lets it run, on a virtual clock.
struct FakeDispatch : Dispatch, Clock {
    void async(Work work) override {
        ++wakeUps;
        mainQueue_.push_back(std::move(work));
    }
    [[nodiscard]] std::unique_ptr<ScheduledWork> after(std::chrono::milliseconds delay, Work work) override {
        return schedule(delay, {}, std::move(work));
    }
    [[nodiscard]] std::unique_ptr<ScheduledWork> every(std::chrono::milliseconds interval, Work work) override {
        return schedule(interval, interval, std::move(work));
    }
    void background(Work work) override { backgroundQueue_.push_back(std::move(work)); }
    void whenIdle(Work work) override {
        ++idleWork;
        background(std::move(work));
    }
    [[nodiscard]] std::unique_ptr<SerialQueue> serialQueue(std::string label) override {
        return std::make_unique<Queue>(*this, std::move(label));
    }
    [[nodiscard]] Date now() const override { return Date(now_); }

    /// Runs what waits on the main queue, and what that adds to it.
    void runMain() {
        while (runNext(mainQueue_)) {
        }
    }
    /// Runs the background work that waits now; its answers stay on the main queue.
    void runBackground() {
        for (const Work& work : std::exchange(backgroundQueue_, {}))
            work();
    }
    /// Runs both until nothing waits.
    void runAll() {
        while (!mainQueue_.empty() || !backgroundQueue_.empty()) {
            runMain();
            runBackground();
        }
    }
    /// Lets the time pass: timers fire in their order and the main queue runs in between.
    void advance(std::chrono::milliseconds time) {
        const auto end = now_ + time;
        for (;;) {
            const auto next = std::ranges::min_element(timers_, {}, [](const auto& timer) { return timer->due; });
            if (next == timers_.end() || (*next)->due > end)
                break;
            const std::shared_ptr<Timer> timer = *next;
            now_ = timer->due;
            if (timer->interval.count() == 0)
                timers_.erase(next);
            else
                timer->due += timer->interval;
            if (timer->isPaused)
                continue;
            ++wakeUps;
            timer->work();
            runMain();
        }
        now_ = end;
    }

    [[nodiscard]] std::size_t backgroundCount() const { return backgroundQueue_.size(); }
    [[nodiscard]] std::size_t scheduledCount() const { return timers_.size(); }
    /// How often a timer ran, or work was brought to the main queue: what a program at rest wakes up for.
    int wakeUps = 0;
    /// How often work was given that nobody waits for.
    int idleWork = 0;
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

    struct Scheduled : ScheduledWork {
        Scheduled(FakeDispatch& dispatch, std::shared_ptr<Timer> timer)
            : dispatch_(dispatch), timer_(std::move(timer)) {}
        ~Scheduled() override { dispatch_.timers_.remove(timer_); }
        void pause() override { timer_->isPaused = true; }
        void resume() override { timer_->isPaused = false; }

    private:
        FakeDispatch& dispatch_;
        std::shared_ptr<Timer> timer_;
    };

    struct Queue : SerialQueue {
        Queue(FakeDispatch& dispatch, std::string label) : dispatch_(dispatch), label_(std::move(label)) {}
        void sync(const std::function<void()>& work) override {
            while (runNext(*waiting_)) {
            }
            work();
        }
        void async(std::function<void()> work) override {
            waiting_->push_back(std::move(work));
            dispatch_.background([waiting = waiting_] { runNext(*waiting); });
        }
        [[nodiscard]] bool await(std::function<void()> work, std::chrono::milliseconds patience) override {
            dispatch_.longestWait = std::max(dispatch_.longestWait, patience);
            if (!dispatch_.queuesHang)
                sync(work);
            return !dispatch_.queuesHang;
        }
        [[nodiscard]] std::string label() const override { return label_; }

    private:
        FakeDispatch& dispatch_;
        const std::string label_;
        const std::shared_ptr<std::deque<Work>> waiting_ = std::make_shared<std::deque<Work>>();
    };

    static bool runNext(std::deque<Work>& waiting) {
        if (waiting.empty())
            return false;
        const Work work = std::move(waiting.front());
        waiting.pop_front();
        work();
        return true;
    }
    std::unique_ptr<ScheduledWork> schedule(std::chrono::milliseconds delay, std::chrono::milliseconds interval,
                                            Work work) {
        timers_.push_back(std::make_shared<Timer>(Timer{now_ + delay, interval, std::move(work)}));
        return std::make_unique<Scheduled>(*this, timers_.back());
    }

    std::chrono::microseconds now_ = std::chrono::seconds(1'700'000'000);
    std::deque<Work> mainQueue_;
    std::deque<Work> backgroundQueue_;
    std::list<std::shared_ptr<Timer>> timers_;
};

}  // namespace stowpocket
