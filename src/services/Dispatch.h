// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace stowpocket {

/// Tells the civil time. May be asked on any thread.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Date now() const = 0;
};

/// Runs one block at a time, in the order given. Work that waits elsewhere, in the background or in another queue,
/// cannot keep it waiting.
class SerialQueue {
public:
    virtual ~SerialQueue() = default;
    /// Runs `work` on the calling thread, after and before any other block of this queue. Never called from one.
    virtual void sync(const std::function<void()>& work) = 0;
    /// Runs `work` later on another thread, even if the queue is destroyed before.
    virtual void async(std::function<void()> work) = 0;
    /// Runs `work` as `async` does and waits for its end, no longer than `patience`. True when it has ended; else it
    /// may still do so later.
    [[nodiscard]] virtual bool await(std::function<void()> work, std::chrono::milliseconds patience) = 0;
    [[nodiscard]] virtual std::string label() const = 0;
};

/// Work that will run later unless this is destroyed first. Destroying it from inside that work is allowed.
class ScheduledWork {
public:
    virtual ~ScheduledWork() = default;
    /// Passes over the times that repeated work would run at, without waking anything up for them.
    virtual void pause() = 0;
    /// Goes on at the times that the work would run at had it never paused.
    virtual void resume() = 0;
};

/// The one way to run something later or elsewhere. The program's state lives on the main thread; slow work goes to
/// the background as a function of values and brings its answer back with `async`. `async`, `background`, `whenIdle`
/// and `serialQueue` may be called on any thread, the rest on the main thread only.
class Dispatch {
public:
    using Work = std::function<void()>;

    virtual ~Dispatch() = default;
    /// Runs `work` on the main thread, after what is already waiting there and never before this call returns.
    virtual void async(Work work) = 0;
    /// Runs `work` on the main thread once `delay` has passed.
    [[nodiscard]] virtual std::unique_ptr<ScheduledWork> after(std::chrono::milliseconds delay, Work work) = 0;
    /// Runs `work` on the main thread every `interval`, first after one interval, until the answer is destroyed.
    [[nodiscard]] virtual std::unique_ptr<ScheduledWork> every(std::chrono::milliseconds interval, Work work) = 0;
    /// Runs `work` on some other thread. Of work given together some may wait for some: the threads are bounded.
    virtual void background(Work work) = 0;
    /// The same for work that nobody waits for, on a thread of lowest priority.
    virtual void whenIdle(Work work) = 0;
    [[nodiscard]] virtual std::unique_ptr<SerialQueue> serialQueue(std::string label) = 0;
};

}  // namespace stowpocket
