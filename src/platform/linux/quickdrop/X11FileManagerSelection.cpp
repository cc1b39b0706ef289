// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/X11FileManagerSelection.h"

#include "platform/linux/quickdrop/X11QuickDropDesktop.h"
#include "services/Dispatch.h"

#include <QLoggingCategory>

#include <array>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(quickDropLog, "stowpocket.quickdrop")

}  // namespace

/// The thread and its connection. One counter wakes the thread for everything.
class X11FileManagerSelection::Worker {
public:
    using Answer = std::function<void(std::vector<FileURL>)>;

    Worker(std::unique_ptr<XcbSession> session, const X11ActiveWindow& windows, Answer answer)
        : desktop_(std::move(session), windows),
          answer_(std::move(answer)),
          wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
          thread_([this] { work(); }) {}
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() {
        isEnding_ = true;
        wake();
        // Ends whatever wait for the server the thread is in.
        shutdown(xcb_get_file_descriptor(desktop_.session().raw()), SHUT_RDWR);
        thread_.join();
        close(wakeUp_);
    }

    void start() { wake(); }
    /// False when the server is gone and the thread with it.
    [[nodiscard]] bool isWorking() const { return isWorking_; }

private:
    void wake() const {
        const std::uint64_t one = 1;
        [[maybe_unused]] const ssize_t result = write(wakeUp_, &one, sizeof one);
    }
    [[nodiscard]] bool wasWoken() const {
        std::uint64_t count = 0;
        return ::read(wakeUp_, &count, sizeof count) == sizeof count;
    }

    void work() {
        std::array<pollfd, 2> sources{
            {{xcb_get_file_descriptor(desktop_.session().raw()), POLLIN, 0}, {wakeUp_, POLLIN, 0}}};
        while (!isEnding_ && xcb_connection_has_error(desktop_.session().raw()) == 0) {
            if (wasWoken() && !isEnding_) {
                std::vector<FileURL> files = runQuickDrop(desktop_);
                desktop_.finish();
                answer_(std::move(files));
            }
            desktop_.serve();
            poll(sources.data(), sources.size(), -1);
        }
        isWorking_ = false;
        if (!isEnding_)
            answer_({});
    }

    X11QuickDropDesktop desktop_;
    const Answer answer_;
    const int wakeUp_;
    std::atomic<bool> isEnding_ = false;
    std::atomic<bool> isWorking_ = true;
    std::thread thread_;
};

X11FileManagerSelection::X11FileManagerSelection(Dispatch& dispatch, const X11Connection& connection)
    : dispatch_(dispatch), windows_(connection) {}

X11FileManagerSelection::~X11FileManagerSelection() = default;

bool X11FileManagerSelection::isKnown() const {
    return !isWaylandSession() || windows_.lastForeign() != x11None;
}

void X11FileManagerSelection::read(Completion completion) {
    if (completion_) {
        completion({});
        return;
    }
    if (!worker_ || !worker_->isWorking()) {
        std::unique_ptr<XcbSession> session = XcbSession::open();
        if (!session) {
            qCWarning(quickDropLog, "no connection to the X server for the file manager's selection");
            completion({});
            return;
        }
        auto answer = [&dispatch = dispatch_, self = std::weak_ptr(self_)](std::vector<FileURL> files) {
            dispatch.async([self, files = std::move(files)] {
                if (const auto selection = self.lock())
                    (*selection)->finished(files);
            });
        };
        worker_ = std::make_unique<Worker>(std::move(session), windows_, std::move(answer));
    }
    completion_ = std::move(completion);
    worker_->start();
}

void X11FileManagerSelection::finished(const std::vector<FileURL>& files) {
    if (const Completion completion = std::exchange(completion_, {}))
        completion(files);
}

}  // namespace stowpocket
