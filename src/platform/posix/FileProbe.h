// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace stowpocket {

/// Asks file systems on behalf of threads that must not wait forever: the main thread, which may hardly wait at all,
/// and the few threads of background work. A question about a mount that may hang runs on a thread of its own and is
/// given up after a time limit. Only one such thread asks a mount at a time, so a dead mount holds one thread and no
/// more. A mount that has been silent for longer than the asker would wait is not waited for at all. Made on the main
/// thread; asked on any thread.
class FileProbe {
public:
    /// Returns the mount on the way to a path that may hang, if there is one. Any thread.
    using FindMount = std::function<std::optional<std::string>(const std::string& path)>;
    /// Calls `wait`, which takes long, on a thread that is not the main one.
    using RunWait = std::function<bool(const std::function<bool()>& wait)>;

    struct TimeLimits {
        /// A fifth of a second looks like a hitch, not yet like a hang.
        std::chrono::milliseconds main{200};
        /// A disk somewhere in the network may have to spin up.
        std::chrono::milliseconds background{5000};
    };

    explicit FileProbe(FindMount findMount) : FileProbe(std::move(findMount), TimeLimits()) {}
    FileProbe(FindMount findMount, TimeLimits limit) : findMount_(std::move(findMount)), limits_(limit) {}

    /// Tells the owner of the background threads which of them only wait. Called before the first question.
    void setRunWait(RunWait runWait) { runWait_ = std::move(runWait); }

    /// Returns the answer to `question`, which looks at files on the way to `path`, or nothing when the file system
    /// did not answer in time. `question` may outlive this call and must own whatever it needs.
    template <class Answer>
    [[nodiscard]] std::optional<Answer> ask(const std::string& path, std::function<Answer()> question) {
        const std::optional<std::string> mount = unreliableMount(path);
        if (!mount)
            return question();
        const auto answer = std::make_shared<std::optional<Answer>>();
        if (!waitFor(*mount, [answer, question = std::move(question)] { answer->emplace(question()); }))
            return std::nullopt;
        return std::move(*answer);
    }

    /// The mount on the way to `path` that may hang.
    [[nodiscard]] std::optional<std::string> unreliableMount(const std::string& path) const {
        return findMount_(path);
    }

private:
    struct Call;
    using Clock = std::chrono::steady_clock;

    /// Whether `work` was done in time.
    [[nodiscard]] bool waitFor(const std::string& mount, const std::function<void()>& work);
    [[nodiscard]] bool waitUntil(const std::string& mount, const std::function<void()>& work,
                                 std::chrono::milliseconds limit);

    const FindMount findMount_;
    const TimeLimits limits_;
    RunWait runWait_ = [](const std::function<bool()>& wait) { return wait(); };
    const std::thread::id mainThread_ = std::this_thread::get_id();
    std::mutex mutex_;
    /// The latest call for each mount; it may be over.
    std::map<std::string, std::shared_ptr<Call>> calls_;
};

}  // namespace stowpocket
