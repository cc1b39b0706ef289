// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"

#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <vector>

namespace stowpocket {

/// The machine's own clock.
class SystemClock : public Clock {
public:
    [[nodiscard]] Date now() const override {
        return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
    }
};

/// Dispatch on the Qt event loop, a bounded pool of threads and a thread for each queue that has work. Made on the
/// main thread, after the application.
class QtDispatch : public Dispatch {
public:
    QtDispatch();
    /// Finishes. A thread that waits for a dead mount is left behind, so that it cannot keep the program from ending.
    ~QtDispatch() override;

    /// Drops background work that has not begun and gives the rest a moment to end. False when some of it hangs: then
    /// everything that it uses has to stay, this dispatch too.
    [[nodiscard]] bool finish();

    void async(Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> after(std::chrono::milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> every(std::chrono::milliseconds interval, Work work) override;
    void background(Work work) override;
    void whenIdle(Work work) override;
    [[nodiscard]] std::unique_ptr<SerialQueue> serialQueue(std::string label) override;

    /// Calls `wait` on a thread of background work, which does not count as one meanwhile: another takes its place.
    [[nodiscard]] bool runWait(const std::function<bool()>& wait);

private:
    QObject mainQueue_;
    std::unique_ptr<QThreadPool> pool_;
    /// Has no thread before its first work.
    std::unique_ptr<QThreadPool> idlePool_;
    std::unique_ptr<QThreadPool> queueThreads_;
};

/// Something that happens once while the program runs, and what waits for it. That runs in a turn of the event loop
/// of its own, after the work of whoever tells that it happened. Main thread.
class OneTimeEvent {
public:
    void occur();
    /// `work` is forgotten when the milestone goes first.
    void whenOccurred(std::function<void()> work);

private:
    void runSoon(std::function<void()> work);

    bool hasOccurred_ = false;
    std::vector<std::function<void()>> waiting_;
    QObject context_;
};

/// Deletes services once the background work of their member `dispatch` is over, and leaves them to work that hangs.
struct DeleteAfterBackgroundWork {
    template <class Services>
    void operator()(Services* services) const {
        if (services->dispatch.finish())
            delete services;
    }
};

/// Owns services together with the background work that uses them.
template <class Services>
using OutlivesBackgroundWork = std::unique_ptr<Services, DeleteAfterBackgroundWork>;

}  // namespace stowpocket
