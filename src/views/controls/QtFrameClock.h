// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/FrameClock.h"

#include <QElapsedTimer>
#include <QTimer>

namespace stowpocket {

/// The machine's monotonic clock.
class QtFrameClock : public FrameClock {
public:
    QtFrameClock();
    [[nodiscard]] Seconds now() const override;
    void callAfter(Seconds delay, std::function<void()> frame) override;
    void stop() override { timer_.stop(); }

private:
    QElapsedTimer elapsed_;
    QTimer timer_;
    std::function<void()> frame_;
};

}  // namespace stowpocket
