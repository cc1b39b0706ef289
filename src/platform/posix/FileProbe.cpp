// SPDX-License-Identifier: MIT
#include "platform/posix/FileProbe.h"

#include <algorithm>
#include <condition_variable>

namespace stowpocket {

/// State shared by the asking thread and the thread that looks.
struct FileProbe::Call {
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

bool FileProbe::waitFor(const std::string& mount, const std::function<void()>& work) {
    if (std::this_thread::get_id() == mainThread_)
        return waitUntil(mount, work, limits_.main);
    return runWait_([&] { return waitUntil(mount, work, limits_.background); });
}

bool FileProbe::waitUntil(const std::string& mount, const std::function<void()>& work,
                          std::chrono::milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
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
        if (!call->waitUntil(std::min(end, call->start + limit)))
            return false;
    }
}

}  // namespace stowpocket
