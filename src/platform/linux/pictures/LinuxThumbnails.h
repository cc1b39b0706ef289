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
    WorkerThreads threads_;
};

/// Thumbnails from the cache that the desktop shares, from picture files decoded in a process of their own, or from
/// the desktop's thumbnailer, in this order. A file that gave none is not tried again before it changes.
class LinuxThumbnails : public Thumbnails {
public:
    /// `decoderExecutable` is the path of `stowpocket-decoder`.
    LinuxThumbnails(Dispatch& dispatch, std::string decoderExecutable);
    /// With another limit for the decoding of one file, and another bus.
    LinuxThumbnails(Dispatch& dispatch, std::string decoderExecutable, std::chrono::milliseconds decodeLimit,
                    DesktopThumbnailer::Connect connect);

    /// Completions run on the main thread, after this has returned.
    void generate(const ThumbnailRequest& request, Completion completion) override;

private:
    /// Requests that differ in nothing share one answer.
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
    // Last, so that they go first: both drop what they would call back.
    DesktopThumbnailer desktop_;
    ThumbnailWorkers workers_;
};

}  // namespace stowpocket
