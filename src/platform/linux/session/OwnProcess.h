// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The file of the running program, even inside a mounted AppImage. Empty when /proc does not tell.
[[nodiscard]] std::string runningFile();

/// The file that starts this program again: the AppImage when it runs from one. Empty when /proc does not tell.
[[nodiscard]] std::string ownExecutable();

/// The same, given the path of the running code, and the AppImage and its mounted folder from the environment. The
/// environment counts only when the code is in that folder, since every program started by an AppImage inherits it.
[[nodiscard]] std::string executableToStart(std::string_view runningCode, std::string_view appImage,
                                            std::string_view appFolder);

/// Runs a function when exit() ends the process while this object exists. Qt calls exit() from inside the main loop
/// when the X server ends, so that nothing further up the stack is destroyed. One at a time; main thread.
class ExitHandler {
public:
    explicit ExitHandler(std::function<void()> onExit);
    ExitHandler(const ExitHandler&) = delete;
    ExitHandler& operator=(const ExitHandler&) = delete;
    ~ExitHandler();
};

/// Turns the termination signals (SIGTERM, SIGINT, SIGHUP) into a call from the main loop. A second one of the same
/// kind ends the process at once. One at a time.
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
