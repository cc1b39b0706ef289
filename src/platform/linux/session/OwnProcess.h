// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The file to run to start this program again: the AppImage when it runs out of one. Empty when /proc does not tell.
[[nodiscard]] std::string ownExecutable();

/// The same from its parts: where the running code lies, and the AppImage and its mounted folder as the environment
/// names them. They are believed only when the code lies in that folder, since every program that an AppImage starts
/// inherits them.
[[nodiscard]] std::string executableToStart(std::string_view runningCode, std::string_view appImage,
                                            std::string_view appFolder);

/// Runs a function when the process is ended by exit() while this exists. Qt does that from inside the main loop when
/// the X server goes, so that nothing further up the stack is destroyed. One at a time; main thread.
class ExitHandler {
public:
    explicit ExitHandler(std::function<void()> onExit);
    ExitHandler(const ExitHandler&) = delete;
    ExitHandler& operator=(const ExitHandler&) = delete;
    ~ExitHandler();
};

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
