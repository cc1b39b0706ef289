// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>
#include <vector>

namespace stowpocket {

/// Something that happens once while the program runs, and what waits for it. That runs in a turn of the event loop
/// of its own, after the work of whoever tells that it happened. Main thread.
class Milestone {
public:
    void reach();
    /// `work` is forgotten when the milestone goes first.
    void whenReached(std::function<void()> work);

private:
    void runSoon(std::function<void()> work);

    bool isReached_ = false;
    std::vector<std::function<void()>> waiting_;
    QObject context_;
};

}  // namespace stowpocket
