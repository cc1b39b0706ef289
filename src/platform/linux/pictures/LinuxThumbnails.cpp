// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/LinuxThumbnails.h"

#include <QDBusConnection>

#include <mutex>

namespace stowpocket {
namespace {

constexpr int threadCount = 2;
constexpr std::chrono::seconds idleThreadExpiry{2};
constexpr std::chrono::milliseconds maxExitDelay{500};
constexpr std::chrono::seconds maxDecodeTime{3};
/// Far more than a shelf contains. Beyond it, the failures so far are forgotten and those files are tried once more.
constexpr std::size_t maxRememberedFailures = 4096;

}  // namespace

/// The connection to the main thread, which outlives the workers for the sake of threads that were left behind.
class ThumbnailWorkers::MainThread : public std::enable_shared_from_this<MainThread> {
public:
    explicit MainThread(Dispatch& dispatch) : dispatch_(&dispatch) {}

    void post(Answer answer) {
        const std::lock_guard lock(mutex_);
        if (dispatch_ == nullptr)
            return;
        // Takes no lock: the thread that posts may lose the processor to the main thread while it holds it.
        dispatch_->async([self = shared_from_this(), answer = std::move(answer)] {
            if (self->isOpen_)
                answer();
        });
    }
    void close() {
        isOpen_ = false;
        const std::lock_guard lock(mutex_);
        dispatch_ = nullptr;
    }

private:
    /// Main thread only.
    bool isOpen_ = true;
    std::mutex mutex_;
    Dispatch* dispatch_;
};

ThumbnailWorkers::ThumbnailWorkers(Dispatch& dispatch)
    : mainThread_(std::make_shared<MainThread>(dispatch)),
      threads_(threadCount, idleThreadExpiry, WorkerThreads::Priority::low) {}

ThumbnailWorkers::~ThumbnailWorkers() {
    mainThread_->close();
    threads_.clear();
    static_cast<void>(threads_.finish(WorkerThreads::Clock::now() + maxExitDelay));
}

void ThumbnailWorkers::run(std::function<Answer()> job) {
    threads_.start([mainThread = mainThread_, job = std::move(job)] { mainThread->post(job()); });
}

LinuxThumbnails::LinuxThumbnails(Dispatch& dispatch, std::string decoderExecutable)
    : LinuxThumbnails(dispatch, std::move(decoderExecutable), maxDecodeTime, DesktopThumbnailer::sessionBus) {}

LinuxThumbnails::LinuxThumbnails(Dispatch& dispatch, std::string decoderExecutable,
                                 std::chrono::milliseconds decodeLimit, DesktopThumbnailer::Connect connect)
    : local_(ImageDecoder(std::move(decoderExecutable), decodeLimit)),
      desktop_(dispatch, std::move(connect)),
      workers_(dispatch) {}

void LinuxThumbnails::generate(const ThumbnailRequest& request, Completion completion) {
    const Key key{request.fileURL, request.size.width, request.size.height, request.scale};
    const auto [place, isFirst] = waiting_.try_emplace(key, Waiting{request, {}});
    place->second.completions.push_back(std::move(completion));
    if (!isFirst)
        return;
    const auto failure = failures_.find(request.fileURL);
    const std::optional<FileState> failed =
        failure == failures_.end() ? std::nullopt : std::optional(failure->second);
    workers_.run([this, key, request, failed, local = local_]() -> ThumbnailWorkers::Answer {
        return [this, key, answer = local.make(request, failed)] { answered(key, answer); };
    });
}

void LinuxThumbnails::answered(const Key& key, const LocalThumbnail& answer) {
    if (answer.state && !answer.typeForDesktop.empty())
        askDesktop(key, *answer.state, answer.typeForDesktop);
    else
        finish(key, answer.state, answer.image);
}

void LinuxThumbnails::askDesktop(const Key& key, const FileState& state, const std::string& type) {
    const ThumbnailRequest& request = waiting_.at(key).request;
    desktop_.make({request.fileURL.string(), type, ThumbnailCache::sizeName(pixelSide(request))},
                  [this, key, state](bool isMade) {
                      if (isMade)
                          readCache(key, state);
                      else
                          finish(key, state, std::nullopt);
                  });
}

void LinuxThumbnails::readCache(const Key& key, const FileState& state) {
    workers_.run(
        [this, key, state, request = waiting_.at(key).request, local = local_]() -> ThumbnailWorkers::Answer {
            return [this, key, state, image = local.cached(request, state)] { finish(key, state, image); };
        });
}

void LinuxThumbnails::finish(const Key& key, const std::optional<FileState>& state,
                             const std::optional<Image>& image) {
    const auto finished = waiting_.extract(key);
    const auto& url = std::get<FileURL>(key);
    if (image)
        failures_.erase(url);
    else if (state) {
        if (failures_.size() >= maxRememberedFailures)
            failures_.clear();
        failures_.insert_or_assign(url, *state);
    }
    for (const Completion& completion : finished.mapped().completions)
        completion(image);
}

}  // namespace stowpocket
