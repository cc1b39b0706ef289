// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/pictures/DesktopThumbnailer.h"
#include "platform/linux/pictures/LocalThumbnailer.h"
#include "platform/qt/WorkerThreads.h"
#include "services/Dispatch.h"
#include "services/Pictures.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace stowpocket {

/// Two threads for thumbnails only, so that files on a dead mount block nothing else in the program. They end soon
/// after the last job.
class ThumbnailWorkers {
public:
    /// The result of a job, to be run on the main thread.
    using Answer = std::function<void()>;

    explicit ThumbnailWorkers(Dispatch& dispatch);
    /// No answer runs after this. A thread that does not end soon is left behind.
    ~ThumbnailWorkers();

    /// Runs `job` on one of the threads, and its answer on the main thread. Main thread.
    void run(std::function<Answer()> job);

private:
    class MainThread;

    std::shared_ptr<MainThread> mainThread_;
    WorkerThreads threads_;
};

/// Thumbnails from the cache that the desktop shares, from picture files decoded in a separate process, or from the
/// desktop's thumbnailer, in this order. A file without a thumbnail is not tried again before it changes.
class LinuxThumbnails : public Thumbnails {
public:
    /// `decoderExecutable` is the path of `stowpocket-decoder`.
    LinuxThumbnails(Dispatch& dispatch, std::string decoderExecutable);
    /// With a different limit for decoding one file, and a different bus.
    LinuxThumbnails(Dispatch& dispatch, std::string decoderExecutable, std::chrono::milliseconds decodeLimit,
                    DesktopThumbnailer::Connect connect);

    /// Completions run on the main thread, after this has returned.
    void generate(const ThumbnailRequest& request, Completion completion) override;

private:
    /// Equal requests share one answer.
    using Key = std::tuple<FileURL, double, double, double>;
    struct Waiting {
        ThumbnailRequest request;
        std::vector<Completion> completions;
    };

    void answered(const Key& key, const LocalThumbnail& answer);
    void askDesktop(const Key& key, const FileState& state, const std::string& type);
    void readCache(const Key& key, const FileState& state);
    void finish(const Key& key, const std::optional<FileState>& state, const std::optional<Image>& image);

    const LocalThumbnailer local_;
    std::map<Key, Waiting> waiting_;
    std::unordered_map<FileURL, FileState> failures_;
    // Last, so that they are destroyed first: both drop their callbacks.
    DesktopThumbnailer desktop_;
    ThumbnailWorkers workers_;
};

}  // namespace stowpocket
