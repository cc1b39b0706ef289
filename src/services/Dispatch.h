// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace stowpocket {

/// The civil time. Any thread.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Date now() const = 0;
};

/// Runs one block at a time, in order. Work in the background or in another queue cannot delay it.
class SerialQueue {
public:
    virtual ~SerialQueue() = default;
    /// Runs `work` on the calling thread, not at the same time as any other block of this queue. Must not be called
    /// from such a block.
    virtual void sync(const std::function<void()>& work) = 0;
    /// Runs `work` later on another thread, even if the queue is destroyed first.
    virtual void async(std::function<void()> work) = 0;
    /// Runs `work` as `async` does and waits until it has ended, for `patience` at most. If this returns false, it
    /// may still end later.
    [[nodiscard]] virtual bool await(std::function<void()> work, std::chrono::milliseconds patience) = 0;
    [[nodiscard]] virtual std::string label() const = 0;
};

/// Work that will run later unless this is destroyed first. Destroying it from inside that work is allowed.
class ScheduledWork {
public:
    virtual ~ScheduledWork() = default;
    /// Skips the times at which repeated work would run, without any wake-up.
    virtual void pause() = 0;
    /// Continues with the times at which the work would run if it had never paused.
    virtual void resume() = 0;
};

/// The only way to run something later or on another thread. The state of the program belongs to the main thread.
/// Slow work runs in the background on copies of values and returns its result with `async`. `async`, `background`,
/// `whenIdle` and `serialQueue` may be called on any thread, the other functions on the main thread only.
class Dispatch {
public:
    using Work = std::function<void()>;

    virtual ~Dispatch() = default;
    /// Runs `work` on the main thread, after all work already queued there and never before this call returns.
    virtual void async(Work work) = 0;
    /// Runs `work` on the main thread once `delay` has passed.
    [[nodiscard]] virtual std::unique_ptr<ScheduledWork> after(std::chrono::milliseconds delay, Work work) = 0;
    /// Runs `work` on the main thread every `interval`, first after one interval, until the result is destroyed.
    [[nodiscard]] virtual std::unique_ptr<ScheduledWork> every(std::chrono::milliseconds interval, Work work) = 0;
    /// Runs `work` on another thread. The number of threads is limited, so work may wait for other work.
    virtual void background(Work work) = 0;
    /// The same for work that is not urgent, on a thread of lowest priority.
    virtual void whenIdle(Work work) = 0;
    [[nodiscard]] virtual std::unique_ptr<SerialQueue> serialQueue(std::string label) = 0;
};

}  // namespace stowpocket
