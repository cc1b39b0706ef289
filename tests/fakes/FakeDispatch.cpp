// SPDX-License-Identifier: MIT
#include "fakes/FakeDispatch.h"

#include <algorithm>

namespace stowpocket {

class FakeDispatch::Scheduled : public ScheduledWork {
public:
    Scheduled(FakeDispatch& dispatch, std::shared_ptr<Timer> timer) : dispatch_(dispatch), timer_(std::move(timer)) {}
    ~Scheduled() override { dispatch_.timers_.remove(timer_); }
    void pause() override { timer_->isPaused = true; }
    void resume() override { timer_->isPaused = false; }

private:
    FakeDispatch& dispatch_;
    std::shared_ptr<Timer> timer_;
};

namespace {

class FakeSerialQueue : public SerialQueue {
public:
    FakeSerialQueue(FakeDispatch& dispatch, std::string label) : dispatch_(dispatch), label_(std::move(label)) {}
    void sync(const std::function<void()>& work) override {
        ++dispatch_.queuedWork;
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
        if (dispatch_.queuesHang)
            return false;
        sync(work);
        return true;
    }
    [[nodiscard]] std::string label() const override { return label_; }

private:
    using Waiting = std::deque<Dispatch::Work>;
    static bool runNext(Waiting& waiting) {
        if (waiting.empty())
            return false;
        const Dispatch::Work work = std::move(waiting.front());
        waiting.pop_front();
        work();
        return true;
    }

    FakeDispatch& dispatch_;
    const std::string label_;
    const std::shared_ptr<Waiting> waiting_ = std::make_shared<Waiting>();
};

}  // namespace

std::unique_ptr<ScheduledWork> FakeDispatch::after(std::chrono::milliseconds delay, Work work) {
    return schedule(delay, {}, std::move(work));
}

std::unique_ptr<ScheduledWork> FakeDispatch::every(std::chrono::milliseconds interval, Work work) {
    return schedule(interval, interval, std::move(work));
}

std::unique_ptr<ScheduledWork> FakeDispatch::schedule(std::chrono::milliseconds delay,
                                                      std::chrono::milliseconds interval, Work work) {
    timers_.push_back(std::make_shared<Timer>(Timer{now_ + delay, interval, std::move(work)}));
    return std::make_unique<Scheduled>(*this, timers_.back());
}

std::unique_ptr<SerialQueue> FakeDispatch::serialQueue(std::string label) {
    queueLabels.push_back(label);
    return std::make_unique<FakeSerialQueue>(*this, std::move(label));
}

void FakeDispatch::runMain() {
    while (!mainQueue_.empty()) {
        const Work work = std::move(mainQueue_.front());
        mainQueue_.pop_front();
        work();
    }
}

void FakeDispatch::runBackground() {
    std::deque<Work> waiting;
    waiting.swap(backgroundQueue_);
    for (const Work& work : waiting)
        work();
}

void FakeDispatch::runAll() {
    while (!mainQueue_.empty() || !backgroundQueue_.empty()) {
        runMain();
        runBackground();
    }
}

void FakeDispatch::advance(std::chrono::milliseconds time) {
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

}  // namespace stowpocket
