// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <functional>

namespace stowpocket {

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into a call from the main loop. The same
/// signal once more ends the process at once. One at a time.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onTermination);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

private:
    QSocketNotifier arrival_;
};

}  // namespace stowpocket
