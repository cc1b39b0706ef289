// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"

#include <QThreadPool>

#include <functional>
#include <memory>

namespace stowpocket {

/// Two threads of the thumbnails' own, so that files on a dead mount hold up nothing else of the program. They end
/// soon after the last job.
class ThumbnailWorkers {
public:
    /// What a job hands back, to be run on the main thread.
    using Answer = std::function<void()>;

    explicit ThumbnailWorkers(Dispatch& dispatch);
    /// No answer runs from here on. A thread that does not end soon is left behind.
    ~ThumbnailWorkers();

    /// Runs `job` on one of the threads, and what it answers on the main thread. Main thread.
    void run(std::function<Answer()> job);

private:
    class MainThread;

    std::shared_ptr<MainThread> mainThread_;
    std::unique_ptr<QThreadPool> pool_;
};

}  // namespace stowpocket
