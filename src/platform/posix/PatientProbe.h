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

/// Asks file systems on behalf of threads that must not wait for ever: the main thread, which may hardly wait at all,
/// and those of background work, of which there are few. A question about a mount that may hang runs on a thread of
/// its own and is given up after a while. One such thread asks a mount at a time, so that a dead mount holds one
/// thread and no more; while it has been silent for longer than the asker would wait, it is not waited for at all.
/// Made on the main thread; asked on any.
class PatientProbe {
public:
    /// The mount on the way to a path that may hang, if there is one. Any thread.
    using FindMount = std::function<std::optional<std::string>(const std::string& path)>;
    /// Calls `wait`, which takes long, on a thread that is not the main one.
    using RunWait = std::function<bool(const std::function<bool()>& wait)>;

    struct Patience {
        /// A fifth of a second: seen as a hitch, not yet as a hang.
        std::chrono::milliseconds main{200};
        /// A disk somewhere in the network may have to start turning.
        std::chrono::milliseconds background{5000};
    };

    explicit PatientProbe(FindMount findMount) : PatientProbe(std::move(findMount), Patience()) {}
    PatientProbe(FindMount findMount, Patience patience) : findMount_(std::move(findMount)), patience_(patience) {}

    /// Lets the owner of background threads know which of them only wait. Called before anybody asks.
    void setRunWait(RunWait runWait) { runWait_ = std::move(runWait); }

    /// The answer to `question`, which looks at files on the way to `path`; none when the file system did not give
    /// one in time. It may outlive this call and owns whatever it needs.
    template <class Answer>
    [[nodiscard]] std::optional<Answer> ask(const std::string& path, std::function<Answer()> question) {
        const std::optional<std::string> mount = mountToMistrust(path);
        if (!mount)
            return question();
        const auto answer = std::make_shared<std::optional<Answer>>();
        if (!waitFor(*mount, [answer, question = std::move(question)] { answer->emplace(question()); }))
            return std::nullopt;
        return std::move(*answer);
    }

    /// The mount on the way to `path` that may hang.
    [[nodiscard]] std::optional<std::string> mountToMistrust(const std::string& path) const {
        return findMount_(path);
    }

private:
    struct Call;
    using Clock = std::chrono::steady_clock;

    /// Whether `work` was done in time.
    [[nodiscard]] bool waitFor(const std::string& mount, const std::function<void()>& work);
    [[nodiscard]] bool waitUntil(const std::string& mount, const std::function<void()>& work,
                                 std::chrono::milliseconds patience);

    const FindMount findMount_;
    const Patience patience_;
    RunWait runWait_ = [](const std::function<bool()>& wait) { return wait(); };
    const std::thread::id mainThread_ = std::this_thread::get_id();
    std::mutex mutex_;
    /// By mount, the latest call; it may be over.
    std::map<std::string, std::shared_ptr<Call>> calls_;
};

}  // namespace stowpocket
