// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Dispatch.h"

#include <QObject>
#include <QThreadPool>

namespace stowpocket {

/// Dispatch on the Qt event loop and a bounded pool of threads. Made on the main thread, after the application.
class QtDispatch : public Dispatch {
public:
    QtDispatch();
    /// Gives background work a moment to end. A thread that waits for a dead mount is left behind, so that it cannot
    /// keep the program from ending.
    ~QtDispatch() override;

    void async(Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> after(std::chrono::milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> every(std::chrono::milliseconds interval, Work work) override;
    void background(Work work) override;
    [[nodiscard]] std::unique_ptr<SerialQueue> serialQueue(std::string label) override;

private:
    QObject mainQueue_;
    std::unique_ptr<QThreadPool> pool_;
};

}  // namespace stowpocket
