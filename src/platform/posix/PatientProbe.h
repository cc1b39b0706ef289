// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace stowpocket {

/// Asks file systems on behalf of the main thread, which must not wait for one that does not answer. A question about
/// a mount that may hang runs on a thread of its own and is given up after a moment; while such a thread is still
/// stuck, further questions about that mount are given up at once, so that a dead mount holds one thread and no more.
class PatientProbe {
public:
    /// The mount on the way to a path that may hang, if there is one.
    using FindMount = std::function<std::optional<std::string>(const std::string& path)>;

    /// A fifth of a second: seen as a hitch, not yet as a hang.
    static constexpr std::chrono::milliseconds usualPatience{200};

    /// Made on the main thread.
    explicit PatientProbe(FindMount findMount, std::chrono::milliseconds patience = usualPatience)
        : findMount_(std::move(findMount)), patience_(patience) {}

    /// The answer to `question`, which looks at files on the way to `path`; none when the file system did not give
    /// one in time. It may outlive this call and owns whatever it needs. On other threads than the main one it is
    /// simply called.
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

    /// The mount on the way to `path` that may hang; always none off the main thread, which may wait.
    [[nodiscard]] std::optional<std::string> mountToMistrust(const std::string& path) const;

private:
    struct Call;

    /// Whether `work` was done in time.
    [[nodiscard]] bool waitFor(const std::string& mount, std::function<void()> work);

    const FindMount findMount_;
    const std::chrono::milliseconds patience_;
    const std::thread::id mainThread_ = std::this_thread::get_id();
    /// By mount, the last call that was given up. Main thread only.
    std::map<std::string, std::shared_ptr<Call>> givenUp_;
};

}  // namespace stowpocket
