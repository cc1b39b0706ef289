// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <limits>
#include <memory>

namespace stowpocket {

/// A bounded number of threads that run work in the order in which it came. They start when there is work and end
/// after a while without. A thread that hangs keeps nothing but itself alive, and can be left behind. QThreadPool
/// wakes its threads while it holds the lock that they want next, so that each wake-up takes three; here it takes
/// one.
class WorkerThreads {
public:
    using Work = std::function<void()>;
    using Clock = std::chrono::steady_clock;

    /// `low` threads, and the programs that they start, leave the processor to whatever the user waits for, the
    /// window system's server above all. `idle` threads run when nobody else wants the processor.
    enum class Priority { normal, low, idle };

    static constexpr int unlimited = std::numeric_limits<int>::max();

    /// A thread ends when it had no work for as long as `expiry`.
    WorkerThreads(int maxThreads, std::chrono::milliseconds expiry, Priority priority = Priority::normal);
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;
    /// Drops work that has not started. Threads that are still at work are left behind; work that may use anything
    /// else of the program must have ended before.
    ~WorkerThreads();

    /// Any thread.
    void start(Work work);
    /// Drops work that has not started. Any thread.
    void clear();
    /// Waits until there is no work and no thread left. Returns false when that took longer than until `deadline`.
    [[nodiscard]] bool finish(Clock::time_point deadline);
    /// Calls `wait` on one of the threads, which does not count towards the limit meanwhile.
    [[nodiscard]] bool runWait(const std::function<bool()>& wait);

private:
    struct State;

    /// Threads that were left behind use it too.
    std::shared_ptr<State> state_;
};

}  // namespace stowpocket
