// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ThumbnailWorkers.h"

#include <mutex>

namespace stowpocket {
namespace {

constexpr int threadCount = 2;
constexpr int idleThreadExpiryMs = 2000;
constexpr int maxExitDelayMs = 500;

}  // namespace

/// The way back, which outlives the workers for the sake of threads that were left behind.
class ThumbnailWorkers::MainThread : public std::enable_shared_from_this<MainThread> {
public:
    explicit MainThread(Dispatch& dispatch) : dispatch_(&dispatch) {}

    void post(Answer answer) {
        const std::lock_guard lock(mutex_);
        if (dispatch_ == nullptr)
            return;
        dispatch_->async([self = shared_from_this(), answer = std::move(answer)] {
            if (self->isOpen())
                answer();
        });
    }
    void close() {
        const std::lock_guard lock(mutex_);
        dispatch_ = nullptr;
    }

private:
    bool isOpen() {
        const std::lock_guard lock(mutex_);
        return dispatch_ != nullptr;
    }

    std::mutex mutex_;
    Dispatch* dispatch_;
};

ThumbnailWorkers::ThumbnailWorkers(Dispatch& dispatch)
    : mainThread_(std::make_shared<MainThread>(dispatch)), pool_(std::make_unique<QThreadPool>()) {
    pool_->setMaxThreadCount(threadCount);
    pool_->setExpiryTimeout(idleThreadExpiryMs);
}

ThumbnailWorkers::~ThumbnailWorkers() {
    mainThread_->close();
    pool_->clear();
    if (!pool_->waitForDone(maxExitDelayMs))
        static_cast<void>(pool_.release());
}

void ThumbnailWorkers::run(std::function<Answer()> job) {
    pool_->start([mainThread = mainThread_, job = std::move(job)] { mainThread->post(job()); });
}

}  // namespace stowpocket
