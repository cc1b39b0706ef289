// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

namespace stowpocket {

/// Waits for a set of tasks without blocking: the work given to `notify` runs once, when every `enter` has met its
/// `leave`. A leave too many is harmless. Any thread may enter and leave; no lock is taken. Shared by the closures
/// that leave it.
class DispatchGroup {
public:
    using Work = std::function<void()>;

    DispatchGroup() = default;
    DispatchGroup(const DispatchGroup&) = delete;
    DispatchGroup& operator=(const DispatchGroup&) = delete;

    void enter();
    void leave();
    /// Called once. `work` runs on the thread of the last leave, or at once when the group is already empty; work
    /// that belongs on the main thread posts itself there.
    void notify(Work work);

private:
    void finish();

    /// Set until `notify` has stored its work; the tasks inside are counted below it.
    static constexpr std::int64_t unarmed = std::int64_t{1} << 32;

    std::atomic<std::int64_t> state_{unarmed};
    std::atomic<bool> finished_{false};
    Work work_;
};

}  // namespace stowpocket
