// SPDX-License-Identifier: MIT
#include "platform/qt/WorkerThreads.h"

#ifdef __APPLE__
#include <pthread/qos.h>
#else
#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#endif

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace stowpocket {

namespace {

using Priority = WorkerThreads::Priority;

#ifdef __APPLE__
void lowerOwnPriority(Priority priority) {
    ::pthread_set_qos_class_self_np(priority == Priority::idle ? QOS_CLASS_BACKGROUND : QOS_CLASS_UTILITY, 0);
}
#else
/// What nice(1) gives a program: a tenth of the time where others want it all.
constexpr int lowNiceness = 10;

/// All of this is the thread's alone. Batch work takes the processor from nobody when it wakes.
void lowerOwnPriority(Priority priority) {
    const sched_param none{};
    ::pthread_setschedparam(::pthread_self(), priority == Priority::idle ? SCHED_IDLE : SCHED_BATCH, &none);
    if (priority == Priority::low)
        ::setpriority(PRIO_PROCESS, 0, lowNiceness);
}
#endif

}  // namespace

/// Everything is guarded by `mutex`. Conditions are told after it was released, so that whoever wakes finds it free.
struct WorkerThreads::State : std::enable_shared_from_this<State> {
    State(int limit, std::chrono::milliseconds patience, Priority given)
        : maxThreads(limit), expiry(patience), priority(given) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    /// For threads in `ended`, which have nothing left to do.
    static void join(std::vector<std::thread>& threads) {
        for (std::thread& thread : threads)
            thread.join();
    }

    [[nodiscard]] bool needsThread() const {
        return idle < waiting.size() && static_cast<int>(running.size()) - pausing < maxThreads;
    }
    /// Where the system gives no thread, the work waits for the next one.
    void startThread() {
        try {
            std::thread thread([self = shared_from_this()] { self->run(); });
            const std::thread::id id = thread.get_id();
            running.emplace(id, std::move(thread));
        } catch (const std::system_error&) {
        }
    }
    void run() {
        if (priority != Priority::normal)
            lowerOwnPriority(priority);
        std::unique_lock lock(mutex);
        while (waitForWork(lock)) {
            Work work = std::move(waiting.front());
            waiting.pop_front();
            lock.unlock();
            work();
            work = {};
            lock.lock();
        }
        // Gone from the list only if this thread was left behind.
        if (auto self = running.extract(std::this_thread::get_id()))
            ended.push_back(std::move(self.mapped()));
        lock.unlock();
        threadEnded.notify_all();
    }
    [[nodiscard]] bool waitForWork(std::unique_lock<std::mutex>& lock) {
        ++idle;
        hasWork.wait_for(lock, expiry, [this] { return !waiting.empty() || isEnding; });
        --idle;
        return !waiting.empty();
    }

    const int maxThreads;
    const std::chrono::milliseconds expiry;
    const Priority priority;
    std::mutex mutex;
    std::condition_variable hasWork;
    std::condition_variable threadEnded;
    std::deque<Work> waiting;
    std::map<std::thread::id, std::thread> running;
    std::vector<std::thread> ended;
    std::size_t idle = 0;
    /// Threads in `runWait`.
    int pausing = 0;
    bool isEnding = false;
};

WorkerThreads::WorkerThreads(int maxThreads, std::chrono::milliseconds expiry, Priority priority)
    : state_(std::make_shared<State>(maxThreads, expiry, priority)) {}

WorkerThreads::~WorkerThreads() {
    clear();
    static_cast<void>(finish(Clock::now()));
    std::vector<std::thread> ended;
    {
        const std::lock_guard lock(state_->mutex);
        for (auto& [id, thread] : state_->running)
            thread.detach();
        state_->running.clear();
        ended.swap(state_->ended);
    }
    State::join(ended);
}

void WorkerThreads::start(Work work) {
    std::vector<std::thread> ended;
    {
        const std::lock_guard lock(state_->mutex);
        state_->waiting.push_back(std::move(work));
        ended.swap(state_->ended);
        if (state_->needsThread())
            state_->startThread();
    }
    state_->hasWork.notify_one();
    State::join(ended);
}

void WorkerThreads::clear() {
    std::deque<Work> dropped;
    const std::lock_guard lock(state_->mutex);
    dropped.swap(state_->waiting);
}

bool WorkerThreads::finish(Clock::time_point deadline) {
    std::vector<std::thread> ended;
    bool isOver = false;
    {
        std::unique_lock lock(state_->mutex);
        state_->isEnding = true;
        state_->hasWork.notify_all();
        isOver = state_->threadEnded.wait_until(lock, deadline, [this] { return state_->running.empty(); });
        state_->isEnding = false;
        ended.swap(state_->ended);
    }
    State::join(ended);
    return isOver;
}

bool WorkerThreads::runWait(const std::function<bool()>& wait) {
    {
        const std::lock_guard lock(state_->mutex);
        ++state_->pausing;
        if (state_->needsThread())
            state_->startThread();
    }
    const bool answer = wait();
    const std::lock_guard lock(state_->mutex);
    --state_->pausing;
    return answer;
}

}  // namespace stowpocket
