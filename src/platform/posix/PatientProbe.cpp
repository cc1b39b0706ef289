// SPDX-License-Identifier: MIT
#include "platform/posix/PatientProbe.h"

#include <algorithm>
#include <condition_variable>

namespace stowpocket {

/// What the asking and the asked thread share.
struct PatientProbe::Call {
    void finish() {
        {
            const std::lock_guard lock(mutex);
            isDone = true;
        }
        done.notify_all();
    }
    bool waitUntil(Clock::time_point end) {
        std::unique_lock lock(mutex);
        return done.wait_until(lock, end, [this] { return isDone; });
    }
    bool isOver() {
        const std::lock_guard lock(mutex);
        return isDone;
    }

    const Clock::time_point start = Clock::now();
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
};

bool PatientProbe::waitFor(const std::string& mount, const std::function<void()>& work) {
    if (std::this_thread::get_id() == mainThread_)
        return waitUntil(mount, work, patience_.main);
    return runWait_([&] { return waitUntil(mount, work, patience_.background); });
}

bool PatientProbe::waitUntil(const std::string& mount, const std::function<void()>& work,
                             std::chrono::milliseconds patience) {
    const Clock::time_point end = Clock::now() + patience;
    for (;;) {
        std::shared_ptr<Call> call;
        bool isOwn = false;
        {
            const std::lock_guard lock(mutex_);
            std::shared_ptr<Call>& latest = calls_[mount];
            isOwn = latest == nullptr || latest->isOver();
            if (isOwn)
                latest = std::make_shared<Call>();
            call = latest;
        }
        if (isOwn) {
            std::thread([call, work] {
                work();
                call->finish();
            }).detach();
            return call->waitUntil(end);
        }
        if (!call->waitUntil(std::min(end, call->start + patience)))
            return false;
    }
}

}  // namespace stowpocket
