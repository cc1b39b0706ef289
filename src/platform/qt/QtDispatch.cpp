// SPDX-License-Identifier: MIT
#include "platform/qt/QtDispatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

#include <atomic>
#include <deque>
#include <future>
#include <mutex>
#include <utility>

namespace stowpocket {
namespace {

constexpr std::chrono::milliseconds maxExitDelay{500};

class QtScheduledWork : public ScheduledWork {
public:
    QtScheduledWork(std::chrono::milliseconds delay, bool repeats, Dispatch::Work work)
        : interval_(delay), timer_(new QTimer) {
        timer_->setSingleShot(!repeats);
        QObject::connect(timer_, &QTimer::timeout, [timer = timer_, delay, work = std::move(work)] {
            // After a pause the first interval is shorter than the following ones.
            if (timer->intervalAsDuration() != delay)
                timer->start(delay);
            work();
        });
        timer_->start(delay);
    }
    QtScheduledWork(const QtScheduledWork&) = delete;
    QtScheduledWork& operator=(const QtScheduledWork&) = delete;
    ~QtScheduledWork() override {
        timer_->stop();
        timer_->deleteLater();  // not immediately: this may run in its own timeout
    }

    void pause() override { timer_->stop(); }
    void resume() override {
        if (!timer_->isActive())
            timer_->start(interval_ -
                          std::chrono::floor<std::chrono::milliseconds>(Clock::now() - start_) % interval_);
    }

private:
    using Clock = std::chrono::steady_clock;

    const Clock::time_point start_ = Clock::now();
    const std::chrono::milliseconds interval_;
    QTimer* const timer_;
};

/// Work waiting in order; whoever holds `running` runs it.
struct SerialState {
    std::mutex running;
    std::mutex waitingMutex;
    std::deque<Dispatch::Work> waiting;
    /// Whether a thread will run the waiting work.
    bool hasThread = false;

    /// Returns true if a thread must be started for it.
    [[nodiscard]] bool push(Dispatch::Work work) {
        const std::lock_guard lock(waitingMutex);
        waiting.push_back(std::move(work));
        return !std::exchange(hasThread, true);
    }
    /// Returns an empty function if nothing waits; the calling thread then ends.
    Dispatch::Work pop() {
        const std::lock_guard lock(waitingMutex);
        hasThread = hasThread && !waiting.empty();
        if (waiting.empty())
            return {};
        Dispatch::Work work = std::move(waiting.front());
        waiting.pop_front();
        return work;
    }
    /// Call with `running` held.
    void drain() {
        while (const Dispatch::Work work = pop())
            work();
    }
};

class ThreadSerialQueue : public SerialQueue {
public:
    /// `threads` can give each queue a thread.
    ThreadSerialQueue(WorkerThreads& threads, std::string label) : threads_(threads), label_(std::move(label)) {}

    void sync(const std::function<void()>& work) override {
        const std::lock_guard lock(state_->running);
        state_->drain();
        work();
    }
    void async(std::function<void()> work) override {
        if (state_->push(std::move(work)))
            threads_.start([state = state_] {
                const std::lock_guard lock(state->running);
                state->drain();
            });
    }
    [[nodiscard]] bool await(std::function<void()> work, std::chrono::milliseconds patience) override {
        const auto isDone = std::make_shared<std::promise<void>>();
        const std::future<void> done = isDone->get_future();
        async([work = std::move(work), isDone] {
            work();
            isDone->set_value();
        });
        return done.wait_for(patience) == std::future_status::ready;
    }
    [[nodiscard]] std::string label() const override { return label_; }

private:
    WorkerThreads& threads_;
    const std::string label_;
    const std::shared_ptr<SerialState> state_ = std::make_shared<SerialState>();
};

class WorkEvent : public QEvent {
public:
    explicit WorkEvent(std::function<void()> work) : QEvent(workType()), work_(std::move(work)) {
        isWhole_.store(true, std::memory_order_release);
    }
    void run() const {
        if (isWhole_.load(std::memory_order_acquire))
            work_();
    }

    static Type workType() {
        static const auto registered = static_cast<Type>(registerEventType());
        return registered;
    }

private:
    const std::function<void()> work_;
    /// True once it can be read. Orders the two threads for thread sanitizers, which see no lock of Qt's queue.
    std::atomic<bool> isWhole_ = false;
};

}  // namespace

void WorkQueue::post(std::function<void()> work) {
    QCoreApplication::postEvent(this, new WorkEvent(std::move(work)));
}

bool WorkQueue::event(QEvent* event) {
    if (event->type() != WorkEvent::workType())
        return QObject::event(event);
    static_cast<const WorkEvent*>(event)->run();
    return true;
}

bool QtDispatch::finish() {
    threads_.clear();
    idleThread_.clear();
    const auto deadline = WorkerThreads::Clock::now() + maxExitDelay;
    const bool queuesEnded = queueThreads_.finish(deadline);
    return threads_.finish(deadline) && idleThread_.finish(deadline) && queuesEnded;
}

void QtDispatch::async(Work work) {
    mainQueue_.post(std::move(work));
}

std::unique_ptr<ScheduledWork> QtDispatch::after(std::chrono::milliseconds delay, Work work) {
    return std::make_unique<QtScheduledWork>(delay, false, std::move(work));
}

std::unique_ptr<ScheduledWork> QtDispatch::every(std::chrono::milliseconds interval, Work work) {
    return std::make_unique<QtScheduledWork>(interval, true, std::move(work));
}

void QtDispatch::background(Work work) {
    threads_.start(std::move(work));
}

void QtDispatch::whenIdle(Work work) {
    idleThread_.start(std::move(work));
}

bool QtDispatch::runWait(const std::function<bool()>& wait) {
    return threads_.runWait(wait);
}

std::unique_ptr<SerialQueue> QtDispatch::serialQueue(std::string label) {
    return std::make_unique<ThreadSerialQueue>(queueThreads_, std::move(label));
}

void OneTimeEvent::occur() {
    hasOccurred_ = true;
    for (std::function<void()>& work : std::exchange(waiting_, {}))
        runSoon(std::move(work));
}

void OneTimeEvent::whenOccurred(std::function<void()> work) {
    if (hasOccurred_)
        runSoon(std::move(work));
    else
        waiting_.push_back(std::move(work));
}

/// A timer runs after the events that the window system has already sent; a posted call would overtake them.
void OneTimeEvent::runSoon(std::function<void()> work) {
    QTimer::singleShot(std::chrono::milliseconds(0), &context_, std::move(work));
}

}  // namespace stowpocket
