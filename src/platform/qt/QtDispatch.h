// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/WorkerThreads.h"
#include "services/Dispatch.h"

#include <QObject>

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

/// Work that runs in order on the thread of this object, and is destroyed there too: `QMetaObject::invokeMethod` may
/// leave its end to the thread that called it, together with all that it owns.
class WorkQueue : public QObject {
public:
    /// Any thread.
    void post(std::function<void()> work);

protected:
    bool event(QEvent* event) override;
};

/// Dispatch on the Qt event loop, a bounded number of threads, and one thread for each queue that has work. Create it
/// on the main thread, after the application.
class QtDispatch : public Dispatch {
public:
    QtDispatch() = default;
    QtDispatch(const QtDispatch&) = delete;
    QtDispatch& operator=(const QtDispatch&) = delete;
    /// Finishes. A thread blocked by a dead mount is left behind, so that it cannot keep the program from exiting.
    ~QtDispatch() override { static_cast<void>(finish()); }

    /// Drops background work that has not started and gives the rest a moment to finish. Returns false if some of it
    /// hangs; then everything it uses must stay alive, including this dispatch.
    [[nodiscard]] bool finish();

    void async(Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> after(std::chrono::milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> every(std::chrono::milliseconds interval, Work work) override;
    void background(Work work) override;
    void whenIdle(Work work) override;
    [[nodiscard]] std::unique_ptr<SerialQueue> serialQueue(std::string label) override;

    /// Calls `wait` on a background thread. That thread does not count towards the limit while it waits.
    [[nodiscard]] bool runWait(const std::function<bool()>& wait);

private:
    /// Enough for a refresh and a batch at the same time.
    static constexpr int maxThreads = 4;
    static constexpr std::chrono::seconds expiry{30};

    WorkQueue mainQueue_;
    WorkerThreads threads_{maxThreads, expiry};
    WorkerThreads idleThread_{1, expiry, WorkerThreads::Priority::idle};
    /// A queue is idle most of the time and needs no thread then.
    WorkerThreads queueThreads_{WorkerThreads::unlimited, std::chrono::milliseconds(0)};
};

/// An event that happens once while the program runs, and the work that waits for it. The work runs in its own turn
/// of the event loop, after the caller of `occur` has finished. Main thread.
class OneTimeEvent {
public:
    void occur();
    /// `work` is dropped if this object is destroyed first.
    void whenOccurred(std::function<void()> work);

private:
    void runSoon(std::function<void()> work);

    bool hasOccurred_ = false;
    std::vector<std::function<void()>> waiting_;
    QObject context_;
};

/// Deletes services once the background work of their member `dispatch` has ended. Work that hangs keeps them alive.
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
