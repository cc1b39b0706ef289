// SPDX-License-Identifier: MIT
#include "platform/posix/PatientProbe.h"

#include <condition_variable>
#include <mutex>

namespace stowpocket {

/// What the asking and the asked thread share.
struct PatientProbe::Call {
    void finish() {
        {
            const std::lock_guard lock(mutex);
            isDone = true;
        }
        done.notify_one();
    }
    bool wait(std::chrono::milliseconds patience) {
        std::unique_lock lock(mutex);
        return done.wait_for(lock, patience, [this] { return isDone; });
    }

    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
};

std::optional<std::string> PatientProbe::mountToMistrust(const std::string& path) const {
    return std::this_thread::get_id() == mainThread_ ? findMount_(path) : std::nullopt;
}

bool PatientProbe::waitFor(const std::string& mount, std::function<void()> work) {
    const auto earlier = givenUp_.find(mount);
    if (earlier != givenUp_.end()) {
        if (!earlier->second->wait({}))
            return false;
        givenUp_.erase(earlier);
    }
    const auto call = std::make_shared<Call>();
    std::thread([call, work = std::move(work)] {
        work();
        call->finish();
    }).detach();
    if (call->wait(patience_))
        return true;
    givenUp_.emplace(mount, call);
    return false;
}

}  // namespace stowpocket
